// Text, as gui/display.h promises it.
#include "display/glyph_raster.h"
#include "display/panel.h"
#include "display/text_draw.h"
#include "gui/display.h"

#include <algorithm>

using namespace ostrel;

namespace {

constexpr uint16_t WHITE = 0xFFFF;
constexpr int TITLE_X = 90;
constexpr int TITLE_Y = 10;
// Kept free at both ends of a field that a text is centred in.
constexpr int FIELD_MARGIN = 3;

} // namespace

void drawText(wchar_t* text, int x, int y, int width, int, int, float size, int colour, int c) {
    const Canvas& canvas = panelCanvas();
    const int line = lineFor(size);
    if (c == 0) {
        flush(drawLine(canvas, viewOf(text), x, y, line, colourOf(colour)));
        return;
    }
    const int room = std::max(width, 2 * FIELD_MARGIN) - 2 * FIELD_MARGIN;
    flush(drawFitted(
        canvas, viewOf(text), static_cast<int64_t>(x) + FIELD_MARGIN, y, room, line, colourOf(colour), Align::Centre));
}

void drawFontBigWhiteString(wchar_t* text, int x, int y) {
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
