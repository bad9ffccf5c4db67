// One run of a program on the simulated router.
#ifndef OSTREL_SIMULATOR_SIMULATOR_H
#define OSTREL_SIMULATOR_SIMULATOR_H

#include "simulator/options.h"

namespace ostrel {

// Runs the program to its end; returns what the simulator exits with. Throws Failure when it cannot be run.
int simulate(const Options& options);

// Tells the user something, in one line on standard error.
void say(const std::string& sentence);

} // namespace ostrel

#endif
