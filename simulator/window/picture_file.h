// Pictures that the user takes of the panel.
#ifndef OSTREL_SIMULATOR_WINDOW_PICTURE_FILE_H
#define OSTREL_SIMULATOR_WINDOW_PICTURE_FILE_H

#include "simulator/panel.h"

#include <string>

namespace ostrel {

// Writes NAME-1.png into the working directory, or with the first higher number that no file has yet. Returns the
// file's name. Throws Failure.
std::string savePicture(const std::string& name, const Picture& picture);

} // namespace ostrel

#endif
