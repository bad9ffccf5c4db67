#include "gui/modal.h"
#include "tests/support/desk.h"

#include <cstring>
#include <gtest/gtest.h>

namespace {

class ModalTest : public Desk {
  protected:
    ModalTest() { modalImagesLoaded = 1; }
};

void noteClosing() {
    display().calls.emplace_back("onClose()");
}

void setFiveLines(Modal& modal) {
    modal.onClose = noteClosing;
    modal.setLine1(L"one");
    modal.setLine2(L"two");
    modal.setLine3(L"three");
    modal.setLine4(L"four");
    modal.setLine5(L"five");
}

const char* const BOXED_LINES = "drawText(\"one\", 130, 80, 130, 1, 0, 17, 65535, 1)\n"
                                "drawText(\"two\", 130, 100, 130, 1, 0, 17, 65535, 1)\n"
                                "drawText(\"three\", 130, 120, 130, 1, 0, 17, 65535, 1)\n";

TEST_F(ModalTest, LoadsTheIconsWithTheFirstMessageOfTheProcessOnly) {
    modalImagesLoaded = 0;
    const Modal first;
    EXPECT_EQ(
        display().take(), "loadPNG(/ostrel/modal.png)\n"
                          "loadPNG(/ostrel/info.png)\n"
                          "loadPNG(/ostrel/critical.png)\n"
                          "loadPNG(/ostrel/info_transparent.png)\n"
                          "loadPNG(/ostrel/critical_transparent.png)\n");
    EXPECT_EQ(modalImagesLoaded, 1);
    const Modal second;
    EXPECT_EQ(display().take(), "");
}

TEST_F(ModalTest, DrawsABoxWithThreeLinesAlsoWhenAllFiveAreSet) {
    Modal modal;
    setFiveLines(modal);
    for (const int type : {0, 1, 2, 5, -1}) {
        modal.draw(type, 0);
        EXPECT_EQ(
            display().take(), "drawRoundedRectangle(60, 60, 260, 160, 0, 240)\n"
                              "drawPNG(65, 85, 1, 0, " +
                                  std::to_string(type) + ")\n" + BOXED_LINES +
                                  "sleep(0)\n"
                                  "onClose()\n");
        EXPECT_EQ(modal.type, type);
    }
}

TEST_F(ModalTest, FillsThePanelWithFiveLinesOnBlueOrRed) {
    Modal modal;
    setFiveLines(modal);
    const struct {
        int type;
        const char* start;
    } cases[] = {
        {3, "lcd_clear(1405)\ndrawPNG(127, 25, 1, 0, 3)\n"}, {4, "lcd_clear(64106)\ndrawPNG(127, 25, 1, 0, 4)\n"}};
    for (const auto& full : cases) {
        modal.draw(full.type, 7);
        EXPECT_EQ(
            display().take(), std::string(full.start) + "drawText(\"one\", 1, 94, 318, 1, 0, 17, 65535, 1)\n"
                                                        "drawText(\"two\", 1, 112, 318, 1, 0, 17, 65535, 1)\n"
                                                        "drawText(\"three\", 1, 130, 318, 1, 0, 17, 65535, 1)\n"
                                                        "drawText(\"four\", 1, 148, 318, 1, 0, 17, 65535, 1)\n"
                                                        "drawText(\"five\", 1, 166, 318, 1, 0, 17, 65535, 1)\n"
                                                        "sleep(7)\n"
                                                        "onClose()\n");
    }
}

TEST_F(ModalTest, DrawsATimedBoxOverTheFrameImageAndNeitherWaitsNorCloses) {
    Modal modal;
    setFiveLines(modal);
    for (const int type : {0, 1, 2, 9}) {
        modal.drawTimed(type);
        EXPECT_EQ(
            display().take(), "drawPNG(60, 60, 1, 0, 0)\n"
                              "drawPNG(65, 65, 1, 0, " +
                                  std::to_string(type) +
                                  ")\n"
                                  "drawText(\"one\", 130, 65, 130, 1, 0, 17, 65535, 1)\n"
                                  "drawText(\"two\", 130, 85, 130, 1, 0, 17, 65535, 1)\n"
                                  "drawText(\"three\", 130, 105, 130, 1, 0, 17, 65535, 1)\n");
        EXPECT_EQ(modal.type, type);
    }
}

TEST_F(ModalTest, DrawsTimedFullScreensWithThreeLines) {
    Modal modal;
    setFiveLines(modal);
    const struct {
        int type;
        const char* start;
    } cases[] = {
        {3, "lcd_clear(1405)\ndrawPNG(127, 25, 1, 0, 3)\n"}, {4, "lcd_clear(64106)\ndrawPNG(127, 25, 1, 0, 4)\n"}};
    for (const auto& full : cases) {
        modal.drawTimed(full.type);
        EXPECT_EQ(
            display().take(), std::string(full.start) + "drawText(\"one\", 1, 94, 318, 1, 0, 17, 65535, 1)\n"
                                                        "drawText(\"two\", 1, 112, 318, 1, 0, 17, 65535, 1)\n"
                                                        "drawText(\"three\", 1, 130, 318, 1, 0, 17, 65535, 1)\n");
    }
}

TEST_F(ModalTest, ClosesOnlyAfterATapWasPressedAndReleased) {
    Modal modal;
    setFiveLines(modal);
    display().logPen = true;
    display().pen = {{-1, -1}, {0, -1}, {160, 120}, {1, 239}, {319, 1}, {-1, -1}, {50, 50}};
    modal.draw(1, -1);
    EXPECT_EQ(
        display().take(), std::string("drawRoundedRectangle(60, 60, 260, 160, 0, 240)\n"
                                      "drawPNG(65, 85, 1, 0, 1)\n") +
                              BOXED_LINES +
                              "readX(-1)\nreadY(-1)\nusleep(1000)\n"
                              "readX(0)\nreadY(-1)\nusleep(1000)\n"
                              "readX(160)\nreadY(120)\nusleep(1000)\n"
                              "readX(1)\nreadY(239)\nusleep(1000)\n"
                              "readX(319)\nreadY(1)\nusleep(1000)\n"
                              "readX(-1)\nreadY(-1)\nusleep(1000)\n"
                              "onClose()\n");
}

// A press may lie on the panel's outermost lines, where it already counts as lifted.
TEST_F(ModalTest, TakesAPressOnTheOutermostLinesForATapAndTheNextPixelForNone) {
    Modal modal;
    modal.onClose = doNothing;
    const struct {
        int x, y, reads;
    } cases[] = {{0, 0, 1}, {320, 240, 1}, {0, 120, 1},  {320, 120, 1}, {160, 0, 1},  {160, 240, 1},
                 {1, 1, 2}, {319, 239, 2}, {-1, 120, 3}, {321, 120, 3}, {160, -1, 3}, {160, 241, 3}};
    for (const auto& press : cases) {
        display().pen = {{press.x, press.y}, {-1, -1}, {0, 0}};
        display().penRead = 0;
        modal.draw(1, -2);
        EXPECT_EQ(display().penRead, static_cast<size_t>(press.reads)) << press.x << ',' << press.y;
    }
}

TEST_F(ModalTest, FillsTheBarOfABoxOverThreeSeconds) {
    Modal modal;
    setFiveLines(modal);
    modal.drawTimed(2);
    display().calls.clear();
    modal.time(3);
    EXPECT_EQ(
        display().take(), "disableTouch(1)\n"
                          "drawRect(70, 130, 250, 150, 65535)\n"
                          "fillRect(72, 132, 72, 148, 65535)\n"
                          "sleep(1)\n"
                          "fillRect(72, 132, 131, 148, 65535)\n"
                          "sleep(1)\n"
                          "fillRect(72, 132, 190, 148, 65535)\n"
                          "fillRect(72, 132, 248, 148, 65535)\n"
                          "sleep(1)\n"
                          "disableTouch(0)\n");
}

TEST_F(ModalTest, FillsTheBarOfAFullScreenLowerDown) {
    Modal modal;
    for (const int type : {3, 4}) {
        modal.drawTimed(type);
        display().calls.clear();
        modal.time(1);
        EXPECT_EQ(
            display().take(), "disableTouch(1)\n"
                              "drawRect(70, 150, 250, 170, 65535)\n"
                              "fillRect(72, 152, 72, 168, 65535)\n"
                              "fillRect(72, 152, 248, 168, 65535)\n"
                              "sleep(1)\n"
                              "disableTouch(0)\n");
    }
}

TEST_F(ModalTest, DrawsOnlyTheFrameOfTheBarForNoSecondsOrLess) {
    Modal modal;
    for (const int seconds : {0, -1, INT32_MIN}) {
        modal.time(seconds);
        EXPECT_EQ(display().take(), "disableTouch(1)\ndrawRect(70, 130, 250, 150, 65535)\ndisableTouch(0)\n");
    }
}

TEST_F(ModalTest, StepsNothingForLongerThanTheBarHasPixels) {
    Modal modal;
    modal.time(179);
    ASSERT_EQ(display().calls.size(), 2U + 179 * 2 + 1 + 1);
    EXPECT_EQ(display().calls[2 + 178 * 2], "fillRect(72, 132, 72, 148, 65535)");
    EXPECT_EQ(display().calls[2 + 178 * 2 + 1], "fillRect(72, 132, 248, 148, 65535)");
}

TEST_F(ModalTest, EmptiesTheOtherLinesWithTheFirst) {
    Modal modal;
    setFiveLines(modal);
    modal.setLine1(L"new");
    EXPECT_STREQ(modal.line1, L"new");
    for (const wchar_t* line : {modal.line2, modal.line3, modal.line4, modal.line5})
        EXPECT_STREQ(line, L"");
}

TEST_F(ModalTest, ReplacesNoLineButItsOwnWithTheOthers) {
    Modal modal;
    setFiveLines(modal);
    modal.setLine2(L"2");
    modal.setLine3(L"3");
    modal.setLine4(L"4");
    modal.setLine5(L"5");
    EXPECT_STREQ(modal.line1, L"one");
    EXPECT_STREQ(modal.line2, L"2");
    EXPECT_STREQ(modal.line3, L"3");
    EXPECT_STREQ(modal.line4, L"4");
    EXPECT_STREQ(modal.line5, L"5");
}

TEST_F(ModalTest, KeepsSixtyThreeCharactersOfALineAndTakesANullTextForAnEmptyOne) {
    Modal modal;
    setFiveLines(modal);
    for (const size_t length : {63U, 64U, 65U, 300U}) {
        const std::wstring text(length, L'x');
        modal.setLine5(text.c_str());
        modal.setLine4(text.c_str());
        EXPECT_EQ(modal.line4, text.substr(0, 63)) << length;
        EXPECT_EQ(modal.line5, text.substr(0, 63)) << length;
        EXPECT_EQ(modal.type, 0) << "the word behind the last line";
    }
    wchar_t* const none = nullptr;
    modal.setLine2(none);
    EXPECT_STREQ(modal.line2, L"");
    modal.setLine1(none);
    EXPECT_STREQ(modal.line1, L"");
}

TEST_F(ModalTest, IsBuiltOnAnyStorageWithEmptyLinesAndLeavesTheRestAlone) {
    alignas(Modal) static unsigned char storage[sizeof(Modal)];
    std::memset(storage, 0xA5, sizeof storage);
    unsigned char* bytes = storage;
    asm volatile("" : "+r"(bytes) : : "memory"); // the pattern counts
    Modal& modal = *new (bytes) Modal;
    EXPECT_EQ(modal.type, 0);
    for (const wchar_t* line : {modal.line1, modal.line2, modal.line3, modal.line4, modal.line5}) {
        for (int i = 0; i < 16; ++i)
            EXPECT_EQ(line[i], 0) << i;
        for (int i = 16; i < 64; ++i)
            EXPECT_EQ(static_cast<uint32_t>(line[i]), 0xA5A5A5A5) << i;
    }
    for (size_t i = 0; i < sizeof modal.onClose; ++i)
        EXPECT_EQ(storage[i], 0xA5);
    modal.~Modal();
    EXPECT_EQ(display().take(), "") << "a message does not erase itself";
}

} // namespace
