// `ostrel-sim nvram`: looking into a simulated router's settings store, and changing it.
#ifndef OSTREL_SIMULATOR_NVRAM_CLI_H
#define OSTREL_SIMULATOR_NVRAM_CLI_H

#include <ostream>
#include <string>
#include <vector>

namespace ostrel {

// `words` is what follows "nvram", and `factory` the file with the factory settings; results are written to `out`, and
// sentences about what happened to standard error. Throws Failure with exit_status::USAGE for a wrong command line and
// SETTINGS_FAILED for what could not be done.
constexpr int SETTINGS_FAILED = 1;
void runNvram(const std::vector<std::string>& words, const std::string& factory, std::ostream& out);

} // namespace ostrel

#endif
