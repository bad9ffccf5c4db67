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

enum class Argument { None, X, Y, Milliseconds, Section, Status, Name, File, Value, Text };

struct Verb {
    const char* name;
    Action action;
    Argument arguments[3];
    const char* example;
};

constexpr Verb VERBS[] = {
    // name    action           arguments                               example
    {"tap", Action::Tap, {Argument::X, Argument::Y}, "tap 160 120"},
    {"press", Action::Press, {Argument::X, Argument::Y}, "press 160 120"},
    {"move", Action::Move, {Argument::X, Argument::Y}, "move 170 120"},
    {"release", Action::Release, {}, "release"},
    {"wait", Action::Wait, {Argument::Milliseconds}, "wait 300"},
    {"pause", Action::Pause, {Argument::Milliseconds}, "pause 2000"},
    {"shot", Action::Shot, {Argument::File}, "shot page.png"},
    {"expect", Action::Expect, {Argument::File}, "expect page.png"},
    {"expect-dark", Action::ExpectDark, {}, "expect-dark"},
    {"expect-setting",
     Action::ExpectSetting,
     {Argument::Section, Argument::Name, Argument::Value},
     "expect-setting 1 PIN 1234"},
    {"expect-log", Action::ExpectLog, {Argument::Text}, "expect-log command umount"},
    {"quit", Action::Quit, {}, "quit"},
    {"exit-code", Action::ExitCode, {Argument::Status}, "exit-code 0"},
};

struct Range {
    Argument argument;
    const char* what;
    int least;
    int end;
};
constexpr Range RANGES[] = {
    {Argument::X, "x", 0, PANEL_WIDTH},
    {Argument::Y, "y", 0, PANEL_HEIGHT},
    {Argument::Milliseconds, "the milliseconds", 0, 86400001},
    {Argument::Section, "the section", 1, 3},
    {Argument::Status, "the exit status", 0, 256},
};

constexpr const char* BLANKS = " \t\r\f\v";

std::string trimmed(const std::string& text) {
    const size_t begin = text.find_first_not_of(BLANKS);
    return begin == std::string::npos ? "" : text.substr(begin, text.find_last_not_of(BLANKS) - begin + 1);
}

class Parser {
  public:
    explicit Parser(std::string name) : name(std::move(name)) {}

    Script parse(const std::string& text) {
        Script script{name, "", {}};
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
        while (at != std::string::npos && at > 0 && std::string(BLANKS).find(content[at - 1]) == std::string::npos)
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
            if (errno != 0 || value < range.least || value >= range.end)
                refuse(
                    std::string(range.what) + " must be " + std::to_string(range.least) + " to " +
                    std::to_string(range.end - 1) + ", not " + word);
            return static_cast<int>(value);
        }
        return 0;
    }

    // An empty rest is one, too.
    static std::string restOf(std::istringstream& words) {
        std::string rest;
        std::getline(words, rest);
        words.clear(words.rdstate() & ~std::ios::failbit);
        return trimmed(rest);
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
        int numbers = 0;
        for (const Argument argument : verb.arguments) {
            if (argument == Argument::File || argument == Argument::Value || argument == Argument::Text)
                command.text = restOf(words);
            else if (argument == Argument::Name)
                words >> command.name;
            else if (argument != Argument::None && words >> word)
                command.numbers[numbers++] = parseNumber(word, verb, argument);
            if (argument != Argument::None && words.fail())
                refuse(std::string(verb.name) + " needs more, as in '" + verb.example + "'");
        }
        if (verb.action == Action::ExpectSetting)
            command.source = verb.name + (" " + std::to_string(command.numbers[0])) + " " + command.name;
        if (verb.arguments[0] == Argument::File && command.text.empty())
            refuse(std::string(verb.name) + " needs a file, as in '" + verb.example + "'");
        if (verb.arguments[0] == Argument::Text && command.text.empty())
            refuse(std::string(verb.name) + " needs more, as in '" + verb.example + "'");
        if (words >> word)
            refuse("'" + word + "' is too much, as in '" + verb.example + "'");
        if (ended)
            refuse("nothing is played after exit-code: the program has ended");
        ended = verb.action == Action::ExitCode;
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
    bool ended = false;
    bool down = false;
    int pressedInLine = 0;
};

} // namespace

Script parseScript(const std::string& name, const std::string& text) {
    constexpr const char* BYTE_ORDER_MARK = "\xEF\xBB\xBF"; // some editors begin a file of UTF-8 with it
    return Parser(name).parse(text.compare(0, 3, BYTE_ORDER_MARK) == 0 ? text.substr(3) : text);
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
        throw Failure(
            std::string(
                systemFailure("cannot read the script " + file, descriptor.isOpen() ? errno : openReason).what()) +
            "; check its name and its rights");
    Script script = parseScript(fromInput ? "standard input" : file, text);
    if (!fromInput && file.find('/') != std::string::npos)
        script.directory = file.substr(0, file.rfind('/') + 1);
    return script;
}

} // namespace ostrel
