// Where the simulator's own files are: beside its executable in the build as well as once installed.
#ifndef OSTREL_SIMULATOR_PATHS_H
#define OSTREL_SIMULATOR_PATHS_H

#include <string>

namespace ostrel {

// Shim, launch and stand-in commands. Throws Failure.
std::string supportDirectory();

// What becomes /ostrel: $OSTREL_ASSETS, or what was built or installed. Throws Failure.
std::string assetsDirectory();

// The panel's page for browsers. Throws Failure.
std::string pageDirectory();

} // namespace ostrel

#endif
