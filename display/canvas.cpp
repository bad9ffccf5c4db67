#include "display/canvas.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <cwchar>

namespace ostrel {

namespace {

// Red and blue in the low half, green in the high half, each with room above it: one multiplication scales all three.
constexpr uint32_t SPREAD = 0x07E0F81FU;

uint32_t spread(uint16_t colour) {
    return (colour | static_cast<uint32_t>(colour) << 16) & SPREAD;
}

int saturatedSum(int a, int b) {
    const int64_t sum = static_cast<int64_t>(a) + b;
    return static_cast<int>(std::clamp<int64_t>(sum, INT_MIN, INT_MAX));
}

// The C library's wide fill is the fastest there is for 32 bits at a time, on every machine.
void fillRun(uint16_t* pixels, size_t count, uint16_t colour) {
    if (count > 0 && reinterpret_cast<uintptr_t>(pixels) % sizeof(wchar_t) != 0) {
        *pixels++ = colour;
        --count;
    }
    static_assert(sizeof(wchar_t) == 2 * sizeof(uint16_t));
    const auto pair = static_cast<wchar_t>(colour | static_cast<uint32_t>(colour) << 16);
    wmemset(reinterpret_cast<wchar_t*>(pixels), pair, count / 2);
    if (count % 2 != 0)
        pixels[count - 1] = colour;
}

} // namespace

Rect intersection(const Rect& a, const Rect& b) {
    const Rect common{
        std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right), std::min(a.bottom, b.bottom)};
    return common.isEmpty() ? Rect{} : common;
}

Rect united(const Rect& a, const Rect& b) {
    if (a.isEmpty())
        return b;
    if (b.isEmpty())
        return a;
    return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right), std::max(a.bottom, b.bottom)};
}

Rect rectAt(int x, int y, int width, int height) {
    return {x, y, saturatedSum(x, std::max(width, 0)), saturatedSum(y, std::max(height, 0))};
}

Canvas canvasOver(uint16_t* pixels, int width, int height, int stridePx) {
    return {pixels, width, height, stridePx, {0, 0, width, height}};
}

Rect fill(const Canvas& canvas, const Rect& area, uint16_t colour) {
    const Rect part = intersection(area, canvas.clip);
    if (part.isEmpty())
        return part;
    const auto columns = static_cast<size_t>(part.right - part.left);
    const auto rows = static_cast<size_t>(part.bottom - part.top);
    if (columns == static_cast<size_t>(canvas.stridePx)) {
        fillRun(canvas.row(part.top), columns * rows, colour);
        return part;
    }
    for (int y = part.top; y < part.bottom; ++y)
        fillRun(canvas.row(y) + part.left, columns, colour);
    return part;
}

uint16_t mixed(uint16_t under, uint16_t over, int coverage) {
    // 33 steps are all that five and six bits a channel can show.
    const auto weight = static_cast<uint32_t>(coverage + 4) >> 3;
    const uint32_t sum = (spread(under) * (32 - weight) + spread(over) * weight) >> 5 & SPREAD;
    return static_cast<uint16_t>(sum | sum >> 16);
}

Rect blend(const Canvas& canvas, const Mask& mask, int x, int y, uint16_t colour) {
    const Rect part = intersection(rectAt(x, y, mask.width, mask.height), canvas.clip);
    for (int row = part.top; row < part.bottom; ++row) {
        const uint8_t* coverage = mask.coverage + static_cast<ptrdiff_t>(row - y) * mask.strideBytes + (part.left - x);
        uint16_t* pixel = canvas.row(row) + part.left;
        for (int column = part.left; column < part.right; ++column, ++coverage, ++pixel) {
            if (*coverage == 255)
                *pixel = colour;
            else if (*coverage != 0)
                *pixel = mixed(*pixel, colour, *coverage);
        }
    }
    return part;
}

} // namespace ostrel
