#include "tests/support/keyboard_desk.h"

#include <sstream>

namespace {

using KeyboardDrawing = KeyboardDesk;

// Left and right edges of the keys of each row.
struct Sides {
    int left, right;
};
const std::vector<Sides> ROWS_1_AND_2 = {{3, 31},    {34, 62},   {65, 93},   {96, 124},  {127, 155},
                                         {158, 186}, {189, 217}, {220, 248}, {251, 279}, {282, 310}};
const std::vector<Sides> ROW_3 = {{17, 45},   {48, 76},   {79, 107},  {110, 138}, {141, 169},
                                  {172, 200}, {203, 231}, {234, 262}, {265, 293}};
const std::vector<Sides> ROW_4 = {{34, 62},   {65, 93},   {96, 124},  {127, 155},
                                  {158, 186}, {189, 217}, {220, 248}, {251, 279}};

std::string faces(const std::vector<Sides>& keys, int top, int bottom, int colour) {
    std::ostringstream calls;
    for (const Sides& key : keys)
        calls << "fillRect(" << key.left << ", " << top << ", " << key.right << ", " << bottom << ", " << colour
              << ")\n";
    return calls.str();
}

// Labels on successive keys, from the key number `first` on.
std::string labels(const std::vector<Sides>& keys, int y, const std::string& characters, size_t first = 0) {
    std::ostringstream calls;
    for (size_t i = 0; i < characters.size(); ++i)
        calls << "drawText(\"" << characters[i] << "\", " << keys[first + i].left << ", " << y
              << ", 28, 1, 0, 20, 65535, 1)\n";
    return calls.str();
}

const std::string LOWER_LABELS =
    labels(ROWS_1_AND_2, 121, "qwertyuiop") + labels(ROW_3, 152, "asdfghjkl") + labels(ROW_4, 183, "zxcvbnm.");
const std::string UPPER_LABELS =
    labels(ROWS_1_AND_2, 121, "QWERTYUIOP") + labels(ROW_3, 152, "ASDFGHJKL") + labels(ROW_4, 183, "ZXCVBNM.");
const std::string DIGIT_LABELS = labels(ROWS_1_AND_2, 90, "1234567890");
const std::string SYMBOL_LABELS = labels(ROWS_1_AND_2, 90, "`~!@#$%^&*") + labels(ROWS_1_AND_2, 121, "()+=-_\\/", 1) +
                                  "fillRect(3, 116, 31, 144, 6339)\n"
                                  "fillRect(282, 116, 310, 144, 6339)\n" +
                                  labels(ROW_3, 152, "{}[];:?", 1) +
                                  "fillRect(17, 147, 45, 175, 6339)\n"
                                  "fillRect(265, 147, 293, 175, 6339)\n" +
                                  labels(ROW_4, 183, "<>'|\",", 1) +
                                  "fillRect(34, 178, 62, 206, 6339)\n"
                                  "fillRect(251, 178, 279, 206, 6339)\n";

std::string letterFaces(int digitRowColour) {
    return faces(ROWS_1_AND_2, 85, 113, digitRowColour) + faces(ROWS_1_AND_2, 116, 144, 1405) +
           faces(ROW_3, 147, 175, 1405) + faces(ROW_4, 178, 206, 1405);
}

const std::string BOTTOM_ROW = "fillRect(6, 209, 65, 237, 36509)\n"
                               "fillRect(68, 209, 110, 237, 36509)\n"
                               "fillRect(113, 209, 206, 237, 36509)\n"
                               "fillRect(209, 209, 251, 237, 36509)\n"
                               "fillRect(254, 209, 313, 237, 36509)\n"
                               "drawText(\"#@%\", 6, 214, 59, 1, 0, 20, 0, 1)\n"
                               "drawText(\"CAP\", 68, 214, 45, 1, 0, 20, 0, 1)\n"
                               "drawText(\"Space\", 113, 214, 90, 1, 0, 20, 0, 1)\n"
                               "drawText(\"DEL\", 209, 214, 45, 1, 0, 20, 0, 1)\n"
                               "drawText(\"Done\", 254, 214, 59, 1, 0, 20, 0, 1)\n";

const std::string FRAME = "lcd_clear(0)\n"
                          "drawPNG(5, 15, 1, 0, 0)\n"
                          "fillRect(45, 15, 313, 50, 65535)\n";

const std::string EMPTY_BASE = FRAME +
                               "drawText(\"\", 50, 24, 248, 1, 0, 20, 0, 0)\n"
                               "fillRect(50, 22, 52, 42, 1405)\n" +
                               BOTTOM_ROW;

const std::string KEYPAD_FRAME = "lcd_clear(0)\n"
                                 "drawPNG(10, 13, 1, 0, 0)\n"
                                 "fillRect(50, 13, 274, 48, 65535)\n";

std::string keypad(int dotFace, int dotLabel) {
    return "fillRect(50, 55, 120, 85, 1405)\n"
           "fillRect(127, 55, 197, 85, 1405)\n"
           "fillRect(204, 55, 274, 85, 1405)\n"
           "fillRect(50, 92, 120, 122, 1405)\n"
           "fillRect(127, 92, 197, 122, 1405)\n"
           "fillRect(204, 92, 274, 122, 1405)\n"
           "fillRect(50, 129, 120, 159, 1405)\n"
           "fillRect(127, 129, 197, 159, 1405)\n"
           "fillRect(204, 129, 274, 159, 1405)\n"
           "fillRect(50, 166, 120, 196, 1405)\n"
           "fillRect(127, 166, 197, 196, 1405)\n"
           "fillRect(204, 166, 274, 196, " +
           std::to_string(dotFace) +
           ")\n"
           "fillRect(50, 203, 274, 233, 1405)\n"
           "drawText(\"1\", 50, 61, 70, 1, 0, 20, 65535, 1)\n"
           "drawText(\"2\", 127, 61, 70, 1, 0, 20, 65535, 1)\n"
           "drawText(\"3\", 204, 61, 70, 1, 0, 20, 65535, 1)\n"
           "drawText(\"4\", 50, 98, 70, 1, 0, 20, 65535, 1)\n"
           "drawText(\"5\", 127, 98, 70, 1, 0, 20, 65535, 1)\n"
           "drawText(\"6\", 204, 98, 70, 1, 0, 20, 65535, 1)\n"
           "drawText(\"7\", 50, 135, 70, 1, 0, 20, 65535, 1)\n"
           "drawText(\"8\", 127, 135, 70, 1, 0, 20, 65535, 1)\n"
           "drawText(\"9\", 204, 135, 70, 1, 0, 20, 65535, 1)\n"
           "drawText(\"0\", 127, 172, 70, 1, 0, 20, 65535, 1)\n"
           "drawText(\"DEL\", 50, 172, 70, 1, 0, 20, 65535, 1)\n"
           "drawText(\".\", 204, 172, 70, 1, 0, 20, " +
           std::to_string(dotLabel) +
           ", 1)\n"
           "drawText(\"Done\", 50, 209, 224, 1, 0, 20, 65535, 1)\n";
}

TEST_F(KeyboardDrawing, ShowsLettersInLowerCaseWithDigitsOfTheirOwnColour) {
    keyboard.keyboardMode(1);
    keyboard.drawText("", out);
    EXPECT_EQ(display().take(), EMPTY_BASE + letterFaces(784) + DIGIT_LABELS + LOWER_LABELS);
}

TEST_F(KeyboardDrawing, ShowsLettersInUpperCase) {
    keyboard.keyboardMode(1);
    isCap = 1;
    keyboard.drawKeyboard();
    EXPECT_EQ(display().take(), letterFaces(784) + DIGIT_LABELS + UPPER_LABELS);
}

TEST_F(KeyboardDrawing, LeavesTheDigitsAloneWhileTheCaseChanges) {
    keyboard.keyboardMode(1);
    isCap = 1;
    kbCapChanged = 1;
    keyboard.drawKeyboard();
    EXPECT_EQ(
        display().take(), faces(ROWS_1_AND_2, 116, 144, 1405) + faces(ROW_3, 147, 175, 1405) +
                              faces(ROW_4, 178, 206, 1405) + UPPER_LABELS);
}

TEST_F(KeyboardDrawing, ShowsSymbolsWithDeadKeysAtTheRowsEndsInEitherCase) {
    std::string expected = EMPTY_BASE;
    expected += letterFaces(1405);
    expected += SYMBOL_LABELS;
    for (const bool upper : {false, true}) {
        keyboard.keyboardMode(3);
        keyboard.drawBase();
        isCap = upper ? 1 : 0;
        keyboard.drawKeyboard();
        EXPECT_EQ(display().take(), expected) << "the switch still says \"#@%\"";
    }
}

TEST_F(KeyboardDrawing, LabelsNoSymbolOfTheFirstRowWhileTheCaseChanges) {
    keyboard.keyboardMode(3);
    kbCapChanged = 1;
    printText();
    const std::string firstRow = labels(ROWS_1_AND_2, 90, "`~!@#$%^&*");
    EXPECT_EQ(display().take(), SYMBOL_LABELS.substr(firstRow.size()));
    kbCapChanged = 0;
}

TEST_F(KeyboardDrawing, ShowsTheKeypadWithADeadPointUnlessAddressesAreAsked) {
    const struct {
        int mode, face, label;
    } modes[] = {{0, 6339, 25388}, {2, 6339, 25388}, {5, 6339, 25388}, {7, 1405, 65535}};
    for (const auto& pad : modes) {
        keyboard.keyboardMode(pad.mode);
        keyboard.drawText("", out);
        EXPECT_EQ(
            display().take(), KEYPAD_FRAME +
                                  "drawText(\"\", 55, 22, 204, 1, 0, 20, 0, 0)\n"
                                  "fillRect(55, 19, 57, 39, 1405)\n" +
                                  keypad(pad.face, pad.label))
            << pad.mode;
        EXPECT_EQ(keyboard.layoutMode, pad.mode);
    }
}

// The face goes by the layout, the label by the flag.
TEST_F(KeyboardDrawing, ColoursThePointsFaceAndLabelByTwoFlags) {
    keyboard.keyboardMode(7);
    isIPAddrMode = 0;
    keyboard.drawNumKeyboard();
    EXPECT_NE(display().take().find(keypad(1405, 25388)), std::string::npos);
    keyboard.keyboardMode(0);
    isIPAddrMode = 1;
    keyboard.drawNumKeyboard();
    EXPECT_NE(display().take().find(keypad(6339, 65535)), std::string::npos);
}

TEST_F(KeyboardDrawing, ChoosesFlagsAndLayoutByTheCode) {
    const struct {
        int mode, numeric, symbols, address, layout;
    } cases[] = {{1, 0, 0, 9, 1}, {0, 1, 9, 0, 0}, {2, 1, 9, 0, 2}, {5, 1, 9, 0, 5}, {7, 1, 9, 1, 7}, {3, 0, 1, 9, 3},
                 {4, 0, 1, 9, 3}, {6, 0, 0, 9, 1}, {8, 0, 0, 9, 1}, {9, 0, 0, 9, 1}, {-1, 0, 0, 9, 1}};
    for (const auto& code : cases) {
        isNumericMode = 9;
        isSplMode = 9;
        isIPAddrMode = 9;
        isCap = 9;
        keyboard.keyboardMode(code.mode);
        EXPECT_EQ(isNumericMode, code.numeric) << code.mode;
        EXPECT_EQ(isSplMode, code.symbols) << code.mode;
        EXPECT_EQ(isIPAddrMode, code.address) << code.mode;
        EXPECT_EQ(isCap, 9) << code.mode;
        EXPECT_EQ(keyboard.layoutMode, code.layout) << code.mode;
    }
    EXPECT_EQ(display().take(), "");
}

TEST_F(KeyboardDrawing, ShowsATextThatFitsFromItsFirstCharacterWithTheCursorBehind) {
    keyboard.keyboardMode(1);
    keyboard.drawText("abcdefghijklmnopqrstuvwx", out); // 240 pixels
    EXPECT_EQ(
        display().take(), FRAME +
                              "drawText(\"abcdefghijklmnopqrstuvwx\", 50, 24, 248, 1, 0, 20, 0, 0)\n"
                              "fillRect(290, 22, 292, 42, 1405)\n" +
                              BOTTOM_ROW + letterFaces(784) + DIGIT_LABELS + LOWER_LABELS);
    EXPECT_EQ(keyboard.scrolled, 0);
    EXPECT_EQ(keyboard.scrollOffset, 0);
    EXPECT_EQ(keyboard.oldWidth, 240);
    EXPECT_EQ(keyboard.newWidth, 240);
}

TEST_F(KeyboardDrawing, ShowsTheEndOfATextThatIsAsWideAsTheBoxOrWider) {
    display().characterWidth = 27;
    keyboard.keyboardMode(1);
    keyboard.drawText("abcdefghi", out); // 243 pixels: nothing is hidden yet
    EXPECT_NE(display().take().find("drawText(\"abcdefghi\", 50, 24, 248"), std::string::npos);
    EXPECT_EQ(keyboard.scrolled, 1);
    EXPECT_EQ(keyboard.scrollOffset, 0);
    keyboard.drawText("abcdefghij", out); // 270 pixels: pixel 27 is "b"
    EXPECT_NE(
        display().take().find(
            FRAME + "drawText(\"bcdefghij\", 50, 24, 248, 1, 0, 20, 0, 0)\nfillRect(293, 22, 295, 42, 1405)\n"),
        std::string::npos);
    EXPECT_EQ(keyboard.scrollOffset, 1);
    EXPECT_EQ(keyboard.newWidth, 243);
}

TEST_F(KeyboardDrawing, ShowsTheEndOfALongTextOnTheKeypad) {
    keyboard.keyboardMode(2);
    keyboard.drawText("1234567890123456789", out); // 190 pixels
    EXPECT_EQ(keyboard.scrolled, 0);
    display().calls.clear();
    keyboard.drawText("12345678901234567890123", out); // 230 pixels: pixel 31 is the "4"
    EXPECT_EQ(
        display().take(), KEYPAD_FRAME +
                              "drawText(\"45678901234567890123\", 55, 22, 204, 1, 0, 20, 0, 0)\n"
                              "fillRect(255, 19, 257, 39, 1405)\n" +
                              keypad(6339, 25388));
    EXPECT_EQ(keyboard.scrolled, 1);
}

// Drawn without an entry's start, the screens go by the width that was stored last.
TEST_F(KeyboardDrawing, ScrollsByTheStoredWidthUntilItIsMeasuredAgain) {
    begin(1, "abcdefghijklmnopqrstuvwxyz12"); // 280 pixels
    keyboard.oldWidth = 242;
    keyboard.drawBase();
    EXPECT_NE(display().take().find("drawText(\"abcdefghijklmnopqrstuvwxyz12\", 50"), std::string::npos);
    EXPECT_EQ(keyboard.oldWidth, 242);
    keyboard.oldWidth = 243;
    keyboard.drawBase();
    EXPECT_NE(display().take().find("drawText(\"defghijklmnopqrstuvwxyz12\", 50"), std::string::npos);
    EXPECT_EQ(keyboard.oldWidth, 280);
    keyboard.oldWidth = 198;
    keyboard.drawNumKeyboard();
    EXPECT_NE(display().take().find("drawText(\"abcdefghijklmnopqrstuvwxyz12\", 55"), std::string::npos);
    keyboard.oldWidth = 199;
    keyboard.drawNumKeyboard();
    EXPECT_NE(display().take().find("drawText(\"ijklmnopqrstuvwxyz12\", 55"), std::string::npos);
}

TEST_F(KeyboardDrawing, ShowsFromTheStartWhereTheDisplayNamesNoCharacter) {
    begin(1, "abc"); // 30 pixels: pixel -213 is no character
    keyboard.oldWidth = 500;
    keyboard.drawBase();
    EXPECT_NE(display().take().find("drawText(\"abc\", 50, 24"), std::string::npos);
    EXPECT_EQ(keyboard.scrollOffset, 0);
    EXPECT_EQ(keyboard.scrolled, 1);
}

TEST_F(KeyboardDrawing, HidesThePrefix) {
    keyboard.keyboardMode(1);
    keyboard.prefixLength = 3;
    keyboard.drawText("+49170", out);
    EXPECT_NE(
        display().take().find("drawText(\"170\", 50, 24, 248, 1, 0, 20, 0, 0)\nfillRect(80, 22, 82, 42, 1405)\n"),
        std::string::npos);
    EXPECT_EQ(keyboard.newWidth, 30);
}

TEST_F(KeyboardDrawing, HidesAllOfATextThatIsShorterThanThePrefix) {
    keyboard.keyboardMode(1);
    for (const int prefix : {4, 180, INT32_MAX}) {
        keyboard.prefixLength = prefix;
        keyboard.drawText("+49", out);
        EXPECT_NE(display().take().find("drawText(\"\", 50, 24, 248"), std::string::npos) << prefix;
    }
    keyboard.prefixLength = -1;
    keyboard.drawText("+49", out);
    EXPECT_NE(display().take().find("drawText(\"+49\", 50, 24, 248"), std::string::npos);
}

TEST_F(KeyboardDrawing, DrawsTheCursorInBlueAndErasesItInWhite) {
    keyboard.cursorY = 22;
    keyboard.drawCursor(100, true);
    EXPECT_EQ(keyboard.cursorOn, 1);
    keyboard.drawCursor(102, false);
    EXPECT_EQ(keyboard.cursorOn, 0);
    EXPECT_EQ(display().take(), "fillRect(100, 22, 102, 42, 1405)\nfillRect(102, 22, 104, 42, 65535)\n");
}

TEST_F(KeyboardDrawing, PassesKeyTextsOnUnchanged) {
    drawTextKey(L"text", 1, 2, 3, 4, 5, 17.5, 6, 7);
    EXPECT_EQ(display().take(), "drawText(\"text\", 1, 2, 3, 4, 5, 17.5, 6, 7)\n");
}

} // namespace
