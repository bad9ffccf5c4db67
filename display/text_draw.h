// Painting lines of text.
#ifndef OSTREL_DISPLAY_TEXT_DRAW_H
#define OSTREL_DISPLAY_TEXT_DRAW_H

#include "display/canvas.h"
#include "display/text_layout.h"

namespace ostrel {

// Blends a glyph's `mask` like blend() of canvas.h, with the coverage corrected for how bright `colour` is: thin light
// strokes on dark would look thinner than dark ones on light.
Rect blendGlyph(const Canvas& canvas, const Mask& mask, int x, int y, uint16_t colour);

// How strongly `coverage`, 0 to 255, lets a text of this colour through: 0 to 32.
int textWeight(uint8_t coverage, uint16_t colour);

// Draws `text` from x on, the top of its line box at y. Returns what it may have painted.
Rect drawLine(const Canvas& canvas, std::wstring_view text, int64_t x, int y, int line, uint16_t colour);

// Kept free at both ends of a field that a text is centred in.
enum : int { FIELD_MARGIN = 3 };

enum class Align { Left, Centre, Right };

// Draws `text` in the `width` pixels from x, made to fit. A text that had to be made smaller keeps the middle of its
// capitals. Returns what it may have painted.
Rect drawFitted(
    const Canvas& canvas, std::wstring_view text, int64_t x, int y, int width, int line, uint16_t colour, Align align);

// Draws `text` as drawText of gui/display.h does, `c` being its last argument.
Rect drawInField(
    const Canvas& canvas, std::wstring_view text, int x, int y, int width, int line, uint16_t colour, int c);

} // namespace ostrel

#endif
