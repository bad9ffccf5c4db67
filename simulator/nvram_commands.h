// What `ostrel-sim nvram` can do with a settings store: one row a command.
#ifndef OSTREL_SIMULATOR_NVRAM_COMMANDS_H
#define OSTREL_SIMULATOR_NVRAM_COMMANDS_H

#include <ostream>
#include <string>
#include <vector>

namespace ostrel {

struct NvramRequest {
    std::string directory;          // the state directory
    std::string factory;            // the file with the factory settings
    bool committed = false;         // leave out what was set and not committed
    std::vector<std::string> words; // what follows the command
};

struct NvramCommand {
    const char* name;
    const char* usage;
    const char* help;
    size_t least; // words
    size_t most;
    bool makesStore; // or needs one that is there
    void (*run)(const NvramRequest& request, std::ostream& out);
};

constexpr size_t NVRAM_COMMANDS = 4;
extern const NvramCommand NVRAM_COMMAND[NVRAM_COMMANDS];

// A router that was never switched on gets its factory settings when `command` is to change it. Throws Failure.
void prepareStore(const NvramCommand& command, const NvramRequest& request);

// Throws Failure for a wrong command line.
[[noreturn]] void refuseNvram(const std::string& sentence);

} // namespace ostrel

#endif
