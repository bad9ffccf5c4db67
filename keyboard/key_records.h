// One record and one touch area for every key and text box of the three layouts, for programs that draw keys of their
// own. They are all zero at load, and the toolkit neither reads nor writes them.
#ifndef OSTREL_KEYBOARD_KEY_RECORDS_H
#define OSTREL_KEYBOARD_KEY_RECORDS_H

#include "gui/display.h"

// KEY(name) for each of them: the keys of the letters, of the keypad, and of the symbols row by row, pairs of brackets
// as X and XClose. The touch area of `name` is `tA_name`.
// The formatter would indent each row deeper than the one before.
// clang-format off
#define OSTREL_KEY_RECORDS(KEY) \
    KEY(keyboard_buttonA) KEY(keyboard_buttonB) KEY(keyboard_buttonC) KEY(keyboard_buttonD) KEY(keyboard_buttonE) \
    KEY(keyboard_buttonF) KEY(keyboard_buttonG) KEY(keyboard_buttonH) KEY(keyboard_buttonI) KEY(keyboard_buttonJ) \
    KEY(keyboard_buttonK) KEY(keyboard_buttonL) KEY(keyboard_buttonM) \
    KEY(keyboard_buttonN) KEY(keyboard_buttonO) KEY(keyboard_buttonP) KEY(keyboard_buttonQ) KEY(keyboard_buttonR) \
    KEY(keyboard_buttonS) KEY(keyboard_buttonT) KEY(keyboard_buttonU) KEY(keyboard_buttonV) KEY(keyboard_buttonW) \
    KEY(keyboard_buttonX) KEY(keyboard_buttonY) KEY(keyboard_buttonZ) \
    KEY(keyboard_button0) KEY(keyboard_button1) KEY(keyboard_button2) KEY(keyboard_button3) KEY(keyboard_button4) \
    KEY(keyboard_button5) KEY(keyboard_button6) KEY(keyboard_button7) KEY(keyboard_button8) KEY(keyboard_button9) \
    KEY(keyboard_buttonDot) KEY(keyboard_button123) KEY(keyboard_buttonCAP) KEY(keyboard_buttonSpace) \
    KEY(keyboard_buttonDel) KEY(keyboard_buttonDone) \
    KEY(keyboard_textBox2) \
    KEY(numericKeyboard_button0) KEY(numericKeyboard_button1) KEY(numericKeyboard_button2) \
    KEY(numericKeyboard_button3) KEY(numericKeyboard_button4) KEY(numericKeyboard_button5) \
    KEY(numericKeyboard_button6) KEY(numericKeyboard_button7) KEY(numericKeyboard_button8) \
    KEY(numericKeyboard_button9) \
    KEY(numericKeyboard_buttonDot) KEY(numericKeyboard_buttonABC) KEY(numericKeyboard_buttonDel) \
    KEY(numericKeyboard_buttonDone) \
    KEY(numericKeyboard_textBox2) \
    KEY(specialKeyboard_buttonBackQuote) KEY(specialKeyboard_buttonTilde) KEY(specialKeyboard_buttonExclamationMark) \
    KEY(specialKeyboard_buttonAt) KEY(specialKeyboard_buttonHash) KEY(specialKeyboard_buttonDollar) \
    KEY(specialKeyboard_buttonPercent) KEY(specialKeyboard_buttonCaret) KEY(specialKeyboard_buttonAmpersand) \
    KEY(specialKeyboard_buttonAsterisk) \
    KEY(specialKeyboard_buttonParenthesis) KEY(specialKeyboard_buttonParenthesisClose) \
    KEY(specialKeyboard_buttonPlus) KEY(specialKeyboard_buttonEquals) KEY(specialKeyboard_buttonMinus) \
    KEY(specialKeyboard_buttonUnderscore) KEY(specialKeyboard_buttonBackSlash) KEY(specialKeyboard_buttonSlash) \
    KEY(specialKeyboard_buttonCurlyBrace) KEY(specialKeyboard_buttonCurlyBraceClose) \
    KEY(specialKeyboard_buttonSquareBracket) KEY(specialKeyboard_buttonSquareBracketClose) \
    KEY(specialKeyboard_buttonSemiColon) KEY(specialKeyboard_buttonColon) KEY(specialKeyboard_buttonQuestionMark) \
    KEY(specialKeyboard_buttonLessThan) KEY(specialKeyboard_buttonGreaterThan) KEY(specialKeyboard_buttonApostrophe) \
    KEY(specialKeyboard_buttonVerticalBar) KEY(specialKeyboard_buttonQuotationMark) KEY(specialKeyboard_buttonComma) \
    KEY(specialKeyboard_buttonABC) KEY(specialKeyboard_buttonCAP) KEY(specialKeyboard_buttonSpace) \
    KEY(specialKeyboard_buttonDel) KEY(specialKeyboard_buttonDone) \
    KEY(specialKeyboard_textBox2)
// clang-format on

#define OSTREL_DECLARE_KEY(name)                                                                                       \
    extern OSTREL_API WidgetRecord name;                                                                               \
    extern OSTREL_API TouchArea tA_##name;
OSTREL_KEY_RECORDS(OSTREL_DECLARE_KEY)
#undef OSTREL_DECLARE_KEY

#endif
