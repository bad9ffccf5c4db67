// What the element kinds look like: one row of data a kind.
#ifndef OSTREL_DISPLAY_WIDGET_LOOK_H
#define OSTREL_DISPLAY_WIDGET_LOOK_H

#include "display/canvas.h"
#include "display/theme.h"
#include "gui/display.h"

#include <string_view>

namespace ostrel {

// An element about to be painted: its rectangle, within some ten thousand pixels of the panel, and what is in it.
struct Element {
    Rect box;
    std::wstring_view text;
    int line = 0;
    bool isSelected = false;
    bool isDisabled = false;
    Tones tones;
};

struct WidgetLook {
    void (*paint)(const Canvas& canvas, const Element& element, const WidgetLook& look);
    int textLeft;    // pixels between the left edge and the text
    int textRight;   // and between the text and the right edge
    int spareWidth;  // what the natural width adds to text and distances
    int spareHeight; // what the natural height adds to the text's line box
    Tones normal;
    Tones selected;
    Tones disabled;
    bool isPressed; // selected is the look under a pen, not a lasting choice
};

// The look of a kind; the push button's for a number that is no kind.
const WidgetLook& lookOf(int kind);

// The tones of a record in its state: the theme's, or made of its own two colours, face and text.
Tones tonesOf(const WidgetRecord& record, const WidgetLook& look);

// Black or white, whichever reads better on `face`.
uint16_t readableOn(uint16_t face);

} // namespace ostrel

#endif
