#include "display/image.h"

#include <cstring>

namespace ostrel {

namespace {

void drawRow(uint16_t* pixels, const uint16_t* colours, const uint8_t* alpha, int count, const uint16_t* background) {
    for (int i = 0; i < count; ++i) {
        if (alpha[i] == 255)
            pixels[i] = colours[i];
        else if (background != nullptr)
            pixels[i] = mixed(*background, colours[i], alpha[i]);
        else if (alpha[i] != 0)
            pixels[i] = mixed(pixels[i], colours[i], alpha[i]);
    }
}

// A null background keeps what is on the canvas.
Rect draw(const Canvas& canvas, const Image& image, int x, int y, const uint16_t* background) {
    const Rect part = intersection(rectAt(x, y, image.width, image.height), canvas.clip);
    const int columns = part.right - part.left;
    for (int row = part.top; row < part.bottom; ++row) {
        const ptrdiff_t first = static_cast<ptrdiff_t>(row - y) * image.width + (part.left - x);
        uint16_t* const pixels = canvas.row(row) + part.left;
        const uint16_t* const colours = image.colours.get() + first;
        if (image.alpha != nullptr)
            drawRow(pixels, colours, image.alpha.get() + first, columns, background);
        else
            memcpy(pixels, colours, static_cast<size_t>(columns) * sizeof *pixels);
    }
    return part;
}

} // namespace

Rect drawOver(const Canvas& canvas, const Image& image, int x, int y) {
    return draw(canvas, image, x, y, nullptr);
}

Rect drawReplacing(const Canvas& canvas, const Image& image, int x, int y, uint16_t background) {
    return draw(canvas, image, x, y, &background);
}

} // namespace ostrel
