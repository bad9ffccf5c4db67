// The one place from which the toolkit runs commands.
#ifndef OSTREL_UTIL_SHELL_H
#define OSTREL_UTIL_SHELL_H

#include <cstdlib>

namespace ostrel {

// Runs a command through the shell and waits for it. How it ended is not told: no caller could mend it.
inline void runShell(const char* command) {
    [[maybe_unused]] const int status = std::system(command);
}

} // namespace ostrel

#endif
