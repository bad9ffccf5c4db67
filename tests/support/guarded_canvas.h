// A canvas inside a larger piece of memory whose every other pixel is watched: rows above and below, and the rest of
// each line where the stride is wider than the picture.
#ifndef OSTREL_TESTS_SUPPORT_GUARDED_CANVAS_H
#define OSTREL_TESTS_SUPPORT_GUARDED_CANVAS_H

#include "display/canvas.h"

#include <random>
#include <vector>

class GuardedCanvas {
  public:
    // Up to 40x30 pixels of random colours, with a random stride and clip.
    explicit GuardedCanvas(std::mt19937& random);

    ostrel::Canvas& canvas() { return view; }

    // What the canvas held before anything was drawn.
    uint16_t before(int x, int y) const { return original[indexOf(x, y)]; }
    uint16_t now(int x, int y) const { return pixels[indexOf(x, y)]; }

    // Whether everything outside the clip is as it was.
    bool isUntouchedOutsideClip() const;

  private:
    size_t indexOf(int x, int y) const {
        return static_cast<size_t>(y + GUARD_ROWS) * static_cast<size_t>(view.stridePx) +
               static_cast<size_t>(x + OFFSET_PX);
    }

    enum : int { GUARD_ROWS = 2, OFFSET_PX = 3 };
    std::vector<uint16_t> pixels;
    std::vector<uint16_t> original;
    ostrel::Canvas view;
};

// A random value, one time in eight an extreme one.
int wildCoordinate(std::mt19937& random, int low, int high);
ostrel::Rect wildRect(std::mt19937& random);

int pick(std::mt19937& random, int low, int high);

#endif
