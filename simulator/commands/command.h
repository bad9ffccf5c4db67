// The router's commands that programs run through the shell. They come first on the PATH in the simulator; each does
// what the router's own would do for the program, and leaves a line in the log.
#ifndef OSTREL_SIMULATOR_COMMANDS_COMMAND_H
#define OSTREL_SIMULATOR_COMMANDS_COMMAND_H

#include <string>
#include <vector>

namespace ostrel {

using Words = std::vector<std::string>; // the arguments, without the command's name

// All return the exit status.
int runMount(const Words& words);
int runUmount(const Words& words);
int runKillall(const Words& words);
int runNvramDaemon(const Words& words);
int runInitSystem(const Words& words);

// Writes "mount: SENTENCE" to standard error and into the log, and returns `status`.
int refuse(const char* command, const std::string& sentence, int status);

// Becomes the machine's own command of that name, the first on the PATH behind the simulator's. Returns 127 when there
// is none.
int becomeOwn(const char* command, const Words& words);

} // namespace ostrel

#endif
