// How large elements without a size of their own were drawn. Programs change a text and draw again without erasing:
// what a shorter text no longer covers is known here.
#ifndef OSTREL_DISPLAY_NATURAL_SIZES_H
#define OSTREL_DISPLAY_NATURAL_SIZES_H

#include "display/canvas.h"
#include "gui/display.h"

namespace ostrel {

// Notes that the element at the record's place now covers `box` (empty: nothing), and returns what it covered before
// on this page. Clearing the panel forgets everything.
Rect replaceNaturalBox(const WidgetRecord& record, const Rect& box);

} // namespace ostrel

#endif
