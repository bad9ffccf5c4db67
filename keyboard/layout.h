// Where the keys are, what they say and which colours they have: the tables that drawing and touch both read.
#ifndef OSTREL_KEYBOARD_LAYOUT_H
#define OSTREL_KEYBOARD_LAYOUT_H

#include "keyboard/keyboard.h"

namespace ostrel {

enum Colour : int {
    BLACK = 0,
    WHITE = 65535,
    KEY_FACE = 1405,
    KEY_PRESSED = 2879,
    DIGIT_FACE = 784, // the letters' row of digits
    DIGIT_PRESSED = 555,
    BOTTOM_FACE = 36509, // and the preview of the pressed key
    BOTTOM_PRESSED = 15837,
    DEAD_FACE = 6339,
    DEAD_LABEL = 25388,
};

// A row of character keys, 28 by 28 pixels, one every 31. A touch between two of them belongs to the left one.
struct CharacterRow {
    int left; // of the first key
    int top;
    int keys;
    const wchar_t* lower;
    const wchar_t* upper;
    const wchar_t* symbols;
    int firstSymbol; // the key with the first symbol; keys without one are dead while symbols are shown

    // How far the row's touches reach beyond its two sides, into zones that no key may take. What lies left of
    // leftZoneEnd, or further right than rightZoneStart from the row's left side, is such a zone.
    int reach;
    int leftZoneEnd;
    int rightZoneStart;

    // Faces in the letters; among the symbols every row has the usual ones.
    Colour face;
    Colour pressed;
};
constexpr int KEY_SIZE = 28;
constexpr int KEY_PITCH = 31;
constexpr int LABEL_DROP = 5; // of a label below its key's top edge
constexpr int PREVIEW_TOP = 55;
constexpr int PREVIEW_LABEL_TOP = 59;

constexpr CharacterRow CHARACTER_ROWS[] = {
    {3, 85, 10, L"1234567890", L"1234567890", L"`~!@#$%^&*", 0, 0, 0, 0, DIGIT_FACE, DIGIT_PRESSED},
    {3, 116, 10, L"qwertyuiop", L"QWERTYUIOP", L"()+=-_\\/", 1, 0, 0, 0, KEY_FACE, KEY_PRESSED},
    {17, 147, 9, L"asdfghjkl", L"ASDFGHJKL", L"{}[];:?", 1, 0, 0, 0, KEY_FACE, KEY_PRESSED},
    // Beside the last row there is room for shift keys; nobody has built them.
    {34, 178, 8, L"zxcvbnm.", L"ZXCVBNM.", L"<>'|\",", 1, 31, 31, 248, KEY_FACE, KEY_PRESSED},
};
constexpr int DIGIT_ROW = 0;

KeyboardRect keyOf(const CharacterRow& row, int column);

// What the key of `column` types; 0 where no key has a character.
wchar_t characterOf(const CharacterRow& row, int column, bool symbols, bool upper);

// The bottom row of the letter and symbol layouts. Its touches are exclusive on both sides; the case key's reach up to
// the space bar.
struct BottomKey {
    KeyboardRect face;
    const wchar_t* label;
    int labelWidth;
    int touchLeft;
    int touchRight;
    bool staysPressed; // after the pen has lifted, until act draws it again
    void (*act)(Keyboard& keyboard);
};
constexpr int BOTTOM_LABEL_TOP = 214;
constexpr int BOTTOM_TOUCH_LEFT = 6;
constexpr int BOTTOM_TOUCH_RIGHT = 316; // Done's touches reach 3 pixels beyond its face
constexpr int SWITCH_KEY = 0;
constexpr int CASE_KEY = 1;
constexpr const wchar_t* SWITCH_TO_SYMBOLS = L"#@%";
constexpr const wchar_t* SWITCH_TO_LETTERS = L"abc";
constexpr BottomKey BOTTOM_KEYS[5] = {
    {{6, 209, 65, 237}, SWITCH_TO_SYMBOLS, 59, 6, 65, false, [](Keyboard& keyboard) { keyboard.spl_onTouch(); }},
    {{68, 209, 110, 237}, L"CAP", 45, 68, 113, true, [](Keyboard& keyboard) { keyboard.cap_onTouch(); }},
    {{113, 209, 206, 237}, L"Space", 90, 113, 206, false, [](Keyboard& keyboard) { keyboard.appendChar(L' '); }},
    {{209, 209, 251, 237}, L"DEL", 45, 209, 251, false, [](Keyboard& keyboard) { keyboard.deleteChar(); }},
    {{254, 209, 313, 237}, L"Done", 59, 254, 316, false, [](Keyboard& keyboard) { keyboard.doneOnTouch(); }},
};

// The keypad: three columns of keys, 70 by 30 pixels, and Done below them.
enum class KeypadAction { Append, AppendDot, Delete };
struct KeypadKey {
    int left;
    int top;
    const wchar_t* label;
    KeypadAction action;
};
constexpr int KEYPAD_KEY_WIDTH = 70;
constexpr int KEYPAD_KEY_HEIGHT = 30;
constexpr int KEYPAD_LEFT = 50;
constexpr int KEYPAD_PITCH = 77;
constexpr int KEYPAD_LABEL_DROP = 6;
constexpr int KEYPAD_TOUCH_LEFT = 51; // half open: 51 <= x < 274
constexpr int KEYPAD_TOUCH_RIGHT = 274;
constexpr KeypadKey KEYPAD_ROWS[4][3] = {
    {{50, 55, L"1", KeypadAction::Append},
     {127, 55, L"2", KeypadAction::Append},
     {204, 55, L"3", KeypadAction::Append}},
    {{50, 92, L"4", KeypadAction::Append},
     {127, 92, L"5", KeypadAction::Append},
     {204, 92, L"6", KeypadAction::Append}},
    {{50, 129, L"7", KeypadAction::Append},
     {127, 129, L"8", KeypadAction::Append},
     {204, 129, L"9", KeypadAction::Append}},
    {{50, 166, L"DEL", KeypadAction::Delete},
     {127, 166, L"0", KeypadAction::Append},
     {204, 166, L".", KeypadAction::AppendDot}},
};
constexpr int KEYPAD_LABEL_ORDER[4][3] = {{0, 1, 2}, {0, 1, 2}, {0, 1, 2}, {1, 0, 2}}; // "0" before "DEL"
constexpr KeyboardRect KEYPAD_DONE = {50, 203, 274, 233};
constexpr int KEYPAD_DONE_LABEL_WIDTH = 224;

KeyboardRect keyOf(const KeypadKey& key);

// The text box with the back button beside it.
struct TextField {
    KeyboardRect box;
    int textX;
    int textY;
    int textWidth;
    int cursorTop;
    int visibleWidth; // of a text, before it scrolls

    // Whether an edited text scrolls by its width after the edit, or only by the one before it.
    bool scrollsByNewWidth;

    int backX;
    int backY;
    KeyboardRect backErased;  // before the picture changes; it is one pixel larger on two sides
    KeyboardRect backTouched; // half open: left <= x < right
};
constexpr TextField LETTER_FIELD = {{45, 15, 313, 50}, 50, 24, 248, 22, 243, true, 5, 15, {5, 15, 40, 50},
                                    {6, 16, 40, 50}};
constexpr TextField KEYPAD_FIELD = {{50, 13, 274, 48}, 55, 22, 204, 19, 199, false, 10, 13, {10, 13, 45, 48},
                                    {11, 14, 45, 48}};
constexpr int CURSOR_WIDTH = 2;
constexpr int CURSOR_HEIGHT = 20;

// The field of the layout that is chosen.
const TextField& currentField();

// Whether an entry with this layout code starts as a keypad.
bool isKeypad(int layoutMode);

} // namespace ostrel

#endif
