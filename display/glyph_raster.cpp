#include "display/glyph_raster.h"

#include "display/font.h"

#include <algorithm>
#include <cmath>

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H

namespace ostrel {

namespace {

constexpr FT_Int32 LOADING = FT_LOAD_TARGET_LIGHT | FT_LOAD_NO_BITMAP;

// The em that makes the face's capitals and descenders fill a line box well.
int em64Of(int line) {
    return line * 64 * 86 / 100;
}

bool isPrintable(uint32_t code) {
    const bool isControl = code < 0x20 || (code >= 0x7F && code < 0xA0);
    const bool isSurrogate = code >= 0xD800 && code < 0xE000;
    return !isControl && !isSurrogate && code <= 0x10FFFF;
}

// A box as high as a capital letter, one pixel clear on both sides.
void drawMissing(int line, GlyphPicture& picture) {
    const int bottom = lineBox(line).ascent;
    const int height = std::clamp(lineBox(line).capital, 3, bottom);
    const int width = std::max(line * 2 / 5, 3);
    picture.advance = width + 2;
    picture.left = 1;
    picture.top = bottom - height;
    picture.width = width;
    picture.rows = height;
    const auto stride = static_cast<size_t>(width);
    picture.coverage.assign(stride * static_cast<size_t>(height), 255);
    for (auto row = picture.coverage.begin() + width; row + width < picture.coverage.end(); row += width)
        std::fill(row + 1, row + width - 1, uint8_t{0});
}

FT_BBox boundsOf(FT_Outline& outline) {
    FT_BBox bounds{};
    FT_Outline_Get_CBox(&outline, &bounds);
    return bounds;
}

// Where accents begin: the top of a capital without one.
FT_Pos capitalTop(FT_Face face) {
    if (FT_Load_Char(face, 'H', LOADING) != 0)
        return 0;
    return boundsOf(face->glyph->outline).yMax;
}

// Hinting makes capitals jump from one height to the next, so they are measured. Accents get three rows where tails
// keep as many.
LineBox measured(int line) {
    LineBox box{(3 * line + 2) / 4, line * 3 / 5};
    const FontGlyph capital = findGlyph('H', em64Of(line));
    if (capital.face != nullptr)
        box.capital = std::clamp(static_cast<int>((capitalTop(capital.face) + 32) / 64), 1, box.ascent);
    if (box.ascent - box.capital < 3 && line - box.ascent > 3)
        ++box.ascent;
    return box;
}

LineBox lineBoxes[LARGEST_LINE + 1];

// Presses what stands above `knee` together so that `top` comes down to `limit`; the rest stays as it is.
void pressDown(FT_Outline& outline, FT_Pos knee, FT_Pos top, FT_Pos limit) {
    if (knee >= limit)
        knee = 0;
    for (int i = 0; i < outline.n_points; ++i) {
        FT_Pos& y = outline.points[i].y;
        if (y > knee)
            y = knee + FT_MulDiv(y - knee, limit - knee, top - knee);
    }
}

void pressUp(FT_Outline& outline, FT_Pos bottom, FT_Pos limit) {
    for (int i = 0; i < outline.n_points; ++i) {
        FT_Pos& y = outline.points[i].y;
        if (y < 0)
            y = FT_MulDiv(y, limit, bottom);
    }
}

// Loads a glyph's hinted outline, with accents and tails pressed into the line box where they would leave it.
bool loadInto(const FontGlyph& found, int line) {
    const FT_Pos highest = FT_Pos{64} * lineBox(line).ascent;
    const FT_Pos lowest = highest - FT_Pos{64} * line;
    if (FT_Load_Glyph(found.face, found.index, LOADING) != 0 || found.face->glyph->format != FT_GLYPH_FORMAT_OUTLINE)
        return false;
    FT_Outline& outline = found.face->glyph->outline;
    FT_BBox bounds = boundsOf(outline);
    if (bounds.yMax > highest) {
        const FT_Pos knee = capitalTop(found.face);
        if (FT_Load_Glyph(found.face, found.index, LOADING) != 0)
            return false;
        bounds = boundsOf(outline);
        pressDown(outline, knee, bounds.yMax, highest);
    }
    if (bounds.yMin < lowest)
        pressUp(outline, bounds.yMin, lowest);
    return true;
}

// Moves the outline between the pen and a whole-pixel advance that holds all of it; returns that advance.
int placeInAdvance(FT_GlyphSlot slot, int line) {
    const auto natural = static_cast<FT_Pos>(slot->linearHoriAdvance >> 10);
    const FT_BBox bounds = boundsOf(slot->outline);
    const FT_Pos ink = bounds.xMax - bounds.xMin;
    const FT_Pos widest = static_cast<FT_Pos>(line) * 4 * 64;
    const FT_Pos advance64 = std::clamp<FT_Pos>(std::max(natural + 32, ink + 63) & ~63, 64, widest);
    FT_Pos shift = (advance64 - natural) / 2;
    // A left edge on a pixel's edge makes stems crisp; a longer way there would show as uneven spacing. Letters that
    // are a single stem gain more than they lose.
    const FT_Pos longestWay = ink <= FT_Pos{line} * 64 / 6 ? 32 : 22;
    const FT_Pos crisp = ((bounds.xMin + shift + 32) & ~FT_Pos{63}) - bounds.xMin;
    if (std::abs(crisp - shift) <= longestWay)
        shift = crisp;
    shift = std::max(shift, -bounds.xMin);
    shift = std::min(shift, advance64 - bounds.xMax);
    FT_Outline_Translate(&slot->outline, shift, 0);
    return static_cast<int>(advance64 / 64);
}

// Copies the rendered bitmap, as far as it lies inside advance and line box.
void copyBitmap(FT_GlyphSlot slot, int line, GlyphPicture& picture) {
    const FT_Bitmap& bitmap = slot->bitmap;
    const int x = slot->bitmap_left;
    const int y = lineBox(line).ascent - slot->bitmap_top;
    const int left = std::max(x, 0);
    const int top = std::max(y, 0);
    const int right = std::min(x + static_cast<int>(bitmap.width), picture.advance);
    const int bottom = std::min(y + static_cast<int>(bitmap.rows), line);
    picture.coverage.clear();
    picture.left = picture.top = picture.width = picture.rows = 0;
    if (left >= right || top >= bottom)
        return;
    picture.left = left;
    picture.top = top;
    picture.width = right - left;
    picture.rows = bottom - top;
    for (int row = top; row < bottom; ++row) {
        const uint8_t* const from = bitmap.buffer + static_cast<ptrdiff_t>(row - y) * bitmap.pitch + (left - x);
        picture.coverage.insert(picture.coverage.end(), from, from + picture.width);
    }
}

} // namespace

int lineFor(float size) {
    if (std::isnan(size))
        return DEFAULT_LINE;
    return static_cast<int>(std::lround(std::clamp(size, float{SMALLEST_LINE}, float{LARGEST_LINE})));
}

const LineBox& lineBox(int line) {
    LineBox& box = lineBoxes[line];
    if (box.ascent == 0)
        box = measured(line);
    return box;
}

void forgetLineBoxes() {
    std::fill(std::begin(lineBoxes), std::end(lineBoxes), LineBox{});
}

void rasterise(uint32_t code, int line, GlyphPicture& picture) {
    lineBox(line); // measured before the glyph is loaded: both share the face
    const FontGlyph found = isPrintable(code) ? findGlyph(code, em64Of(line)) : FontGlyph{};
    if (found.face == nullptr || !loadInto(found, line))
        return drawMissing(line, picture);
    FT_GlyphSlotRec* const slot = found.face->glyph;
    picture.advance = placeInAdvance(slot, line);
    if (FT_Render_Glyph(slot, FT_RENDER_MODE_NORMAL) != 0)
        return drawMissing(line, picture);
    copyBitmap(slot, line, picture);
}

} // namespace ostrel
