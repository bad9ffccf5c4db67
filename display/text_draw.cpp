#include "display/text_draw.h"

#include "display/glyph_cache.h"
#include "display/glyph_raster.h"

#include <algorithm>

namespace ostrel {

namespace {

constexpr uint32_t SPREAD = 0x07E0F81FU;

uint32_t spread(uint16_t colour) {
    return (colour | static_cast<uint32_t>(colour) << 16) & SPREAD;
}

struct Weights {
    uint8_t of[256] = {};
};

// Coverage to weight, bent by `lift` percent of c(1 - c): what blending in linear light would do, near enough.
constexpr Weights weightsLiftedBy(int lift) {
    Weights weights;
    for (int c = 0; c < 256; ++c)
        weights.of[c] = static_cast<uint8_t>((c * 25500 + lift * c * (255 - c) + 101601) * 32 / (25500 * 255));
    return weights;
}
constexpr Weights LIGHT_TEXT = weightsLiftedBy(35);
constexpr Weights DARK_TEXT = weightsLiftedBy(-10);
static_assert(LIGHT_TEXT.of[0] == 0 && LIGHT_TEXT.of[255] == 32, "no ink and full ink stay");
static_assert(DARK_TEXT.of[0] == 0 && DARK_TEXT.of[255] == 32, "no ink and full ink stay");

const Weights& weightsFor(uint16_t colour) {
    const int red = colour >> 11;
    const int green = (colour >> 5 & 0x3F) / 2;
    const int blue = colour & 0x1F;
    return 2 * red + 5 * green + blue >= 8 * 16 ? LIGHT_TEXT : DARK_TEXT;
}

// The middle of the capitals stays where it was, so that a row of labels stays a row when one is made smaller.
int topOfSmaller(int y, int line, int smaller) {
    return y + capitalCentre(line) - capitalCentre(smaller);
}

} // namespace

int textWeight(uint8_t coverage, uint16_t colour) {
    return weightsFor(colour).of[coverage];
}

Rect blendGlyph(const Canvas& canvas, const Mask& mask, int x, int y, uint16_t colour) {
    const Rect part = intersection(rectAt(x, y, mask.width, mask.height), canvas.clip);
    const uint8_t* const weights = weightsFor(colour).of;
    const uint32_t over = spread(colour);
    for (int row = part.top; row < part.bottom; ++row) {
        const uint8_t* coverage = mask.coverage + static_cast<ptrdiff_t>(row - y) * mask.strideBytes + (part.left - x);
        uint16_t* pixel = canvas.row(row) + part.left;
        for (const uint16_t* const end = canvas.row(row) + part.right; pixel < end; ++pixel, ++coverage) {
            const uint32_t weight = weights[*coverage];
            if (weight == 0)
                continue;
            const uint32_t sum = (spread(*pixel) * (32 - weight) + over * weight) >> 5 & SPREAD;
            *pixel = static_cast<uint16_t>(sum | sum >> 16);
        }
    }
    return part;
}

Rect drawLine(const Canvas& canvas, std::wstring_view text, int64_t x, int y, int line, uint16_t colour) {
    const Rect& clip = canvas.clip;
    if (y >= clip.bottom || static_cast<int64_t>(y) + line <= clip.top)
        return {};
    Rect painted;
    for (const wchar_t character : text) {
        if (x >= clip.right)
            break;
        const Glyph& glyph = glyphOf(static_cast<uint32_t>(character), line);
        if (glyph.width != 0 && x + glyph.advance > clip.left)
            painted = united(
                painted, blendGlyph(canvas, maskOf(glyph), static_cast<int>(x) + glyph.left, y + glyph.top, colour));
        x += glyph.advance;
    }
    return painted;
}

Rect drawFitted(
    const Canvas& canvas, std::wstring_view text, int64_t x, int y, int width, int line, uint16_t colour, Align align) {
    const FittedText fit = fitted(text, line, width);
    if (align == Align::Centre)
        x += (width - fit.width) / 2;
    else if (align == Align::Right)
        x += width - fit.width;
    const Rect& clip = canvas.clip;
    if (y >= clip.bottom || static_cast<int64_t>(y) + line <= clip.top)
        return {};
    const int top = topOfSmaller(y, line, fit.line);
    const Rect painted = drawLine(canvas, fit.shown, x, top, fit.line, colour);
    if (!fit.isCut)
        return painted;
    return united(painted, drawLine(canvas, L"\u2026", x + widthOf(fit.shown, fit.line), top, fit.line, colour));
}

Rect drawInField(
    const Canvas& canvas, std::wstring_view text, int x, int y, int width, int line, uint16_t colour, int c) {
    if (c == 0)
        return drawLine(canvas, text, x, y, line, colour);
    const int room = std::max(width, 2 * FIELD_MARGIN) - 2 * FIELD_MARGIN;
    return drawFitted(canvas, text, int64_t{x} + FIELD_MARGIN, y, room, line, colour, Align::Centre);
}

} // namespace ostrel
