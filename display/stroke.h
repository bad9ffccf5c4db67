// Smooth lines, for ticks and chevrons.
#ifndef OSTREL_DISPLAY_STROKE_H
#define OSTREL_DISPLAY_STROKE_H

#include "display/canvas.h"

namespace ostrel {

// In pixels; whole numbers are the pixels' corners.
struct Point {
    float x;
    float y;
};

// A line with round ends and joints, `thickness` pixels wide, from point to point.
void strokeThrough(const Canvas& canvas, const Point* points, int count, float thickness, uint16_t colour);

} // namespace ostrel

#endif
