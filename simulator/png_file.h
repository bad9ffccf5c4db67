// Pictures of the panel as PNG files.
#ifndef OSTREL_SIMULATOR_PNG_FILE_H
#define OSTREL_SIMULATOR_PNG_FILE_H

#include "simulator/panel.h"

#include <string>

namespace ostrel {

// Replaces `path` in one step. Throws Failure.
void writePng(const std::string& path, const Picture& picture);

} // namespace ostrel

#endif
