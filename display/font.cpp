#include "display/font.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <unistd.h>

#include <ft2build.h>
#include FT_FREETYPE_H

namespace ostrel {

namespace {

struct Font {
    const char* file = nullptr;
    const char* without = nullptr; // what is seen when it is missing
    FT_Face face = nullptr;
    int em64 = 0;
    bool isTried = false;
};

struct Fonts {
    FT_Library library = nullptr;
    bool isReported = false; // both lie in one folder: one line shows the way out
    // In the order in which a character is looked for.
    Font fonts[2] = {
        {OSTREL_TEXT_FONT, "Texts are drawn as boxes or in another font", nullptr, 0, false},
        {OSTREL_SYMBOL_FONT, "Some symbols are drawn as boxes", nullptr, 0, false},
    };
};

Fonts& state() {
    static Fonts* const instance = new Fonts;
    return *instance;
}

std::string pathOf(const char* file) {
    const char* const named = getenv("OSTREL_FONT_DIR");
    const char* const folder = named != nullptr && *named != 0 ? named : "/ostrel/fonts";
    return std::string(folder) + '/' + file;
}

void report(Fonts& fonts, const Font& font, const std::string& path, const char* reason) {
    if (fonts.isReported)
        return;
    fonts.isReported = true;
    fprintf(
        stderr,
        "ostrel: no font at %s: %s. %s; run the program with 'ostrel-sim PROGRAM', or name the fonts' folder in "
        "OSTREL_FONT_DIR.\n",
        path.c_str(), reason, font.without);
}

void open(Fonts& fonts, Font& font) {
    font.isTried = true;
    const std::string path = pathOf(font.file);
    if (access(path.c_str(), R_OK) != 0)
        return report(fonts, font, path, strerror(errno));
    if (fonts.library == nullptr && FT_Init_FreeType(&fonts.library) != 0)
        return report(fonts, font, path, "FreeType does not start");
    if (FT_New_Face(fonts.library, path.c_str(), 0, &font.face) != 0)
        return report(fonts, font, path, "it is not a font, or a broken one");
    if (FT_IS_SCALABLE(font.face) && FT_Select_Charmap(font.face, FT_ENCODING_UNICODE) == 0)
        return;
    FT_Done_Face(font.face);
    font.face = nullptr;
    report(fonts, font, path, "it is not a scalable Unicode font");
}

bool setEm(Font& font, int em64) {
    if (font.em64 == em64)
        return true;
    font.em64 = em64;
    if (FT_Set_Char_Size(font.face, 0, em64, 0, 0) == 0)
        return true;
    font.em64 = 0;
    return false;
}

} // namespace

FontGlyph findGlyph(uint32_t code, int em64) {
    Fonts& all = state();
    for (Font& font : all.fonts) {
        if (!font.isTried)
            open(all, font);
        if (font.face == nullptr)
            continue;
        const FT_UInt index = FT_Get_Char_Index(font.face, code);
        if (index != 0 && setEm(font, em64))
            return {font.face, index};
    }
    return {};
}

void closeFonts() {
    state().isReported = false;
    for (Font& font : state().fonts) {
        if (font.face != nullptr)
            FT_Done_Face(font.face);
        font.face = nullptr;
        font.em64 = 0;
        font.isTried = false;
    }
}

} // namespace ostrel
