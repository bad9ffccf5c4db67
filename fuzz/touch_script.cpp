// Touch scripts. Any bytes are either refused, with the line that is at fault, or become commands that keep what the
// language promises; and the commands, as they were written, are read as the same ones.
#include "simulator/failure.h"
#include "simulator/script.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

using namespace ostrel;

namespace {

void require(bool condition, const char* what) {
    if (condition)
        return;
    std::fprintf(stderr, "%s\n", what);
    std::abort();
}

// "t:12: ..." for a line that there is.
void checkRefusal(const Failure& failure, int lines) {
    const std::string sentence = failure.what();
    require(failure.status == exit_status::SCRIPT_FAILED, "a mistake with another status");
    require(sentence.compare(0, 2, "t:") == 0, "a mistake without the script's name");
    char* end = nullptr;
    const long line = strtol(sentence.c_str() + 2, &end, 10);
    require(line >= 1 && line <= lines && std::string(end, 2) == ": " && end[2] != '\0', "a mistake without its line");
}

bool isTouch(Action action) {
    return action == Action::Tap || action == Action::Press || action == Action::Move;
}

void checkCommands(const Script& script, int lines) {
    int line = 0;
    bool down = false;
    for (const Command& command : script.commands) {
        require(command.line > line && command.line <= lines, "lines in another order");
        line = command.line;
        require(!command.source.empty(), "a command that was not written");
        if (isTouch(command.action)) {
            require(command.numbers[0] >= 0 && command.numbers[0] < 320, "a touch beside the panel");
            require(command.numbers[1] >= 0 && command.numbers[1] < 240, "a touch below the panel");
        }
        require(
            down == (command.action == Action::Move || command.action == Action::Release) || !isTouch(command.action),
            "a pen that is up and down");
        down = command.action == Action::Press || (down && command.action != Action::Release);
        const bool needsText =
            command.action == Action::Shot || command.action == Action::Expect || command.action == Action::ExpectLog;
        require(!needsText || !command.text.empty(), "a command without its text");
        require(&command == &script.commands.back() || command.action != Action::ExitCode, "a play after the end");
    }
}

// Without comments, blanks and empty lines it is the same script.
void checkAgain(const Script& script) {
    std::string text;
    for (const Command& command : script.commands)
        text += command.source + (command.action == Action::ExpectSetting ? " " + command.text : "") + "\n";
    const Script again = parseScript("t", text);
    require(again.commands.size() == script.commands.size(), "another number of commands");
    for (size_t i = 0; i < again.commands.size(); ++i) {
        const Command& one = again.commands[i];
        const Command& other = script.commands[i];
        require(
            one.action == other.action && one.name == other.name && one.text == other.text &&
                one.source == other.source && std::equal(one.numbers, one.numbers + 2, other.numbers),
            "another command");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const int lines = static_cast<int>(std::count(text.begin(), text.end(), '\n')) + 1;
    Script script;
    try {
        script = parseScript("t", text);
    } catch (const Failure& failure) {
        checkRefusal(failure, lines);
        return 0;
    }
    checkCommands(script, lines);
    checkAgain(script);
    return 0;
}
