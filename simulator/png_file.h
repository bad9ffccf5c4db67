// Pictures of the panel as PNG files.
#ifndef OSTREL_SIMULATOR_PNG_FILE_H
#define OSTREL_SIMULATOR_PNG_FILE_H

#include "simulator/panel.h"

#include <string>

namespace ostrel {

// Replaces `path` in one step. Throws Failure.
void writePng(const std::string& path, const Picture& picture);

// The 0x00RRGGBB colours of a picture of the panel's size. Throws Failure.
std::vector<uint32_t> readPng(const std::string& path);

} // namespace ostrel

#endif
