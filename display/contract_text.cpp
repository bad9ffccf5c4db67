// Text, as gui/display.h promises it.
#include "display/glyph_raster.h"
#include "display/panel.h"
#include "display/text_draw.h"
#include "gui/display.h"

using namespace ostrel;

namespace {

constexpr uint16_t WHITE = 0xFFFF;
constexpr int TITLE_X = 90;
constexpr int TITLE_Y = 10;
constexpr int TITLE_ROOM = 190; // up to the place of the language button, x = 283

} // namespace

void drawText(wchar_t* text, int x, int y, int width, int, int, float size, int colour, int c) {
    flush(drawInField(panelCanvas(), viewOf(text), x, y, width, lineFor(size), colourOf(colour), c));
}

void drawFontBigWhiteString(wchar_t* text, int x, int y) {
    if (x == TITLE_X && y == TITLE_Y)
        flush(drawFitted(panelCanvas(), viewOf(text), x, y, TITLE_ROOM, TITLE_LINE, WHITE, Align::Left));
    else
        flush(drawLine(panelCanvas(), viewOf(text), x, y, TITLE_LINE, WHITE));
}

void unDrawTitle(wchar_t* text) {
    const Rect title = rectAt(TITLE_X, TITLE_Y, widthOf(viewOf(text), TITLE_LINE), TITLE_LINE);
    flush(fill(panelCanvas(), title, background()));
}

int textWidth(wchar_t* text, float size) {
    return widthOf(viewOf(text), lineFor(size));
}

int textTouchPosition(wchar_t* text, int x, float size) {
    return positionAt(viewOf(text), x, lineFor(size));
}
