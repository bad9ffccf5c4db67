#include "tests/support/staged_fonts.h"

#include "display/glyph_cache.h"

#include <cstdint>
#include <fstream>
#include <iterator>
#include <sstream>

#include <ft2build.h>
#include FT_FREETYPE_H

namespace {

// Before every static object: some tests draw while those are constructed.
__attribute__((constructor(101))) void nameStagedFonts() {
    setenv("OSTREL_FONT_DIR", OSTREL_STAGED_FONTS, 0);
}

const std::string ORIGIN_FILE = std::string(OSTREL_GOLDEN_PICTURES) + "/fonts.txt";

// FNV-1a: enough to tell one release of a font from another.
uint64_t hashOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    uint64_t hash = 0xCBF29CE484222325U;
    for (auto byte = std::istreambuf_iterator<char>(file); byte != std::istreambuf_iterator<char>(); ++byte)
        hash = (hash ^ static_cast<unsigned char>(*byte)) * 0x100000001B3U;
    return hash;
}

// One line for each thing that text's pixels depend on.
std::string originHere() {
    std::ostringstream text;
    text << "FreeType " << FREETYPE_MAJOR << '.' << FREETYPE_MINOR << '.' << FREETYPE_PATCH << '\n';
    for (const char* file : {OSTREL_TEXT_FONT, OSTREL_SYMBOL_FONT})
        text << file << ' ' << std::hex << hashOf(std::string(OSTREL_STAGED_FONTS) + '/' + file) << '\n';
    return text.str();
}

std::string differenceOfOrigins() {
    std::ifstream file(ORIGIN_FILE);
    std::istringstream here(originHere());
    std::string differences;
    for (std::string golden, ours; std::getline(here, ours);) {
        std::getline(file, golden);
        if (golden != ours)
            differences.append("; the golden pictures were made with ").append(golden).append(", not ").append(ours);
    }
    return differences.empty() ? "; fonts and FreeType are those that the golden pictures were made with" : differences;
}

} // namespace

const char* stagedFonts() {
    return OSTREL_STAGED_FONTS;
}

testing::AssertionResult matchesTextGolden(const Picture& actual, const std::string& name) {
    const char* const update = std::getenv("OSTREL_UPDATE_GOLDEN");
    if (update != nullptr && *update == '1')
        std::ofstream(ORIGIN_FILE) << originHere();
    testing::AssertionResult result = matchesGolden(actual, name);
    return result ? result : result << differenceOfOrigins();
}

FontFolder::FontFolder(const std::string& folder) {
    setenv("OSTREL_FONT_DIR", folder.c_str(), 1);
    ostrel::reopenFonts();
}

FontFolder::~FontFolder() {
    setenv("OSTREL_FONT_DIR", stagedFonts(), 1);
    ostrel::reopenFonts();
}
