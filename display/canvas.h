// The pixels that everything is drawn to: a clipped RGB565 picture in cached memory, and the few ways to paint on it.
// Every rectangle here is half-open: left <= x < right, top <= y < bottom.
#ifndef OSTREL_DISPLAY_CANVAS_H
#define OSTREL_DISPLAY_CANVAS_H

#include <cstddef>
#include <cstdint>

namespace ostrel {

enum : int { PANEL_WIDTH = 320, PANEL_HEIGHT = 240 };

struct Rect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    bool isEmpty() const { return left >= right || top >= bottom; }
};

// What both cover; empty when they do not meet.
Rect intersection(const Rect& a, const Rect& b);

// The smallest rectangle around both; an empty one adds nothing.
Rect united(const Rect& a, const Rect& b);

// The rectangle of `width` by `height` pixels at (x, y). Sums that leave the range of int stay at its end; a negative
// size makes an empty rectangle.
Rect rectAt(int x, int y, int width, int height);

// A view of pixels that somebody else owns. `clip` bounds all painting and lies inside the picture; narrow it with
// ClipTo while an element is drawn.
struct Canvas {
    uint16_t* pixels = nullptr;
    int width = 0;
    int height = 0;
    int stridePx = 0;
    Rect clip;

    uint16_t* row(int y) const { return pixels + static_cast<ptrdiff_t>(y) * stridePx; }
};

// A canvas over all of `pixels`.
Canvas canvasOver(uint16_t* pixels, int width, int height, int stridePx);

// Narrows a canvas's clip to `area` for as long as it lives.
class ClipTo {
  public:
    ClipTo(Canvas& narrowed, const Rect& area) : canvas(narrowed), before(narrowed.clip) {
        canvas.clip = intersection(before, area);
    }
    ~ClipTo() { canvas.clip = before; }
    ClipTo(const ClipTo&) = delete;
    ClipTo& operator=(const ClipTo&) = delete;

  private:
    Canvas& canvas;
    Rect before;
};

// Fills the clipped part of `area`, and returns that part.
Rect fill(const Canvas& canvas, const Rect& area, uint16_t colour);

// How strongly each pixel of a rectangle is covered, 0 to 255, rows `strideBytes` apart.
struct Mask {
    const uint8_t* coverage = nullptr;
    int width = 0;
    int height = 0;
    int strideBytes = 0;
};

// Blends `colour` over the canvas as far as `mask`, with its top left corner at (x, y), covers it. Returns the part of
// the canvas that the mask reaches.
Rect blend(const Canvas& canvas, const Mask& mask, int x, int y, uint16_t colour);

// `over` on top of `under`, with `coverage` 0 (all under) to 255 (all over).
uint16_t mixed(uint16_t under, uint16_t over, int coverage);

} // namespace ostrel

#endif
