#include "gui/modal.h"
#include "lang/languages.h"
#include "tests/support/keyboard_desk.h"
#include "util/bounded_copy.h"

namespace {

class KeyboardEditing : public KeyboardDesk {
  protected:
    KeyboardEditing() { fakeSleep().log = false; }

    std::string append(wchar_t c) {
        display().calls.clear();
        keyboard.appendChar(c);
        return display().take();
    }

    std::string removeLast() {
        display().calls.clear();
        keyboard.deleteChar();
        return display().take();
    }
};

// 24 characters of 10 pixels: 240.
const char* const TEXT_240 = "abcdefghijklmnopqrstuvwx";
// 19 characters of 10 pixels: 190.
const char* const TEXT_190 = "abcdefghijklmnopqrs";

TEST_F(KeyboardEditing, DrawsOnlyTheNewCharacterWhileTheTextFits) {
    begin(1, "ab");
    EXPECT_EQ(
        append(L'c'), "fillRect(70, 22, 72, 42, 65535)\n"
                      "drawText(\"c\", 70, 24, 10, 1, 0, 20, 0, 0)\n"
                      "fillRect(80, 22, 82, 42, 1405)\n");
    EXPECT_EQ(keyboard.oldWidth, 20);
    EXPECT_EQ(keyboard.newWidth, 30);
    EXPECT_EQ(keyboard.cursorX, 80);
}

TEST_F(KeyboardEditing, DrawsOnlyTheNewCharacterOnTheKeypad) {
    begin(2, "12");
    EXPECT_EQ(
        append(L'3'), "fillRect(75, 19, 77, 39, 65535)\n"
                      "drawText(\"3\", 75, 22, 10, 1, 0, 20, 0, 0)\n"
                      "fillRect(85, 19, 87, 39, 1405)\n");
}

TEST_F(KeyboardEditing, ScrollsTheLettersWhenTheNewTextIsWiderThan243Pixels) {
    display().characterWidths = {{L'3', 3}, {L'4', 4}};
    begin(1, TEXT_240);
    EXPECT_EQ(
        append(L'3'), // 243 pixels
        "fillRect(290, 22, 292, 42, 65535)\n"
        "drawText(\"3\", 290, 24, 3, 1, 0, 20, 0, 0)\n"
        "fillRect(293, 22, 295, 42, 1405)\n");
    EXPECT_EQ(keyboard.scrolled, 0);

    begin(1, TEXT_240);
    EXPECT_EQ(
        append(L'4'), // 244 pixels: pixel 1 is still the "a"
        "fillRect(45, 15, 313, 50, 65535)\n"
        "drawText(\"abcdefghijklmnopqrstuvwx4\", 50, 24, 244, 1, 0, 20, 0, 0)\n"
        "fillRect(294, 22, 296, 42, 1405)\n");
    EXPECT_EQ(keyboard.scrolled, 1);
    EXPECT_EQ(
        append(L'y'), // 254 pixels: pixel 11 is the "b"
        "fillRect(45, 15, 313, 50, 65535)\n"
        "drawText(\"bcdefghijklmnopqrstuvwx4y\", 50, 24, 244, 1, 0, 20, 0, 0)\n"
        "fillRect(294, 22, 296, 42, 1405)\n");
    EXPECT_EQ(keyboard.scrollOffset, 1);
    EXPECT_EQ(keyboard.oldWidth, 10);
    EXPECT_EQ(keyboard.newWidth, 254);
}

// The keypad asks for the width before the edit: a text may run past the box by one character.
TEST_F(KeyboardEditing, ScrollsTheKeypadWhenTheOldTextWasWiderThan199Pixels) {
    display().characterWidths = {{L'9', 9}, {L'x', 10}};
    begin(2, TEXT_190);
    EXPECT_EQ(
        append(L'9'), // 199 pixels
        "fillRect(245, 19, 247, 39, 65535)\n"
        "drawText(\"9\", 245, 22, 9, 1, 0, 20, 0, 0)\n"
        "fillRect(254, 19, 256, 39, 1405)\n");
    EXPECT_EQ(
        append(L'x'), // 209 pixels, after 199
        "fillRect(254, 19, 256, 39, 65535)\n"
        "drawText(\"x\", 254, 22, 10, 1, 0, 20, 0, 0)\n"
        "fillRect(264, 19, 266, 39, 1405)\n");
    EXPECT_EQ(keyboard.scrolled, 0);
    EXPECT_EQ(
        append(L'y'), // 219 pixels, after 209: pixel 20 is the "c"
        "fillRect(50, 13, 274, 48, 65535)\n"
        "drawText(\"cdefghijklmnopqrs9xy\", 55, 22, 199, 1, 0, 20, 0, 0)\n"
        "fillRect(254, 19, 256, 39, 1405)\n");
    EXPECT_EQ(keyboard.scrolled, 1);
}

TEST_F(KeyboardEditing, ScrollsTheKeypadFrom200Pixels) {
    begin(2, "abcdefghijklmnopqrst"); // 200 pixels: shown scrolled from the start
    EXPECT_EQ(
        append(L'u'), // pixel 11 is the "b"
        "fillRect(50, 13, 274, 48, 65535)\n"
        "drawText(\"bcdefghijklmnopqrstu\", 55, 22, 200, 1, 0, 20, 0, 0)\n"
        "fillRect(255, 19, 257, 39, 1405)\n");
}

TEST_F(KeyboardEditing, ErasesADeletedCharacterAndTheCursorBehindIt) {
    begin(1, "abc");
    EXPECT_EQ(
        removeLast(), "fillRect(70, 15, 80, 50, 65535)\n"
                      "fillRect(80, 22, 82, 42, 65535)\n"
                      "drawText(\"\", 70, 24, 0, 1, 0, 20, 0, 0)\n"
                      "fillRect(70, 22, 72, 42, 1405)\n");
    EXPECT_EQ(shown(), "ab");
    EXPECT_EQ(keyboard.blinkCounter, -25);
}

TEST_F(KeyboardEditing, ScrollsBackWhenCharactersOfALongTextAreDeleted) {
    begin(1, TEXT_240);
    type(L"yz"); // 260 pixels
    EXPECT_EQ(
        removeLast(), // 250 pixels: pixel 7 is the "a"
        "fillRect(45, 15, 313, 50, 65535)\n"
        "drawText(\"abcdefghijklmnopqrstuvwxy\", 50, 24, 250, 1, 0, 20, 0, 0)\n"
        "fillRect(300, 22, 302, 42, 1405)\n");
    EXPECT_EQ(keyboard.scrolled, 1);
    EXPECT_EQ(
        removeLast(), // 240 pixels: it fits again
        "fillRect(290, 15, 300, 50, 65535)\n"
        "fillRect(45, 15, 313, 50, 65535)\n"
        "drawText(\"abcdefghijklmnopqrstuvwx\", 50, 24, 240, 1, 0, 20, 0, 0)\n"
        "fillRect(290, 22, 292, 42, 1405)\n");
    EXPECT_EQ(keyboard.scrolled, 0);
    EXPECT_EQ(
        removeLast(), "fillRect(280, 15, 290, 50, 65535)\n"
                      "fillRect(290, 22, 292, 42, 65535)\n"
                      "drawText(\"\", 280, 24, 0, 1, 0, 20, 0, 0)\n"
                      "fillRect(280, 22, 282, 42, 1405)\n");
}

TEST_F(KeyboardEditing, ScrollsBackOnTheKeypad) {
    begin(2, TEXT_190);
    type(L"tuv"); // 220 pixels
    EXPECT_EQ(keyboard.scrolled, 1);
    EXPECT_EQ(
        removeLast(), // 210 pixels: pixel 11 is the "b"
        "fillRect(50, 13, 274, 48, 65535)\n"
        "drawText(\"bcdefghijklmnopqrstu\", 55, 22, 200, 1, 0, 20, 0, 0)\n"
        "fillRect(255, 19, 257, 39, 1405)\n");
    EXPECT_EQ(
        removeLast(), // 200 pixels: pixel 1 is the "a"
        "fillRect(50, 13, 274, 48, 65535)\n"
        "drawText(\"abcdefghijklmnopqrst\", 55, 22, 200, 1, 0, 20, 0, 0)\n"
        "fillRect(255, 19, 257, 39, 1405)\n");
    EXPECT_EQ(
        removeLast(), // 190 pixels
        "fillRect(245, 13, 255, 48, 65535)\n"
        "fillRect(50, 13, 274, 48, 65535)\n"
        "drawText(\"abcdefghijklmnopqrs\", 55, 22, 190, 1, 0, 20, 0, 0)\n"
        "fillRect(245, 19, 247, 39, 1405)\n");
    EXPECT_EQ(keyboard.scrolled, 0);
}

// An entry remembers that the one before it was scrolled; its first edit draws the whole box.
TEST_F(KeyboardEditing, RedrawsTheBoxAtTheFirstEditAfterALongEntry) {
    begin(1, TEXT_240);
    type(L"yz");
    begin(1, "ab");
    EXPECT_EQ(keyboard.scrolled, 1);
    EXPECT_EQ(
        append(L'c'), "fillRect(45, 15, 313, 50, 65535)\n"
                      "drawText(\"abc\", 50, 24, 30, 1, 0, 20, 0, 0)\n"
                      "fillRect(80, 22, 82, 42, 1405)\n");
    EXPECT_EQ(keyboard.scrolled, 0);
}

TEST_F(KeyboardEditing, ShowsALongTextFromItsStartWhereTheDisplayNamesNoCharacter) {
    begin(1, TEXT_240);
    display().namesNoCharacter = true;
    EXPECT_EQ(
        append(L'y'), "fillRect(45, 15, 313, 50, 65535)\n"
                      "drawText(\"abcdefghijklmnopqrstuvwxy\", 50, 24, 250, 1, 0, 20, 0, 0)\n"
                      "fillRect(300, 22, 302, 42, 1405)\n");
    EXPECT_EQ(keyboard.oldWidth, 0);
}

TEST_F(KeyboardEditing, DeletesNothingFromAnEmptyText) {
    begin(1);
    EXPECT_EQ(removeLast(), "");
    keyboard.prefixLength = -5;
    EXPECT_EQ(removeLast(), "");
}

TEST_F(KeyboardEditing, LeavesThePrefixAloneAndDrawsBehindIt) {
    keyboard.prefixLength = 3;
    begin(1, "+491");
    EXPECT_EQ(
        append(L'7'), "fillRect(60, 22, 62, 42, 65535)\n"
                      "drawText(\"7\", 60, 24, 10, 1, 0, 20, 0, 0)\n"
                      "fillRect(70, 22, 72, 42, 1405)\n");
    removeLast();
    removeLast();
    EXPECT_EQ(shown(), "+49");
    EXPECT_EQ(removeLast(), "");
    EXPECT_EQ(shown(), "+49");
}

TEST_F(KeyboardEditing, DrawsNothingOfAPrefixThatGrowsWhileItIsTyped) {
    keyboard.prefixLength = 2;
    begin(1, "a");
    EXPECT_EQ(
        append(L'b'), "fillRect(50, 22, 52, 42, 65535)\n"
                      "drawText(\"\", 50, 24, 0, 1, 0, 20, 0, 0)\n"
                      "fillRect(50, 22, 52, 42, 1405)\n");
    EXPECT_EQ(append(L'c').find("fillRect(50, 22, 52, 42, 65535)\ndrawText(\"c\", 50, 24, 10"), 0U);
    EXPECT_EQ(shown(), "abc");
}

TEST_F(KeyboardEditing, ScrollsByTheWidthBehindThePrefix) {
    keyboard.prefixLength = 10;
    begin(1, "0123456789abcdefghijklmnopqrstuvwx"); // 240 pixels behind the prefix
    EXPECT_EQ(keyboard.scrolled, 0);
    EXPECT_EQ(
        append(L'y'), // 250 pixels: pixel 7 is the "a"
        "fillRect(45, 15, 313, 50, 65535)\n"
        "drawText(\"abcdefghijklmnopqrstuvwxy\", 50, 24, 250, 1, 0, 20, 0, 0)\n"
        "fillRect(300, 22, 302, 42, 1405)\n");
    EXPECT_EQ(
        append(L'z'), // 260 pixels: pixel 17 is the "b"
        "fillRect(45, 15, 313, 50, 65535)\n"
        "drawText(\"bcdefghijklmnopqrstuvwxyz\", 50, 24, 250, 1, 0, 20, 0, 0)\n"
        "fillRect(300, 22, 302, 42, 1405)\n");
}

class FullKeyboard : public KeyboardEditing {
  protected:
    void fill() {
        for (int i = 0; i < 179; ++i)
            keyboard.appendChar(i < 178 ? L'x' : L'y');
        display().calls.clear();
    }
};

std::string fullMessage(const std::string& line1, const std::string& line2, const std::string& line3) {
    return "drawRoundedRectangle(60, 60, 260, 160, 0, 240)\n"
           "drawPNG(65, 85, 1, 0, 1)\n"
           "drawText(\"" +
           line1 + "\", 130, 80, 130, 1, 0, 17, 65535, 1)\ndrawText(\"" + line2 +
           "\", 130, 100, 130, 1, 0, 17, 65535, 1)\ndrawText(\"" + line3 +
           "\", 130, 120, 130, 1, 0, 17, 65535, 1)\n"
           "lcd_clear(0)\n";
}

TEST_F(FullKeyboard, RefusesThe180thCharacterWithAMessageAndDrawsItselfAgain) {
    begin(1);
    fill();
    const std::wstring full = keyboard.text;
    EXPECT_EQ(full.size(), 179U);
    EXPECT_EQ(full.back(), L'y');
    keyboard.drawBase();
    keyboard.drawKeyboard();
    const std::string redrawn = display().take();

    display().pen = {{160, 120}, {-1, -1}};
    display().penRead = 0;
    EXPECT_EQ(append(L'z'), fullMessage("[less_than_6_l1]", "[less_than_6_l2] 179", "[less_than_6_l3]") + redrawn);
    EXPECT_EQ(keyboard.text, full);
    EXPECT_EQ(display().penRead, 2U) << "the message was tapped away";
}

TEST_F(FullKeyboard, ComesBackWithLettersAlsoOverTheKeypad) {
    begin(2);
    fill();
    display().pen = {{160, 120}, {-1, -1}};
    display().penRead = 0;
    const std::string calls = append(L'1');
    EXPECT_NE(
        calls.find("lcd_clear(0)\nlcd_clear(0)\ndrawPNG(5, 15, 1, 0, 0)\nfillRect(45, 15, 313, 50, 65535)\n"),
        std::string::npos);
    EXPECT_NE(calls.find("fillRect(254, 209, 313, 237, 36509)\n"), std::string::npos);
    EXPECT_EQ(std::wstring(keyboard.text).size(), 179U);
    EXPECT_EQ(isNumericMode, 1);
}

TEST_F(FullKeyboard, TakesACharacterAgainWhenOneWasDeleted) {
    begin(1);
    fill();
    keyboard.deleteChar();
    EXPECT_EQ(keyboard.text[178], 0);
    keyboard.appendChar(L'z');
    EXPECT_EQ(keyboard.text[178], L'z');
    EXPECT_EQ(keyboard.text[179], 0);
}

TEST_F(FullKeyboard, ShowsItsMessageWithEmptyLinesWithoutALanguageFile) {
    begin(1);
    fill();
    ostrel::copyText(lang.file, "/nowhere/english.xml");
    display().pen = {{160, 120}, {-1, -1}};
    display().penRead = 0;
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    EXPECT_EQ(append(L'z').find(fullMessage("", " 179", "")), 0U) << "only the number is left";
    EXPECT_NE(testing::internal::GetCapturedStdout(), "");
    testing::internal::GetCapturedStderr();
    EXPECT_EQ(keyboard.active, 1);
}

} // namespace
