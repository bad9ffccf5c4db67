#include "keyboard/layout.h"

#include <cwchar>

namespace ostrel {

KeyboardRect keyOf(const CharacterRow& row, int column) {
    const int left = row.left + KEY_PITCH * column;
    return {left, row.top, left + KEY_SIZE, row.top + KEY_SIZE};
}

wchar_t characterOf(const CharacterRow& row, int column, bool symbols, bool upper) {
    const wchar_t* const characters = symbols ? row.symbols : upper ? row.upper : row.lower;
    const int position = symbols ? column - row.firstSymbol : column;
    const bool exists = position >= 0 && position < static_cast<int>(std::wcslen(characters));
    return exists ? characters[position] : L'\0';
}

KeyboardRect keyOf(const KeypadKey& key) {
    return {key.left, key.top, key.left + KEYPAD_KEY_WIDTH, key.top + KEYPAD_KEY_HEIGHT};
}

const TextField& currentField() {
    return isNumericMode == 1 ? KEYPAD_FIELD : LETTER_FIELD;
}

bool isKeypad(int layoutMode) {
    return layoutMode == 0 || layoutMode == 2 || layoutMode == 5 || layoutMode == KEYBOARD_IP_ADDRESS;
}

} // namespace ostrel
