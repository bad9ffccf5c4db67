// One character as coverage, rendered by FreeType so that it keeps inside its own advance and line box: a letter drawn
// beside another never touches it, and a fill over the box takes all of it away.
#ifndef OSTREL_DISPLAY_GLYPH_RASTER_H
#define OSTREL_DISPLAY_GLYPH_RASTER_H

#include <cstdint>
#include <vector>

namespace ostrel {

// Line boxes are whole pixels high, within what a panel has a use for.
enum : int { SMALLEST_LINE = 6, LARGEST_LINE = 96, DEFAULT_LINE = 20, TITLE_LINE = 28 };

// The line box for a text size as programs give it: the nearest height, DEFAULT_LINE for what is not a number.
int lineFor(float size);

// Where the letters stand in a line box.
struct LineBox {
    int ascent = 0;  // rows above the baseline
    int capital = 0; // rows of a capital letter
};
const LineBox& lineBox(int line);

// The row that halves capital letters, from the line box's top: what centres a text in a field to the eye.
inline int capitalCentre(int line) {
    return lineBox(line).ascent - (lineBox(line).capital + 1) / 2;
}

// The inked rectangle lies `left` pixels from the pen and `top` from the line box's top; 0 <= left, left + width <=
// advance, 0 <= top, top + rows <= line, and advance >= 1.
struct GlyphPicture {
    int advance = 0;
    int left = 0;
    int top = 0;
    int width = 0;
    int rows = 0;
    std::vector<uint8_t> coverage; // width * rows, row after row
};

// Forgets the line boxes, for tests that change the fonts.
void forgetLineBoxes();

// Renders `code` for a line box. What no font has, controls and what is no code point become an empty box that shows.
void rasterise(uint32_t code, int line, GlyphPicture& picture);

} // namespace ostrel

#endif
