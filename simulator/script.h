// Touch scripts: one command a line, "#" begins a comment.
#ifndef OSTREL_SIMULATOR_SCRIPT_H
#define OSTREL_SIMULATOR_SCRIPT_H

#include <string>
#include <vector>

namespace ostrel {

enum class Action {
    Tap,
    Press,
    Move,
    Release,
    Wait,
    Pause,
    Shot,
    Expect,
    ExpectDark,
    ExpectSetting,
    ExpectLog,
    Quit,
    ExitCode
};

struct Command {
    int line = 0;
    Action action = Action::Quit;
    int numbers[2] = {}; // x and y, or milliseconds, a settings section, an exit status
    std::string name;    // a setting's
    std::string text;    // a file's name, a setting's value, or what a line of the log contains
    std::string source;  // the command as it was written; a setting's value is left out, it may be a secret
};

struct Script {
    std::string name;      // for messages
    std::string directory; // of the script, with a slash, or empty: expected pictures lie beside it
    std::vector<Command> commands;
};

// Throws Failure naming the line: "tour.touch:12: ...".
Script parseScript(const std::string& name, const std::string& text);

// Reads `file`; "-" is standard input.
Script readScript(const std::string& file);

} // namespace ostrel

#endif
