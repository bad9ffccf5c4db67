// PNG files of every colour type and depth, made into pictures for the panel.
#ifndef OSTREL_DISPLAY_PNG_IMAGE_H
#define OSTREL_DISPLAY_PNG_IMAGE_H

#include "display/image.h"
#include "display/reason.h"

namespace ostrel {

// What is decoded at most: far more than the panel shows, and little enough for the router's memory. A larger image
// or file is refused by its header, before anything is allocated for it.
enum : int { MAX_IMAGE_SIDE = 1024, MAX_IMAGE_FILE_BYTES = 8 << 20 };

// Decodes a PNG file's bytes. False leaves `image` alone and says why.
bool decodePng(const uint8_t* bytes, size_t size, Image& image, Reason& why);

// Reads and decodes the file at `path`. False leaves `image` alone and says why.
bool loadPng(const char* path, Image& image, Reason& why);

} // namespace ostrel

#endif
