// One program for all commands: which one it is tells the name under which it is called.
#include "simulator/commands/command.h"
#include "simulator/state.h"
#include "simulator/store/log.h"

#include <cstdlib>
#include <cstring>
#include <iostream>
#include <sstream>
#include <unistd.h>

namespace ostrel {
namespace {

struct CommandRow {
    const char* name;
    int (*run)(const Words& words);
};

constexpr CommandRow COMMANDS[] = {
    {"mount", runMount},
    {"umount", runUmount},
    {"killall", runKillall},
    {"nvram_daemon", runNvramDaemon},
    {"init_system", runInitSystem},
};

void log(const std::string& text) {
    const char* const directory = getenv(variable::STATE);
    if (directory != nullptr)
        logLine(directory, "command %s", text.c_str());
}

int run(const std::string& name, const Words& words) {
    std::string line = name;
    for (const std::string& word : words)
        line += " " + word;
    log(line);
    for (const CommandRow& row : COMMANDS)
        if (name == row.name)
            return row.run(words);
    return refuse(name.c_str(), "the simulator has no such command", 127);
}

} // namespace

int refuse(const char* command, const std::string& sentence, int status) {
    std::cerr << command << ": " << sentence << "\n";
    log(std::string(command) + ": " + sentence);
    return status;
}

int becomeOwn(const char* command, const Words& words) {
    std::vector<char*> arguments = {const_cast<char*>(command)};
    for (const std::string& word : words)
        arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    const char* const path = getenv("PATH");
    std::istringstream directories(path != nullptr ? path : "/usr/sbin:/usr/bin:/sbin:/bin");
    for (std::string directory; std::getline(directories, directory, ':');)
        if (directory != inside::COMMANDS)
            execv((directory + "/" + command).c_str(), arguments.data());
    return refuse(command, "there is no such command on this machine", 127);
}

} // namespace ostrel

int main(int argc, char** argv) {
    const char* const slash = strrchr(argv[0], '/');
    return ostrel::run(slash != nullptr ? slash + 1 : argv[0], ostrel::Words(argv + 1, argv + argc));
}
