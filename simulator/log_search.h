// Whether the log of this run has told of something.
#ifndef OSTREL_SIMULATOR_LOG_SEARCH_H
#define OSTREL_SIMULATOR_LOG_SEARCH_H

#include "simulator/descriptor.h"

#include <string>

namespace ostrel {

class LogSearch {
  public:
    // Looks for a line with `text` in the log of a state directory, from the beginning of the run.
    LogSearch(const std::string& stateDirectory, std::string text);

    // Reads what was written since the last look. Once found, it stays found.
    bool hasFound();

  private:
    bool isInRest(const Descriptor& file);
    bool isReplaced() const;

    std::string path;
    std::string text;
    Descriptor log;
    std::string tail; // the end of what was read, too short for the text
    bool found = false;
};

} // namespace ostrel

#endif
