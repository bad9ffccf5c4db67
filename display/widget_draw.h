// Drawing and erasing elements, and what the panel remembers of them.
#ifndef OSTREL_DISPLAY_WIDGET_DRAW_H
#define OSTREL_DISPLAY_WIDGET_DRAW_H

#include "display/canvas.h"
#include "gui/display.h"

namespace ostrel {

// Whether bullets stand for the texts of records with `password` set.
void hidePasswords(bool hide);

// Draws, or erases, on `canvas` and returns the part that changed.
Rect drawElement(Canvas& canvas, const WidgetRecord& record);
Rect eraseElement(const Canvas& canvas, const WidgetRecord& record);

} // namespace ostrel

#endif
