// The end of a program, or of the attempt to start it, in one sentence.
#ifndef OSTREL_SIMULATOR_ENDING_H
#define OSTREL_SIMULATOR_ENDING_H

#include "simulator/launch_protocol.h"

#include <string>

namespace ostrel {

// How a program ended: what the simulator exits with, and one sentence ("gallery exited with status 3").
struct Ending {
    int status;
    std::string sentence;
    bool ran = true; // false: the simulator could not even start it
};

// In words, for the program at `path`. `stateDirectory` is where a core dump is kept.
Ending describeEnding(const std::string& path, const LaunchReport& report, const std::string& stateDirectory);

// When bubblewrap could not make the program's view of the files: `complaint` is what it said, maybe nothing. `asRoot`
// tells whether it was root who was refused.
Ending describeNoView(const std::string& complaint, bool asRoot);

} // namespace ostrel

#endif
