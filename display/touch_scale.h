// From a touch screen's units to panel pixels.
#ifndef OSTREL_DISPLAY_TOUCH_SCALE_H
#define OSTREL_DISPLAY_TOUCH_SCALE_H

#include "display/pen_queue.h"

#include <cstdint>

namespace ostrel {

// What an axis of the device may tell, both ends included. An empty range: panel pixels already.
struct AxisRange {
    int32_t minimum = 0;
    int32_t maximum = -1;
};

// Corrects a panel that is mounted turned, mirrored or slightly off: x' = (a x + b y + c) / divisor and
// y' = (d x + e y + f) / divisor, in panel pixels.
struct TouchCalibration {
    int32_t a = 1, b = 0, c = 0;
    int32_t d = 0, e = 1, f = 0;
    int32_t divisor = 1;
};

// Reads "a b c d e f divisor", seven whole numbers with blanks between. False, with `calibration` unchanged, for
// anything else and for a divisor of 0.
bool parseCalibration(const char* text, TouchCalibration& calibration);

struct TouchScale {
    AxisRange xRange;
    AxisRange yRange;
    TouchCalibration calibration;

    // x is 1..319 and y 1..239, however far outside the device is.
    PenPoint toPanel(int32_t x, int32_t y) const;
};

} // namespace ostrel

#endif
