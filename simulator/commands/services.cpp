// The router's services do not exist on a desk; that they are stopped and started is told in the log.
#include "simulator/commands/command.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <unistd.h>

namespace ostrel {
namespace {

// Always found running.
constexpr const char* SERVICES[] = {"nvram_daemon"};

bool isService(const std::string& name) {
    return std::any_of(std::begin(SERVICES), std::end(SERVICES), [&](const char* service) { return name == service; });
}

// "9", "KILL" or "SIGKILL"; 0 when it is none of them.
int signalOf(const std::string& text) {
    const std::string name = text.rfind("SIG", 0) == 0 ? text.substr(3) : text;
    for (int number = 1; number < NSIG; ++number) {
        const char* const abbreviation = sigabbrev_np(number);
        if (text == std::to_string(number) || (abbreviation != nullptr && name == abbreviation))
            return number;
    }
    return 0;
}

// The name that killall goes by: the program file's, also where the kernel keeps only its first 15 characters.
std::string nameOf(const std::filesystem::path& process) {
    std::ifstream words(process / "cmdline");
    std::string first;
    std::getline(words, first, '\0');
    return first.substr(first.rfind('/') + 1);
}

bool signalProcesses(const std::string& name, int signal) {
    bool found = false;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator("/proc", error)) {
        const std::string number = entry.path().filename();
        if (number.find_first_not_of("0123456789") != std::string::npos)
            continue;
        const auto process = static_cast<pid_t>(std::strtol(number.c_str(), nullptr, 10));
        if (process != getpid() && nameOf(entry.path()) == name)
            found = kill(process, signal) == 0 || found;
    }
    return found;
}

} // namespace

int runKillall(const Words& words) {
    constexpr int USAGE = 1;
    int signal = SIGTERM;
    bool quiet = false;
    Words names;
    for (size_t i = 0; i < words.size(); ++i) {
        const std::string& word = words[i];
        if (word == "-q")
            quiet = true;
        else if (word == "-s" && i + 1 < words.size())
            signal = signalOf(words[++i]);
        else if (word.size() > 1 && word[0] == '-')
            signal = signalOf(word.substr(1));
        else
            names.push_back(word);
    }
    if (signal == 0 || names.empty())
        return refuse("killall", "the simulator knows only: killall [-q] [-SIGNAL] NAME...", USAGE);
    int status = 0;
    for (const std::string& name : names) {
        if (signalProcesses(name, signal) || isService(name))
            continue;
        status = 1;
        if (!quiet)
            std::cerr << name << ": no process found\n";
    }
    return status;
}

int runNvramDaemon(const Words& /*words*/) {
    return 0;
}

int runInitSystem(const Words& words) {
    if (words.size() == 1 && (words[0] == "start" || words[0] == "stop" || words[0] == "restart"))
        return 0;
    return refuse("init_system", "Usage: init_system start|stop|restart", 1);
}

} // namespace ostrel
