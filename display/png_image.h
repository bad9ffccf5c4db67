// PNG files of every colour type and depth, made into pictures for the panel.
#ifndef OSTREL_DISPLAY_PNG_IMAGE_H
#define OSTREL_DISPLAY_PNG_IMAGE_H

#include "display/image.h"
#include "display/reason.h"

namespace ostrel {

// Decodes a PNG file's bytes. False leaves `image` alone and says why. An image larger than IMAGE_MAX_SIDE is refused
// by its header, before memory is taken for its pixels.
bool decodePng(const uint8_t* bytes, size_t size, Image& image, Reason& why);

// Reads and decodes the file at `path`. False leaves `image` alone and says why.
bool loadPng(const char* path, Image& image, Reason& why);

} // namespace ostrel

#endif
