// Rendered characters, kept while there is room: texts are drawn again and again.
#ifndef OSTREL_DISPLAY_GLYPH_CACHE_H
#define OSTREL_DISPLAY_GLYPH_CACHE_H

#include "display/canvas.h"

namespace ostrel {

struct Glyph {
    uint32_t code = 0;
    uint16_t line = 0; // 0: nothing here
    uint16_t advance = 0;
    uint16_t left = 0;
    uint16_t top = 0;
    uint16_t width = 0;
    uint16_t rows = 0;
    uint32_t offset = 0; // of its coverage
};

// The glyph of `code` for a line box of `line` pixels, SMALLEST_LINE..LARGEST_LINE. Valid until the next call.
const Glyph& glyphOf(uint32_t code, int line);

// Its coverage. Valid until the next glyphOf.
Mask maskOf(const Glyph& glyph);

// Forgets every glyph and closes the fonts; the next text opens them anew, as a fresh program would. For tests.
void reopenFonts();

} // namespace ostrel

#endif
