// The panel behind the drawing operations: a shadow of its picture in cached memory, which is drawn to, and the device
// that each finished drawing is copied to. Made at the first use and never destroyed, so that drawing works while
// static objects are constructed and after exit has begun.
#ifndef OSTREL_DISPLAY_PANEL_H
#define OSTREL_DISPLAY_PANEL_H

#include "display/canvas.h"
#include "display/power.h"

namespace ostrel {

// The shadow, 320x240. Draw here, then flush.
Canvas& panelCanvas();

// Shows what was drawn inside `area`, at once. Every operation flushes what it changed: programs sleep right after
// drawing.
void flush(const Rect& area);

// The colour of the last lcd_clear, 0 at first: what erasing paints.
uint16_t background();
void setBackground(uint16_t colour);

// Changes with every setBackground: what was drawn under another number is no longer there.
unsigned pageNumber();

// Lights or darkens the panel. What is drawn while it is dark is there when it lights.
void setPower(Power power);

// Closes the panel and opens it anew, as a fresh program would. For tests.
void reopenPanel();

// Colours come as any int; the low 16 bits count.
constexpr uint16_t colourOf(int colour) {
    return static_cast<uint16_t>(colour);
}

} // namespace ostrel

#endif
