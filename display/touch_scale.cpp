#include "display/touch_scale.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>

namespace ostrel {

namespace {

constexpr int WIDTH = 320;
constexpr int HEIGHT = 240;

// Far outside every panel, and small enough that products with 32-bit numbers stay inside 64 bits.
constexpr int64_t FAR_OUTSIDE = 1'000'000;

int64_t scaled(int32_t value, const AxisRange& range, int pixels) {
    const int64_t steps = int64_t{range.maximum} - range.minimum + 1;
    const int64_t pixel = steps > 0 ? (int64_t{value} - range.minimum) * pixels / steps : value;
    return std::clamp(pixel, -FAR_OUTSIDE, FAR_OUTSIDE);
}

} // namespace

bool parseCalibration(const char* text, TouchCalibration& calibration) {
    int32_t numbers[7];
    for (int32_t& number : numbers) {
        char* end = nullptr;
        errno = 0;
        const long long value = strtoll(text, &end, 10);
        const bool separated = *end == '\0' || *end == ' ';
        if (end == text || !separated || errno != 0 || value < INT32_MIN || value > INT32_MAX)
            return false;
        number = static_cast<int32_t>(value);
        text = end;
    }
    while (*text == ' ')
        ++text;
    if (*text != '\0' || numbers[6] == 0)
        return false;
    calibration = {numbers[0], numbers[1], numbers[2], numbers[3], numbers[4], numbers[5], numbers[6]};
    return true;
}

PenPoint TouchScale::toPanel(int32_t x, int32_t y) const {
    const int64_t column = scaled(x, xRange, WIDTH);
    const int64_t line = scaled(y, yRange, HEIGHT);
    const TouchCalibration& by = calibration;
    const int64_t correctedX = (by.a * column + by.b * line + by.c) / by.divisor;
    const int64_t correctedY = (by.d * column + by.e * line + by.f) / by.divisor;
    return {
        static_cast<int>(std::clamp<int64_t>(correctedX, 1, WIDTH - 1)),
        static_cast<int>(std::clamp<int64_t>(correctedY, 1, HEIGHT - 1))};
}

} // namespace ostrel
