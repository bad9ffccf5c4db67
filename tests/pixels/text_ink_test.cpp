#include "tests/pixels/text_ink.h"

#include <gtest/gtest.h>
#include <ostrel.h>

namespace {

WidgetRecord record(int type, int width, const wchar_t* text) {
    static WidgetRecord blank;
    WidgetRecord element = blank;
    element.type = type;
    element.x = 8;
    element.y = 60;
    element.width = width;
    element.height = 40;
    element.fontSize = 20;
    std::wcscpy(element.text, text);
    return element;
}

TEST(TextInk, FindsATextThatDoesNotFitItsElementWhateverTheKind) {
    for (const int kind : {0, 1, 2, 3, 4, 5, 6, 7, 9}) {
        EXPECT_EQ(misfitOf(record(kind, 304, L"A text of a fair length"), false), "") << kind;
        EXPECT_EQ(misfitOf(record(kind, 140, L"A text of a fair length"), false), "it is made smaller or cut") << kind;
    }
    WidgetRecord item = record(8, 304, L"A text of a fair length");
    item.colourA = 0xFFFF;
    item.word9 = 1;
    EXPECT_EQ(misfitOf(item, false), "");
    item.width = 140;
    EXPECT_EQ(misfitOf(item, false), "it is made smaller or cut");
    item.word9 = 0; // now the panel is its only bound
    EXPECT_EQ(misfitOf(item, false), "");
    item.x = 250;
    EXPECT_EQ(misfitOf(item, false), "it is cut");
}

TEST(TextInk, TellsLabelAndValueApart) {
    EXPECT_EQ(misfitOf(record(1, 304, L"Address\t255.255.255.255"), false), "");
    EXPECT_EQ(
        misfitOf(record(1, 200, L"Address\t255.255.255.255"), false), "the label is made smaller, cut or covered");
    EXPECT_EQ(
        misfitOf(record(1, 304, L"A\tvalue of more than three fifths"), false),
        "the value is made smaller, cut or covered");
    EXPECT_EQ(misfitOf(record(1, 304, L"A\tvalue of more than three fifths"), true), "");
}

TEST(TextInk, FindsATitleThatDoesNotFit) {
    EXPECT_EQ(misfitOfTitle(L"Settings"), "");
    EXPECT_EQ(misfitOfTitle(L"Settings of the router"), "it is made smaller or cut");
}

// Examples that anybody can look up: black and white have 21, pure red on white 4.0, blue on black 2.4.
TEST(TextInk, MeasuresContrast) {
    const auto contrast = [](uint16_t text, uint16_t ground) { return contrastOf(Ink{{0, 0, text, ground}}); };
    EXPECT_NEAR(contrast(0xFFFF, 0x0000), 21.0, 0.01);
    EXPECT_NEAR(contrast(0x0000, 0xFFFF), 21.0, 0.01);
    EXPECT_NEAR(contrast(0xF800, 0xFFFF), 4.0, 0.01);
    EXPECT_NEAR(contrast(0x001F, 0x0000), 2.44, 0.01);
    EXPECT_NEAR(contrast(0x1234, 0x1234), 1.0, 0.001);
}

TEST(TextInk, FindsWhereALabelAndItsValueReadWorst) {
    WidgetRecord button = record(0, 304, L"Text");
    button.colourA = 0xFFFF;
    button.colourB = 0xF800;
    EXPECT_NEAR(contrastOf(button), 4.0, 0.05);
    EXPECT_GT(contrastOf(record(7, 304, L"Label\tValue")), 10);
}

} // namespace
