#include "display/rounded.h"

#include <algorithm>
#include <cmath>

namespace ostrel {

namespace {

// A full disc, whose four quarters are the corners of a box.
struct Disc {
    bool isDrawn = false;
    uint8_t coverage[4 * MAX_RADIUS_PX * MAX_RADIUS_PX] = {};
};

void draw(Disc& disc, int radius) {
    const int side = 2 * radius;
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            const float dx = static_cast<float>(x - radius) + 0.5F;
            const float dy = static_cast<float>(y - radius) + 0.5F;
            const float inside = static_cast<float>(radius) - std::sqrt(dx * dx + dy * dy) + 0.5F;
            disc.coverage[y * side + x] = static_cast<uint8_t>(std::lround(std::clamp(inside, 0.0F, 1.0F) * 255.0F));
        }
    }
    disc.isDrawn = true;
}

const uint8_t* discOf(int radius) {
    static Disc discs[MAX_RADIUS_PX + 1];
    Disc& disc = discs[radius];
    if (!disc.isDrawn)
        draw(disc, radius);
    return disc.coverage;
}

int usableRadius(const Rect& box, int radius) {
    const int64_t width = static_cast<int64_t>(box.right) - box.left;
    const int64_t height = static_cast<int64_t>(box.bottom) - box.top;
    const int64_t largest = std::min<int64_t>(std::min(width, height) / 2, MAX_RADIUS_PX);
    return static_cast<int>(std::clamp<int64_t>(radius, 0, largest));
}

} // namespace

Rect fillRounded(const Canvas& canvas, const Rect& box, int radiusPx, uint16_t colour) {
    if (box.isEmpty())
        return {};
    const int radius = usableRadius(box, radiusPx);
    const Rect middle{box.left, box.top + radius, box.right, box.bottom - radius};
    fill(canvas, {box.left + radius, box.top, box.right - radius, middle.top}, colour);
    fill(canvas, middle, colour);
    fill(canvas, {box.left + radius, middle.bottom, box.right - radius, box.bottom}, colour);

    const int side = 2 * radius;
    const uint8_t* const disc = discOf(radius);
    const uint8_t* const lowerHalf = disc + static_cast<ptrdiff_t>(radius) * side;
    const Mask topLeft{disc, radius, radius, side};
    const Mask topRight{disc + radius, radius, radius, side};
    const Mask bottomLeft{lowerHalf, radius, radius, side};
    const Mask bottomRight{lowerHalf + radius, radius, radius, side};
    blend(canvas, topLeft, box.left, box.top, colour);
    blend(canvas, topRight, box.right - radius, box.top, colour);
    blend(canvas, bottomLeft, box.left, middle.bottom, colour);
    blend(canvas, bottomRight, box.right - radius, middle.bottom, colour);
    return intersection(box, canvas.clip);
}

} // namespace ostrel
