// Where text lands on the panel: line boxes, fields, the title, and what odd arguments do.
#include "display/panel.h"
#include "gui/display.h"
#include "tests/support/panel_file.h"
#include "tests/support/staged_fonts.h"

#include <climits>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <string>

using namespace ostrel;

namespace {

constexpr float NOT_A_NUMBER = std::numeric_limits<float>::quiet_NaN();
constexpr float INFINITE = std::numeric_limits<float>::infinity();

// The box around everything on the panel that is not `colour`.
Rect inkOf(const PanelFile& panel, uint16_t colour = 0) {
    const Picture shown = panel.picture();
    Rect ink;
    for (int y = 0; y < shown.height; ++y)
        for (int x = 0; x < shown.width; ++x)
            if (shown.at(x, y) != colour)
                ink = united(ink, rectAt(x, y, 1, 1));
    return ink;
}

bool isInside(const Rect& inner, const Rect& outer) {
    return inner.left >= outer.left && inner.right <= outer.right && inner.top >= outer.top &&
           inner.bottom <= outer.bottom;
}

} // namespace

TEST(Text, LooksCrispInAllScriptsAndSizes) {
    const PanelFile panel;
    fillRect(0, 0, 160, 44, 0x057D);
    drawText(L"Wi-Fi Łódź şifre", 4, 2, 0, 1, 0, 20, 0xFFFF, 0);
    drawText(L"Ρυθμίσεις Сеть ✓", 4, 24, 0, 1, 0, 17, 0xFFFF, 0);
    fillRect(160, 0, 320, 44, 0xFFFF);
    drawText(L"pass@word {19%}", 164, 2, 0, 1, 0, 20, 0, 0);
    drawText(L"ÄÖÜ Åñż Й, Ěř → 5 €", 164, 25, 0, 1, 0, 14, 0, 0);
    drawFontBigWhiteString(L"Settings Żółw", 90, 46);
    EXPECT_TRUE(matchesTextGolden(panel.picture({0, 0, 320, 76}), "text"));
}

TEST(Text, StartsAtXAndIgnoresTheWidthWithoutCentring) {
    const PanelFile panel;
    drawText(L"HHHHHHHH", 50, 40, 10, 1, 0, 20, 0xFFFF, 0);
    const Rect ink = inkOf(panel);
    EXPECT_TRUE(isInside(ink, {50, 40, 50 + textWidth(L"HHHHHHHH", 20), 60}));
    EXPECT_GT(ink.right, 100);
}

TEST(Text, IsCentredInItsField) {
    const PanelFile panel;
    const int width = textWidth(L"Done", 20);
    drawText(L"Done", 100, 50, 120, 1, 0, 20, 0xFFFF, 1);
    const PanelFile expected;
    drawText(L"Done", 100 + (120 - width) / 2, 50, 0, 1, 0, 20, 0xFFFF, 0);
    EXPECT_EQ(panel.picture(), expected.picture());
}

TEST(Text, KeepsThreePixelsFreeAtBothEndsOfAField) {
    const std::wstring text = L"A label that fits";
    const int width = textWidth(text.c_str(), 20);
    const PanelFile exact;
    drawText(text.c_str(), 100, 50, width + 6, 1, 0, 20, 0xFFFF, 1);
    const PanelFile expected;
    drawText(text.c_str(), 103, 50, 0, 1, 0, 20, 0xFFFF, 0);
    EXPECT_EQ(exact.picture(), expected.picture());

    const PanelFile smaller;
    drawText(text.c_str(), 100, 50, width + 5, 1, 0, 20, 0xFFFF, 1);
    EXPECT_NE(smaller.picture(), expected.picture());
    EXPECT_TRUE(isInside(inkOf(smaller), {103, 50, 100 + width + 2, 70}));
}

TEST(Text, ShrinksToFourteenPixelsBeforeItIsCut) {
    const std::wstring text = L"A label of some length";
    const int width = textWidth(text.c_str(), 14);
    const PanelFile shrunk;
    drawText(text.c_str(), 20, 50, width + 6, 1, 0, 20, 0xFFFF, 1);
    const PanelFile small;
    drawText(text.c_str(), 23, 50, 0, 1, 0, 14, 0xFFFF, 0);
    const Rect expected = inkOf(small);
    const Rect ink = inkOf(shrunk);
    EXPECT_EQ(ink.left, expected.left);
    EXPECT_EQ(ink.right, expected.right);
    EXPECT_EQ(ink.bottom - ink.top, expected.bottom - expected.top);

    const PanelFile cut;
    drawText(text.c_str(), 20, 50, width + 5, 1, 0, 20, 0xFFFF, 1);
    EXPECT_TRUE(matchesTextGolden(cut.picture({20, 48, 20 + width + 6, 72}), "text-cut"));
}

TEST(Text, OfASmallSizeIsNeverShrunk) {
    const PanelFile panel;
    drawText(L"mmmmmmmmmmmmmmmmm", 10, 50, 60, 1, 0, 12, 0xFFFF, 1);
    const PanelFile expected;
    // What fits beside the ellipsis, at its own size.
    std::wstring shown;
    while (textWidth((shown + L"m…").c_str(), 12) <= 54)
        shown += L'm';
    shown += L'…';
    drawText(shown.c_str(), 10, 50, 60, 1, 0, 12, 0xFFFF, 1);
    EXPECT_EQ(panel.picture(), expected.picture());
}

TEST(Text, DrawsNothingInAFieldWithoutRoom) {
    const PanelFile panel;
    for (const int width : {0, 1, 6, 7, -1, INT_MIN})
        drawText(L"Word", 100, 100, width, 1, 0, 20, 0xFFFF, 1);
    EXPECT_TRUE(inkOf(panel).isEmpty());
}

TEST(Text, TellsWhichCharacterLiesAtAPixel) {
    const int first = textWidth(L"W", 20);
    const int second = textWidth(L"Wi", 20);
    EXPECT_EQ(textTouchPosition(L"Wide", 0, 20), 0);
    EXPECT_EQ(textTouchPosition(L"Wide", first - 1, 20), 0);
    EXPECT_EQ(textTouchPosition(L"Wide", first, 20), first * 1000 + 1);
    EXPECT_EQ(textTouchPosition(L"Wide", second - 1, 20), first * 1000 + 1);
    EXPECT_EQ(textTouchPosition(L"Wide", textWidth(L"Wide", 20) - 1, 20), textWidth(L"Wid", 20) * 1000 + 3);
}

TEST(Text, HasNoCharacterBeyondItsEnds) {
    EXPECT_EQ(textTouchPosition(L"Wide", textWidth(L"Wide", 20), 20), -1);
    EXPECT_EQ(textTouchPosition(L"Wide", -1, 20), -1);
    EXPECT_EQ(textTouchPosition(L"Wide", INT_MAX, 20), -1);
    EXPECT_EQ(textTouchPosition(L"Wide", INT_MIN, 20), -1);
    EXPECT_EQ(textTouchPosition(L"", 0, 20), -1);
    EXPECT_EQ(textTouchPosition(static_cast<wchar_t*>(nullptr), 0, 20), -1);
}

TEST(Text, OfAnySizeAndPlaceIsSafe) {
    const PanelFile panel;
    const int places[] = {INT_MIN, -1000, -3, 0, 100, 319, 1000, INT_MAX};
    const float sizes[] = {NOT_A_NUMBER, INFINITE, -INFINITE, 0, -20, 1e9F, 1e-9F, 95.5F, 17.4F};
    for (const float size : sizes) {
        EXPECT_GT(textWidth(L"Wide", size), 0);
        EXPECT_LT(textWidth(L"Wide", size), 4 * 4 * 96);
        for (const int x : places)
            for (const int y : places)
                for (const int width : places) {
                    drawText(L"Wide", x, y, width, 1, 0, size, 0xFFFF, 0);
                    drawText(L"Wide", x, y, width, 1, 0, size, 0xFFFF, 1);
                }
    }
    EXPECT_FALSE(inkOf(panel).isEmpty());
    EXPECT_EQ(textWidth(L"Wide", NOT_A_NUMBER), textWidth(L"Wide", 20));
}

TEST(Text, MayBeNullOrEmpty) {
    const PanelFile panel;
    wchar_t* const nothing = nullptr;
    drawText(nothing, 0, 0, 100, 1, 0, 20, 0xFFFF, 1);
    drawText(L"", 0, 0, 100, 1, 0, 20, 0xFFFF, 0);
    drawFontBigWhiteString(nothing, 90, 10);
    unDrawTitle(nothing);
    EXPECT_EQ(textWidth(nothing, 20), 0);
    EXPECT_TRUE(inkOf(panel).isEmpty());
}

TEST(Text, LongerThanEveryPanelHasASaturatedWidth) {
    std::wstring endless;
    endless.resize(40'000'000, L'W');
    EXPECT_EQ(textWidth(endless.c_str(), 96), INT_MAX);
    const PanelFile panel;
    drawText(endless.c_str(), 0, 0, 100, 1, 0, 20, 0xFFFF, 0);
    EXPECT_EQ(textTouchPosition(endless.c_str(), 3'000'000, 20), INT_MAX);
}

TEST(Text, TakesColoursModulo65536) {
    const PanelFile panel;
    drawText(L"Word", 10, 10, 0, 1, 0, 20, 0x1234F800, 0);
    const PanelFile expected;
    drawText(L"Word", 10, 10, 0, 1, 0, 20, 0xF800, 0);
    EXPECT_EQ(panel.picture(), expected.picture());
}

TEST(Title, FitsTheHeader) {
    const PanelFile panel;
    drawFontBigWhiteString(L"ÄÅŻgjpy(|{", 90, 10);
    EXPECT_TRUE(isInside(inkOf(panel), {90, 10, 320, 41}));
}

TEST(Title, IsErasedAsWideAsItsText) {
    const PanelFile panel;
    lcd_clear(0x1111);
    drawFontBigWhiteString(L"Network", 90, 10);
    fillRect(283, 5, 318, 40, 0xF800);
    const Picture beforeErasing = panel.picture();
    unDrawTitle(L"Network");
    EXPECT_NE(panel.picture(), beforeErasing);
    fillRect(283, 5, 318, 40, 0x1111);
    EXPECT_EQ(panel.picture(), blankPicture(320, 240, 0x1111));
}

TEST(Title, ErasingThirteenLettersNeverReachesTheLanguageButton) {
    const PanelFile panel(0xFFFF);
    unDrawTitle(L"xxxxxxxxxxxxx");
    const Picture shown = panel.picture();
    EXPECT_EQ(shown.at(90, 10), 0);
    for (int y = 0; y < 240; ++y)
        for (int x = 283; x < 320; ++x)
            ASSERT_EQ(shown.at(x, y), 0xFFFF) << x << ", " << y;
}

TEST(Title, ADigitOfThePinIsErasedWholly) {
    for (int place = 0; place < 4; ++place) {
        for (wchar_t digit = L'0'; digit <= L'9'; ++digit) {
            const PanelFile panel;
            const wchar_t text[] = {digit, 0};
            drawFontBigWhiteString(text, 110 + 30 * place, 37);
            ASSERT_FALSE(inkOf(panel).isEmpty());
            const auto left = static_cast<unsigned short>(101 + 30 * place);
            fillRect(left, 31, static_cast<unsigned short>(left + 28), 58, 0);
            ASSERT_TRUE(inkOf(panel).isEmpty()) << static_cast<char>(digit) << " in box " << place;
        }
    }
}
