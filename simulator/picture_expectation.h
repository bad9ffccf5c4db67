// A picture that the panel is expected to show, and how it is told that it shows something else.
#ifndef OSTREL_SIMULATOR_PICTURE_EXPECTATION_H
#define OSTREL_SIMULATOR_PICTURE_EXPECTATION_H

#include "simulator/panel.h"

#include <string>

namespace ostrel {

class PictureExpectation {
  public:
    // The picture in `file`, a PNG. Throws Failure.
    explicit PictureExpectation(const std::string& file);

    bool isMetBy(const Picture& picture) const;

    // Saves NAME.expected.png, NAME.actual.png and NAME.difference.png in the working directory and says in one
    // sentence what differs. Throws Failure when they cannot be saved.
    std::string explain(const Picture& picture) const;

  private:
    std::string file;
    std::vector<uint32_t> colours;
};

// Where there is nothing in `file` to compare with: saves NAME.actual.png in the working directory and says in one
// sentence what to do with it, or why it could not be saved.
std::string saveActual(const std::string& file, const Picture& picture);

} // namespace ostrel

#endif
