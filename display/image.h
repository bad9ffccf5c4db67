// A decoded picture in the panel's own colours, and drawing it.
#ifndef OSTREL_DISPLAY_IMAGE_H
#define OSTREL_DISPLAY_IMAGE_H

#include "display/allocate.h"
#include "display/canvas.h"

namespace ostrel {

struct Image {
    int width = 0;
    int height = 0;
    Buffer<uint16_t> colours;
    Buffer<uint8_t> alpha; // null: opaque everywhere
};

// Blends `image` over the canvas with its top left corner at (x, y). Returns the part of the canvas that it reaches.
Rect drawOver(const Canvas& canvas, const Image& image, int x, int y);

// Replaces what is there: as if `background` had been painted under the image first.
Rect drawReplacing(const Canvas& canvas, const Image& image, int x, int y, uint16_t background);

} // namespace ostrel

#endif
