#include "keyboard/keyboard.h"

#include "tests/support/desk.h"

#include <cstring>
#include <new>

namespace {

class KeyboardObject : public Desk {
  protected:
    KeyboardObject() {
        std::memset(storage, 0xA5, sizeof storage);
        settle();
    }

    void settle() {
        asm volatile("" : : "r"(storage) : "memory"); // the bytes count
    }

    alignas(Keyboard) unsigned char storage[sizeof(Keyboard)];
};

constexpr int32_t PATTERN = static_cast<int32_t>(0xA5A5A5A5);

void doNothingOnReturn() {
    display().calls.emplace_back("returnHandler()");
}

TEST_F(KeyboardObject, LoadsTheBackButtonAndStartsWithSmallLetters) {
    isCap = kbCapChanged = isSplMode = isNumericMode = 1;
    isIPAddrMode = 9;
    Keyboard& keyboard = *new (storage) Keyboard;
    settle();
    EXPECT_EQ(display().take(), "loadPNG(/ostrel/back_35.png)\nloadPNG(/ostrel/backimagePressed_35.png)\n");
    EXPECT_EQ(isCap, 0);
    EXPECT_EQ(kbCapChanged, 0);
    EXPECT_EQ(isSplMode, 0);
    EXPECT_EQ(isNumericMode, 0);
    EXPECT_EQ(isIPAddrMode, 9) << "left alone";
    EXPECT_EQ(keyboard.active, 0);
    EXPECT_EQ(keyboard.deferCommit, 0);
    EXPECT_EQ(keyboard.maxLength, 0);
    EXPECT_EQ(keyboard.minLength, 0);
    EXPECT_EQ(keyboard.prefixLength, 0);
    EXPECT_EQ(keyboard.edited, 0);
    EXPECT_EQ(keyboard.scrolled, 0);
    EXPECT_EQ(keyboard.rtdev, 0);
    EXPECT_EQ(keyboard.layoutMode, 1);
    const int x[5][2] = {{3, 313}, {3, 313}, {17, 296}, {34, 282}, {6, 316}};
    const int y[5][2] = {{85, 113}, {116, 144}, {147, 175}, {178, 206}, {209, 237}};
    for (int row = 0; row < 5; ++row) {
        EXPECT_EQ(keyboard.rowX[row].rowLeft, x[row][0]);
        EXPECT_EQ(keyboard.rowX[row].rowRight, x[row][1]);
        EXPECT_EQ(keyboard.rowY[row].rowTop, y[row][0]);
        EXPECT_EQ(keyboard.rowY[row].rowBottom, y[row][1]);
    }
    // What the constructor has nothing to say about.
    EXPECT_EQ(keyboard.text[0], PATTERN);
    EXPECT_EQ(keyboard.oldWidth, PATTERN);
    EXPECT_EQ(keyboard.cursorX, PATTERN);
    EXPECT_EQ(keyboard.blinkCounter, PATTERN);
    EXPECT_EQ(keyboard.cursorOn, 0xA5);
    keyboard.returnHandler = doNothingOnReturn;
    keyboard.~Keyboard();
    isIPAddrMode = 0;
}

TEST_F(KeyboardObject, LeavesThePanelWhenItIsDestroyed) {
    Keyboard& keyboard = *new (storage) Keyboard;
    keyboard.returnHandler = doNothingOnReturn;
    display().calls.clear();
    keyboard.~Keyboard();
    EXPECT_EQ(display().take(), "lcd_clear(0)\nreturnHandler()\n");
}

TEST_F(KeyboardObject, IsBlankWhenItIsACopy) {
    alignas(Keyboard) unsigned char source[sizeof(Keyboard)] = {};
    Keyboard& original = *new (source) Keyboard;
    original.returnHandler = doNothingOnReturn;
    display().calls.clear();
    Keyboard& copy = *new (storage) Keyboard(original);
    settle();
    EXPECT_EQ(display().take(), "") << "no picture is loaded";
    EXPECT_EQ(copy.active, 0xA5);
    EXPECT_EQ(copy.layoutMode, PATTERN);
    EXPECT_EQ(copy.text[0], PATTERN);
    EXPECT_EQ(copy.rowX[0].rowLeft, PATTERN);
    copy.returnHandler = doNothingOnReturn;
    copy.~Keyboard();
    original.~Keyboard();
}

TEST_F(KeyboardObject, KeepsItsMembersInTheirOrder) {
    Keyboard& k = *new (storage) Keyboard;
    k.returnHandler = doNothingOnReturn;
    const void* const members[] = {&k.active,       &k.deferCommit, &k.returnHandler, &k.maxLength,  &k.minLength,
                                   &k.prefixLength, &k.outputText,  &k.settingValue,  &k.settingKey, &k.initialText,
                                   &k.text,         &k.scratch,     &k.keyIndex,      &k.oldWidth,   &k.newWidth,
                                   &k.scrollOffset, &k.keyRect,     &k.cursorX,       &k.cursorY,    &k.blinkCounter,
                                   &k.rowX,         &k.rowY,        &k.settings,      &k.layoutMode, &k.edited,
                                   &k.scrolled,     &k.cursorOn,    &k.backImage,     &k.rtdev};
    for (size_t i = 1; i < std::size(members); ++i)
        EXPECT_LT(members[i - 1], members[i]) << i;
    EXPECT_EQ(sizeof k.text, 720U);
    EXPECT_EQ(sizeof k.rowX, 40U);
    k.~Keyboard();
}

TEST(KeyRecords, AreZeroAtLoadAndEachHasItsTouchArea) {
    int records = 0;
    const auto expectZero = [&](const WidgetRecord& record, const TouchArea& area) {
        ++records;
        const WidgetRecord noRecord = {};
        EXPECT_EQ(record.x, noRecord.x);
        EXPECT_EQ(record.width, noRecord.width);
        EXPECT_EQ(record.text[0], 0);
        EXPECT_EQ(record.touchable, 0);
        EXPECT_EQ(area.left, 0);
        EXPECT_EQ(area.bottom, 0);
    };
#define OSTREL_EXPECT_ZERO(name) expectZero(name, tA_##name);
    OSTREL_KEY_RECORDS(OSTREL_EXPECT_ZERO)
#undef OSTREL_EXPECT_ZERO
    // 26 letters, 10 digits, ".", the five keys of the bottom row and the text box; 10 digits, ".", ABC, DEL, Done and
    // the text box; 31 symbols, the bottom row and the text box.
    EXPECT_EQ(records, 43 + 15 + 37);
}

TEST(KeyRecords, HaveTheNamesThatProgramsUse) {
    const WidgetRecord* const records[] = {
        &keyboard_buttonQ,
        &keyboard_button123,
        &keyboard_buttonCAP,
        &keyboard_buttonDel,
        &keyboard_buttonSpace,
        &keyboard_buttonDone,
        &keyboard_textBox2,
        &numericKeyboard_button0,
        &numericKeyboard_button9,
        &numericKeyboard_buttonABC,
        &numericKeyboard_textBox2,
        &specialKeyboard_buttonCurlyBrace,
        &specialKeyboard_buttonSemiColon,
        &specialKeyboard_textBox2};
    for (const WidgetRecord* record : records)
        EXPECT_EQ(record->type, 0);
}

TEST(TextLength, CountsUpToTheTerminator) {
    EXPECT_EQ(textLen(L""), 0);
    EXPECT_EQ(textLen(L"\u20AC\U0001F600x"), 3);
    EXPECT_EQ(textLen(""), 0);
    EXPECT_EQ(textLen("\xE2\x82\xAC"), 3);
}

TEST(SaveMode, IsWhatTheProgramSays) {
    keyBoardSaveMode(false);
    EXPECT_FALSE(saveMode);
    keyBoardSaveMode(true);
    EXPECT_TRUE(saveMode);
}

} // namespace
