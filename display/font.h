// The fonts that texts are set in, opened from their folder at the first use: $OSTREL_FONT_DIR, else /ostrel/fonts.
#ifndef OSTREL_DISPLAY_FONT_H
#define OSTREL_DISPLAY_FONT_H

#include <cstdint>

// FreeType's own name for a face, without its headers.
struct FT_FaceRec_;

namespace ostrel {

// A face at the em size asked for, and the place of one character in it.
struct FontGlyph {
    FT_FaceRec_* face = nullptr;
    unsigned index = 0;
};

// The glyph of `code` in the text font, else in the symbol font, scaled to `em64` / 64 pixels an em. No face where
// neither has it. The first font that is missing or broken is reported, in one line on standard error, when it is
// needed.
FontGlyph findGlyph(uint32_t code, int em64);

// Closes the fonts; the next glyph opens them anew, as a fresh program would. For tests.
void closeFonts();

} // namespace ostrel

#endif
