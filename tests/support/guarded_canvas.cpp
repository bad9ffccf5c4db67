#include "tests/support/guarded_canvas.h"

#include <climits>

using namespace ostrel;

int pick(std::mt19937& random, int low, int high) {
    return std::uniform_int_distribution<int>(low, high)(random);
}

int wildCoordinate(std::mt19937& random, int low, int high) {
    constexpr int EXTREMES[] = {INT_MIN, INT_MIN + 1, -65536, -1, 0, 65535, INT_MAX - 1, INT_MAX};
    if (pick(random, 0, 7) == 0)
        return EXTREMES[pick(random, 0, 7)];
    return pick(random, low, high);
}

Rect wildRect(std::mt19937& random) {
    return {
        wildCoordinate(random, -10, 50), wildCoordinate(random, -10, 40), wildCoordinate(random, -10, 50),
        wildCoordinate(random, -10, 40)};
}

GuardedCanvas::GuardedCanvas(std::mt19937& random) {
    const int width = pick(random, 1, 40);
    const int height = pick(random, 1, 30);
    // Often exactly as wide as the picture: the whole of it is then one run.
    const int stride = pick(random, 0, 1) == 0 ? width : width + pick(random, 1, 9);
    const size_t rows = static_cast<size_t>(height) + 2 * size_t{GUARD_ROWS};
    pixels.resize(rows * static_cast<size_t>(stride) + static_cast<size_t>(OFFSET_PX + width));
    for (uint16_t& pixel : pixels)
        pixel = static_cast<uint16_t>(random());
    original = pixels;
    view = canvasOver(
        &pixels[static_cast<size_t>(GUARD_ROWS) * static_cast<size_t>(stride) + OFFSET_PX], width, height, stride);
    if (pick(random, 0, 2) != 0) {
        const int left = pick(random, 0, width);
        const int top = pick(random, 0, height);
        view.clip = {left, top, pick(random, left, width), pick(random, top, height)};
    }
}

bool GuardedCanvas::isUntouchedOutsideClip() const {
    std::vector<uint16_t> outside = pixels;
    for (int y = view.clip.top; y < view.clip.bottom; ++y) {
        for (int x = view.clip.left; x < view.clip.right; ++x)
            outside[indexOf(x, y)] = before(x, y);
    }
    return outside == original;
}
