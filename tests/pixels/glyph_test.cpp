// Every single character: where its ink may be, how wide it is, and what stands for those that cannot be shown.
#include "display/glyph_cache.h"
#include "display/glyph_raster.h"
#include "display/panel.h"
#include "display/text_draw.h"
#include "gui/display.h"
#include "tests/support/panel_file.h"
#include "tests/support/scale.h"
#include "tests/support/staged_fonts.h"

#include <gtest/gtest.h>
#include <random>

using namespace ostrel;

namespace {

constexpr uint32_t SEED = 20240611;

struct CodeRange {
    uint32_t first;
    uint32_t last;
};
// Latin, Greek, Cyrillic, punctuation, currency, arrows, geometric shapes and check marks.
constexpr CodeRange REPERTOIRE[] = {{0x20, 0x24F},    {0x370, 0x3FF},   {0x400, 0x52F},
                                    {0x1E00, 0x1EFF}, {0x2010, 0x2044}, {0x20A0, 0x20BF},
                                    {0x2190, 0x21FF}, {0x25A0, 0x25FF}, {0x2700, 0x27BF}};

// Everything that the on-screen keyboard can type.
constexpr wchar_t KEYBOARD[] = L"1234567890qwertyuiopasdfghjklzxcvbnm.QWERTYUIOPASDFGHJKLZXCVBNM `~!@#$%^&*()+=-_\\/"
                               L"{}[];:?<>'|\",";

// A character of any kind: mostly those that people write, sometimes any 32 bits.
wchar_t randomCharacter(std::mt19937& random) {
    if (random() % 8 == 0)
        return static_cast<wchar_t>(std::max<uint32_t>(static_cast<uint32_t>(random()), 1));
    const CodeRange& range = REPERTOIRE[random() % std::size(REPERTOIRE)];
    return static_cast<wchar_t>(range.first + random() % (range.last - range.first + 1));
}

std::wstring randomText(std::mt19937& random, size_t longest) {
    std::wstring text(random() % (longest + 1), L' ');
    for (wchar_t& character : text)
        character = randomCharacter(random);
    return text;
}

void expectInsideItsBox(const GlyphPicture& glyph, uint32_t code, int line) {
    ASSERT_GE(glyph.advance, 1) << std::hex << code << std::dec << " in " << line;
    ASSERT_GE(glyph.left, 0) << std::hex << code << std::dec << " in " << line;
    ASSERT_GE(glyph.top, 0) << std::hex << code << std::dec << " in " << line;
    ASSERT_LE(glyph.left + glyph.width, glyph.advance) << std::hex << code << std::dec << " in " << line;
    ASSERT_LE(glyph.top + glyph.rows, line) << std::hex << code << std::dec << " in " << line;
    ASSERT_EQ(glyph.coverage.size(), static_cast<size_t>(glyph.width) * static_cast<size_t>(glyph.rows));
}

bool hasInk(wchar_t character, int line) {
    const Glyph& glyph = glyphOf(static_cast<uint32_t>(character), line);
    return glyph.width > 0 && glyph.rows > 0;
}

Picture pictureOf(const std::wstring& text) {
    const PanelFile panel;
    drawText(text.c_str(), 10, 10, 0, 1, 0, 20, 0xFFFF, 0);
    return panel.picture({0, 0, 100, 40});
}

} // namespace

TEST(Glyph, KeepsInsideItsAdvanceAndLineBox) {
    GlyphPicture glyph;
    for (const int line : {14, 17, 20, 28})
        for (const CodeRange& range : REPERTOIRE)
            for (uint32_t code = range.first; code <= range.last; ++code) {
                rasterise(code, line, glyph);
                ASSERT_NO_FATAL_FAILURE(expectInsideItsBox(glyph, code, line));
            }
}

TEST(Glyph, OfAnyCodeAndSizeKeepsInsideItsBox) {
    std::mt19937 random(SEED);
    GlyphPicture glyph;
    for (long i = 0; i < scaled(20000); ++i) {
        const auto code = static_cast<uint32_t>(randomCharacter(random));
        const int line = SMALLEST_LINE + static_cast<int>(random() % (LARGEST_LINE - SMALLEST_LINE + 1));
        rasterise(code, line, glyph);
        ASSERT_NO_FATAL_FAILURE(expectInsideItsBox(glyph, code, line)) << "seed " << SEED;
    }
}

TEST(Glyph, AFillOverItsBoxLeavesNoStrayPixel) {
    const PanelFile panel(0xFFFF);
    const Picture white = panel.picture();
    for (const wchar_t* key = KEYBOARD; *key != 0; ++key) {
        const wchar_t text[] = {*key, 0};
        drawText(text, 100, 24, 248, 1, 0, 20, 0, 0);
        fillRect(100, 24, static_cast<unsigned short>(100 + textWidth(text, 20)), 44, 0xFFFF);
        ASSERT_EQ(panel.picture(), white) << static_cast<char>(*key);
    }
}

TEST(Glyph, OfTheKeyboardIsAtMostNineteenPixelsWide) {
    for (const wchar_t* key = KEYBOARD; *key != 0; ++key) {
        const wchar_t text[] = {*key, 0};
        EXPECT_LE(textWidth(text, 20), 19) << static_cast<char>(*key);
        EXPECT_EQ(hasInk(*key, 20), *key != L' ') << static_cast<char>(*key);
    }
}

TEST(Glyph, OfCommonScriptsAndSymbolsIsThere) {
    const Picture missing = pictureOf(L"\u0378"); // a code point that nobody has assigned
    for (const wchar_t character :
         std::wstring(L"AzäöüßÅéñŁłśźżĞğİışěřőűΑΩάώϊЖйЩъёїґ€£¥©®°±×÷…–—“”„•†‰™←↑→↓✓✔✗✕▲▼◀▶●■★"))
        EXPECT_NE(pictureOf(std::wstring(1, character)), missing) << std::hex << static_cast<uint32_t>(character);
}

TEST(Glyph, ThatCannotBeShownIsABox) {
    const Picture missing = pictureOf(L"\u0378");
    EXPECT_TRUE(matchesTextGolden(missing, "text-missing"));
    for (const uint32_t code :
         {1U, 9U, 10U, 0x1FU, 0x7FU, 0x9FU, 0xD800U, 0xDFFFU, 0x110000U, 0x7FFFFFFFU, 0xFFFFFFFFU})
        EXPECT_EQ(pictureOf(std::wstring(1, static_cast<wchar_t>(code))), missing) << std::hex << code;
}

TEST(Widths, AddUp) {
    std::mt19937 random(SEED);
    for (long i = 0; i < scaled(2000); ++i) {
        const std::wstring a = randomText(random, 40);
        const std::wstring b = randomText(random, 40);
        const auto size = static_cast<float>(random() % 64);
        ASSERT_EQ(textWidth((a + b).c_str(), size), textWidth(a.c_str(), size) + textWidth(b.c_str(), size))
            << "seed " << SEED << ", round " << i;
    }
}

TEST(Widths, AreInvertedByTheTouchPosition) {
    std::mt19937 random(SEED);
    for (long i = 0; i < scaled(1000); ++i) {
        const std::wstring text = randomText(random, 40);
        const auto size = static_cast<float>(8 + random() % 40);
        for (size_t index = 0; index < text.size(); ++index) {
            const int left = textWidth(text.substr(0, index).c_str(), size);
            const int right = textWidth(text.substr(0, index + 1).c_str(), size);
            const int expected = 1000 * left + static_cast<int>(index);
            ASSERT_EQ(textTouchPosition(text.c_str(), left, size), expected) << "seed " << SEED << ", round " << i;
            ASSERT_EQ(textTouchPosition(text.c_str(), right - 1, size), expected) << "seed " << SEED << ", round " << i;
        }
        ASSERT_EQ(textTouchPosition(text.c_str(), textWidth(text.c_str(), size), size), -1);
    }
}

TEST(GlyphCache, GivesTheSameGlyphsAfterItWasFull) {
    const Picture before = pictureOf(L"Wide äß");
    std::mt19937 random(SEED);
    for (long i = 0; i < 3000; ++i)
        glyphOf(static_cast<uint32_t>(randomCharacter(random)), 6 + static_cast<int>(random() % 91));
    EXPECT_EQ(pictureOf(L"Wide äß"), before);
}

TEST(GlyphBlend, EqualsOnePixelAtATime) {
    std::mt19937 random(SEED);
    constexpr int WIDTH = 48;
    constexpr int HEIGHT = 40;
    for (long i = 0; i < scaled(4000); ++i) {
        Picture fast = blankPicture(WIDTH, HEIGHT, 0);
        for (uint16_t& pixel : fast.pixels)
            pixel = static_cast<uint16_t>(random());
        Picture slow = fast;
        std::vector<uint8_t> coverage(320); // 16 columns, 20 rows
        for (uint8_t& value : coverage)
            value = static_cast<uint8_t>(random() % 3 == 0 ? random() : random() % 2 * 255);
        const Mask mask{coverage.data(), static_cast<int>(random() % 17), static_cast<int>(random() % 21), 16};
        const int x = static_cast<int>(random() % 80) - 20;
        const int y = static_cast<int>(random() % 70) - 20;
        const auto colour = static_cast<uint16_t>(random());
        Canvas canvas = canvasOver(fast.pixels.data(), WIDTH, HEIGHT, WIDTH);
        const Rect clip = rectAt(
            static_cast<int>(random() % WIDTH), static_cast<int>(random() % HEIGHT), static_cast<int>(random() % WIDTH),
            static_cast<int>(random() % HEIGHT));
        const ClipTo narrowed(canvas, clip);
        blendGlyph(canvas, mask, x, y, colour);
        for (int row = 0; row < mask.height; ++row)
            for (int column = 0; column < mask.width; ++column) {
                const Rect pixel = rectAt(x + column, y + row, 1, 1);
                if (intersection(pixel, canvas.clip).isEmpty())
                    continue;
                const int weight =
                    textWeight(coverage.at(static_cast<size_t>(row) * 16 + static_cast<size_t>(column)), colour);
                uint16_t& under = slow.at(x + column, y + row);
                // mixed() takes coverage; this one has the weight that it rounds to.
                under = mixed(under, colour, weight * 8 > 255 ? 255 : weight * 8);
            }
        ASSERT_EQ(fast, slow) << "seed " << SEED << ", round " << i;
    }
}

TEST(GlyphBlend, MakesLightTextStrongerThanDarkText) {
    for (const int coverage : {64, 128, 192})
        EXPECT_GT(textWeight(static_cast<uint8_t>(coverage), 0xFFFF), textWeight(static_cast<uint8_t>(coverage), 0));
    for (const uint16_t colour : std::initializer_list<uint16_t>{0x0000, 0xFFFF, 0x057D}) {
        EXPECT_EQ(textWeight(0, colour), 0);
        EXPECT_EQ(textWeight(255, colour), 32);
    }
}
