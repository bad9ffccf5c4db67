// The keyboard as people see it.
#include "tests/support/keyboard_panel.h"

using namespace ostrel;

namespace {

constexpr Rect WHOLE = {0, 0, 320, 240};
constexpr Rect TEXT_BOX = {0, 0, 320, 54};

class KeyboardLooks : public KeyboardPanel {};

TEST_F(KeyboardLooks, ShowTheLetters) {
    begin(KEYBOARD_LETTERS, "Living room 24");
    EXPECT_TRUE(matchesTextGolden(shown(WHOLE), "keyboard-letters"));
}

TEST_F(KeyboardLooks, ShowCapitalsWithTheCaseKeyPressed) {
    begin(KEYBOARD_LETTERS);
    tap(90, 225);
    EXPECT_TRUE(matchesTextGolden(shown({0, 114, 320, 240}), "keyboard-capitals"));
}

TEST_F(KeyboardLooks, ShowTheSymbolsWithDeadKeysAtTheRowsEnds) {
    begin(KEYBOARD_LETTERS);
    tap(30, 225);
    EXPECT_TRUE(matchesTextGolden(shown({0, 83, 320, 240}), "keyboard-symbols"));
}

TEST_F(KeyboardLooks, ShowTheKeypadWithADeadPoint) {
    begin(0, "0123456789");
    EXPECT_TRUE(matchesTextGolden(shown({40, 0, 284, 240}), "keyboard-keypad"));
}

TEST_F(KeyboardLooks, ShowTheAddressKeypadWithALivePoint) {
    begin(KEYBOARD_IP_ADDRESS, "192.168.1.1");
    EXPECT_TRUE(matchesTextGolden(shown({40, 160, 284, 240}), "keyboard-keypad-address"));
}

TEST_F(KeyboardLooks, ShowAPressedLetterLargeAboveTheFinger) {
    begin(KEYBOARD_LETTERS);
    EXPECT_TRUE(matchesTextGolden(cut(held(110, 130), {60, 50, 160, 176}), "keyboard-pressed-letter"));
}

TEST_F(KeyboardLooks, ShowAPressedDigitAndSymbol) {
    begin(KEYBOARD_LETTERS);
    EXPECT_TRUE(matchesTextGolden(cut(held(20, 100), {0, 50, 66, 116}), "keyboard-pressed-digit"));
    tap(30, 225);
    EXPECT_TRUE(matchesTextGolden(cut(held(285, 100), {254, 50, 320, 116}), "keyboard-pressed-symbol"));
}

TEST_F(KeyboardLooks, ShowThePressedKeysOfTheBottomRow) {
    struct Case {
        int x;
        Rect key;
        const char* name;
    };
    for (const Case& pressed :
         {Case{30, {3, 206, 68, 240}, "keyboard-pressed-switch"},
          Case{160, {110, 206, 209, 240}, "keyboard-pressed-space"},
          Case{230, {206, 206, 254, 240}, "keyboard-pressed-delete"},
          Case{280, {251, 206, 316, 240}, "keyboard-pressed-done"}}) {
        begin(KEYBOARD_LETTERS);
        EXPECT_TRUE(matchesTextGolden(cut(held(pressed.x, 225), pressed.key), pressed.name));
    }
}

TEST_F(KeyboardLooks, ShowThePressedKeysOfTheKeypad) {
    begin(KEYBOARD_IP_ADDRESS, "192.168.1.1"); // with a 2 behind it, an address too: Done shows no message
    EXPECT_TRUE(matchesTextGolden(cut(held(160, 70), {40, 50, 284, 90}), "keyboard-pressed-2"));
    EXPECT_TRUE(matchesTextGolden(cut(held(160, 220), {40, 200, 284, 240}), "keyboard-pressed-keypad-done"));
}

TEST_F(KeyboardLooks, ShowThePressedBackButton) {
    begin(KEYBOARD_LETTERS, "Back");
    EXPECT_TRUE(matchesTextGolden(cut(held(20, 30), {0, 0, 100, 54}), "keyboard-pressed-back"));
}

TEST_F(KeyboardLooks, ShowTheEndOfALongText) {
    begin(KEYBOARD_LETTERS, "The quick brown fox jumps over the lazy dog");
    EXPECT_TRUE(matchesTextGolden(shown(TEXT_BOX), "keyboard-long-text"));
    begin(0, "1234567890123456789012345678901234567890");
    EXPECT_TRUE(matchesTextGolden(shown(TEXT_BOX), "keyboard-long-number"));
}

} // namespace
