#include "simulator/script.h"

#include "simulator/descriptor.h"
#include "simulator/failure.h"
#include "simulator/panel.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <sstream>
#include <utility>

namespace ostrel {
namespace {

enum class Argument { None, X, Y, Milliseconds, File };

struct Verb {
    const char* name;
    Action action;
    Argument arguments[2];
    const char* example;
};

constexpr Verb VERBS[] = {
    // name    action           arguments                               example
    {"tap", Action::Tap, {Argument::X, Argument::Y}, "tap 160 120"},
    {"press", Action::Press, {Argument::X, Argument::Y}, "press 160 120"},
    {"move", Action::Move, {Argument::X, Argument::Y}, "move 170 120"},
    {"release", Action::Release, {Argument::None, Argument::None}, "release"},
    {"wait", Action::Wait, {Argument::Milliseconds, Argument::None}, "wait 300"},
    {"shot", Action::Shot, {Argument::File, Argument::None}, "shot page.png"},
    {"quit", Action::Quit, {Argument::None, Argument::None}, "quit"},
};

struct Range {
    Argument argument;
    const char* what;
    int end;
};
constexpr Range RANGES[] = {
    {Argument::X, "x", PANEL_WIDTH},
    {Argument::Y, "y", PANEL_HEIGHT},
    {Argument::Milliseconds, "the milliseconds", 86400001},
};

std::string trimmed(const std::string& text) {
    constexpr const char* BLANKS = " \t\r\f\v";
    const size_t begin = text.find_first_not_of(BLANKS);
    return begin == std::string::npos ? "" : text.substr(begin, text.find_last_not_of(BLANKS) - begin + 1);
}

class Parser {
  public:
    explicit Parser(std::string name) : name(std::move(name)) {}

    Script parse(const std::string& text) {
        Script script{name, {}};
        std::istringstream lines(text);
        for (std::string content; std::getline(lines, content);) {
            ++line;
            const std::string source = trimmed(content.substr(0, commentAt(content)));
            if (!source.empty())
                script.commands.push_back(parseCommand(source));
        }
        return script;
    }

  private:
    // A "#" within a word belongs to it: shot page#1.png.
    static size_t commentAt(const std::string& content) {
        size_t at = content.find('#');
        while (at != std::string::npos && at > 0 && content[at - 1] != ' ' && content[at - 1] != '\t')
            at = content.find('#', at + 1);
        return at;
    }

    [[noreturn]] void refuse(const std::string& reason) const {
        throw Failure(name + ":" + std::to_string(line) + ": " + reason, exit_status::SCRIPT_FAILED);
    }

    const Verb& find(const std::string& word) const {
        std::string known;
        for (const Verb& verb : VERBS) {
            if (word == verb.name)
                return verb;
            known += std::string(known.empty() ? "" : ", ") + verb.name;
        }
        refuse("there is no command '" + word + "', only " + known);
    }

    int parseNumber(const std::string& word, const Verb& verb, Argument argument) const {
        for (const Range& range : RANGES) {
            if (range.argument != argument)
                continue;
            char* end = nullptr;
            errno = 0;
            const long value = strtol(word.c_str(), &end, 10);
            if (word.empty() || *end != '\0')
                refuse(std::string(verb.name) + " needs a number, not '" + word + "', as in '" + verb.example + "'");
            if (errno != 0 || value < 0 || value >= range.end)
                refuse(std::string(range.what) + " must be 0 to " + std::to_string(range.end - 1) + ", not " + word);
            return static_cast<int>(value);
        }
        return 0;
    }

    Command parseCommand(const std::string& source) {
        std::istringstream words(source);
        std::string word;
        words >> word;
        const Verb& verb = find(word);
        Command command;
        command.line = line;
        command.action = verb.action;
        command.source = source;
        for (int i = 0; i < 2 && verb.arguments[i] != Argument::None; ++i) {
            if (verb.arguments[i] == Argument::File) {
                std::string rest;
                std::getline(words, rest);
                command.text = trimmed(rest);
            } else if (words >> word)
                command.numbers[i] = parseNumber(word, verb, verb.arguments[i]);
            else
                refuse(std::string(verb.name) + " needs more, as in '" + verb.example + "'");
        }
        if (verb.arguments[0] == Argument::File && command.text.empty())
            refuse(std::string(verb.name) + " needs a file, as in '" + verb.example + "'");
        if (words >> word)
            refuse("'" + word + "' is too much, as in '" + verb.example + "'");
        checkPen(verb);
        return command;
    }

    void checkPen(const Verb& verb) {
        const bool touches = verb.action == Action::Tap || verb.action == Action::Press;
        const bool needsPen = verb.action == Action::Move || verb.action == Action::Release;
        if (touches && down)
            refuse(std::string(verb.name) + ": the pen is down already since line " + std::to_string(pressedInLine));
        if (needsPen && !down)
            refuse(std::string(verb.name) + ": the pen is up; press comes first");
        if (verb.action == Action::Press) {
            down = true;
            pressedInLine = line;
        }
        if (verb.action == Action::Release)
            down = false;
    }

    std::string name;
    int line = 0;
    bool down = false;
    int pressedInLine = 0;
};

} // namespace

Script parseScript(const std::string& name, const std::string& text) {
    return Parser(name).parse(text);
}

Script readScript(const std::string& file) {
    const bool fromInput = file == "-";
    const Descriptor descriptor(
        fromInput ? fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 0) : open(file.c_str(), O_RDONLY | O_CLOEXEC));
    const int openReason = errno;
    std::string text;
    char bytes[4096];
    ssize_t count = 0;
    while ((count = read(descriptor.get(), bytes, sizeof bytes)) > 0)
        text.append(bytes, static_cast<size_t>(count));
    if (count < 0)
        throw systemFailure("cannot read the script " + file, descriptor.isOpen() ? errno : openReason);
    return parseScript(fromInput ? "standard input" : file, text);
}

} // namespace ostrel
