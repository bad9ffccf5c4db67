// Where an element stands, and which text it shows.
#ifndef OSTREL_DISPLAY_WIDGET_LAYOUT_H
#define OSTREL_DISPLAY_WIDGET_LAYOUT_H

#include "display/canvas.h"
#include "gui/display.h"

#include <string_view>

namespace ostrel {

enum : int { TEXT_ITEM = 8 };

// The line box of a record's text.
int lineOf(const WidgetRecord& record);

// A record's text as far as its array goes, with or without a terminator.
std::wstring_view textOf(const WidgetRecord& record);

// The rectangle that an element covers, natural sizes worked out. They go by the text itself, also while bullets
// stand for it.
Rect boxOf(const WidgetRecord& record);

// The touch area that holds exactly the pixels of `box`.
TouchArea touchAreaOf(const Rect& box);

// Some ten thousand pixels around the panel are room enough to paint in, and leave room to calculate.
Rect withinReach(const Rect& box);

} // namespace ostrel

#endif
