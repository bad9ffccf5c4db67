// Boxes with smooth rounded corners.
#ifndef OSTREL_DISPLAY_ROUNDED_H
#define OSTREL_DISPLAY_ROUNDED_H

#include "display/canvas.h"

namespace ostrel {

enum : int { MAX_RADIUS_PX = 16 };

// Fills the clipped part of `box` but for what its rounded corners leave out, and returns that part. The radius is at
// most MAX_RADIUS_PX and at most half of the box's shorter side; 0 makes a plain rectangle.
Rect fillRounded(const Canvas& canvas, const Rect& box, int radiusPx, uint16_t colour);

} // namespace ostrel

#endif
