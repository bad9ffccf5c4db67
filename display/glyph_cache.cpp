#include "display/glyph_cache.h"

#include "display/font.h"
#include "display/glyph_raster.h"

#include <algorithm>
#include <vector>

namespace ostrel {

namespace {

// Three scripts in four sizes fit. When either is used up everything is forgotten: what is on the page comes back at
// the next drawing, at a cost that nobody sees.
enum : uint32_t { SLOTS = 1024, MOST_GLYPHS = SLOTS * 3 / 4, MOST_COVERAGE = 64 * 1024 };

struct Cache {
    Glyph slots[SLOTS];
    uint32_t count = 0;
    std::vector<uint8_t> coverage;
    GlyphPicture picture;
};

Cache& cache() {
    static Cache* const instance = new Cache;
    return *instance;
}

uint32_t slotOf(uint32_t code, int line) {
    return (code * 31 + static_cast<uint32_t>(line) * 0x9E37) % SLOTS;
}

// The glyph's own slot, or the free one where it belongs.
Glyph& findSlot(Cache& kept, uint32_t code, int line) {
    uint32_t slot = slotOf(code, line);
    while (kept.slots[slot].line != 0 && (kept.slots[slot].code != code || kept.slots[slot].line != line))
        slot = (slot + 1) % SLOTS;
    return kept.slots[slot];
}

void forgetAll(Cache& kept) {
    std::fill(std::begin(kept.slots), std::end(kept.slots), Glyph{});
    kept.count = 0;
    kept.coverage.clear();
}

const Glyph& render(Cache& kept, uint32_t code, int line) {
    rasterise(code, line, kept.picture);
    const GlyphPicture& picture = kept.picture;
    if (kept.count == MOST_GLYPHS || kept.coverage.size() + picture.coverage.size() > MOST_COVERAGE)
        forgetAll(kept);
    Glyph& glyph = findSlot(kept, code, line);
    glyph.code = code;
    glyph.line = static_cast<uint16_t>(line);
    glyph.advance = static_cast<uint16_t>(picture.advance);
    glyph.left = static_cast<uint16_t>(picture.left);
    glyph.top = static_cast<uint16_t>(picture.top);
    glyph.width = static_cast<uint16_t>(picture.width);
    glyph.rows = static_cast<uint16_t>(picture.rows);
    glyph.offset = static_cast<uint32_t>(kept.coverage.size());
    kept.coverage.insert(kept.coverage.end(), picture.coverage.begin(), picture.coverage.end());
    ++kept.count;
    return glyph;
}

} // namespace

const Glyph& glyphOf(uint32_t code, int line) {
    Cache& kept = cache();
    const Glyph& glyph = findSlot(kept, code, line);
    return glyph.line != 0 ? glyph : render(kept, code, line);
}

Mask maskOf(const Glyph& glyph) {
    return {cache().coverage.data() + glyph.offset, glyph.width, glyph.rows, glyph.width};
}

void reopenFonts() {
    forgetAll(cache());
    forgetLineBoxes();
    closeFonts();
}

} // namespace ostrel
