// Runs of pixels between the shadow's RGB565 and what a framebuffer keeps.
#ifndef OSTREL_DISPLAY_PIXEL_FORMAT_H
#define OSTREL_DISPLAY_PIXEL_FORMAT_H

#include "display/framebuffer.h"

namespace ostrel {

size_t bytesOf(PixelFormat format);

// To and from device memory that holds `count` pixels in `format`. What a wider format adds is dropped on the way
// back, so that a colour that was written comes back unchanged.
void encodeRun(PixelFormat format, uint8_t* device, const uint16_t* pixels, size_t count);
void decodeRun(PixelFormat format, uint16_t* pixels, const uint8_t* device, size_t count);

} // namespace ostrel

#endif
