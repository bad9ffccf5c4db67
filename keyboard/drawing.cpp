#include "keyboard/drawing.h"

#include "util/wide_format.h"

#include <algorithm>

namespace ostrel {

void fill(const KeyboardRect& rect, int colour) {
    const auto corner = [](int32_t coordinate) { return static_cast<unsigned short>(coordinate); };
    fillRect(corner(rect.left), corner(rect.top), corner(rect.right), corner(rect.bottom), colour);
}

void drawLabel(const wchar_t* label, int x, int y, int width, int colour) {
    drawTextKey(label, x, y, width, 1, 0, TEXT_SIZE, colour, 1);
}

void drawFieldText(const wchar_t* text, int x, int y, int width) {
    drawTextKey(text, x, y, width, 1, 0, TEXT_SIZE, BLACK, 0);
}

void drawBottomKey(const BottomKey& key, int colour) {
    fill(key.face, colour);
    drawLabel(key.label, key.face.left, BOTTOM_LABEL_TOP, key.labelWidth, BLACK);
}

void drawKeypadDone(int colour) {
    fill(KEYPAD_DONE, colour);
    drawLabel(L"Done", KEYPAD_DONE.left, KEYPAD_DONE.top + KEYPAD_LABEL_DROP, KEYPAD_DONE_LABEL_WIDTH, WHITE);
}

wchar_t* shownText(Keyboard& keyboard) {
    return keyboard.text + std::clamp(keyboard.prefixLength, 0, textLen(keyboard.text));
}

int shownWidth(Keyboard& keyboard) {
    return textWidth(shownText(keyboard), static_cast<float>(TEXT_SIZE));
}

int formatShownFrom(Keyboard& keyboard, int touchPosition) {
    wchar_t* const shown = shownText(keyboard);
    const int index = std::clamp(touchPosition % 1000, 0, textLen(shown));
    aswprintf(keyboard.scratch, KEYBOARD_TEXT_LENGTH - 1, L"%ls", shown + index);
    return index;
}

} // namespace ostrel

using namespace ostrel;

namespace {

// The text box of a keyboard that is drawn anew: a text that does not fit shows its end.
void drawField(Keyboard& keyboard, const TextField& field) {
    keyboard.backImage.drawPNG(field.backX, field.backY, 1, 0, 0);
    fill(field.box, WHITE);
    int position = 0;
    if (keyboard.oldWidth >= field.visibleWidth) {
        keyboard.scrolled = 1;
        keyboard.oldWidth = shownWidth(keyboard);
        position = textTouchPosition(
            shownText(keyboard), keyboard.oldWidth - field.visibleWidth, static_cast<float>(TEXT_SIZE));
    }
    keyboard.scrollOffset = formatShownFrom(keyboard, position);
    drawFieldText(keyboard.scratch, field.textX, field.textY, field.textWidth);
    keyboard.newWidth = textWidth(keyboard.scratch, static_cast<float>(TEXT_SIZE));
    keyboard.cursorY = field.cursorTop;
    keyboard.cursorX = keyboard.newWidth + field.textX;
    keyboard.drawCursor(keyboard.cursorX, true);
}

void printRow(const CharacterRow& row) {
    const bool symbols = isSplMode != 0;
    for (int column = 0; column < row.keys; ++column) {
        const wchar_t label[] = {characterOf(row, column, symbols, isCap != 0), 0};
        const KeyboardRect key = keyOf(row, column);
        if (label[0] != 0)
            drawLabel(label, key.left, key.top + LABEL_DROP, KEY_SIZE, WHITE);
    }
    if (symbols && row.firstSymbol != 0)
        for (const int column : {0, row.keys - 1})
            fill(keyOf(row, column), DEAD_FACE);
}

void printKeypad() {
    for (int row = 0; row < 4; ++row)
        for (const int column : KEYPAD_LABEL_ORDER[row]) {
            const KeypadKey& key = KEYPAD_ROWS[row][column];
            const bool dead = key.action == KeypadAction::AppendDot && isIPAddrMode == 0;
            drawLabel(key.label, key.left, key.top + KEYPAD_LABEL_DROP, KEYPAD_KEY_WIDTH, dead ? DEAD_LABEL : WHITE);
        }
    drawLabel(L"Done", KEYPAD_DONE.left, KEYPAD_DONE.top + KEYPAD_LABEL_DROP, KEYPAD_DONE_LABEL_WIDTH, WHITE);
}

} // namespace

void drawTextKey(wchar_t* text, int x, int y, int width, int a, int b, double size, int colour, int last) {
    drawText(text, x, y, width, a, b, static_cast<float>(size), colour, last);
}

void printText() {
    if (isNumericMode == 1) {
        printKeypad();
        return;
    }
    for (const CharacterRow& row : CHARACTER_ROWS)
        if (&row != &CHARACTER_ROWS[DIGIT_ROW] || kbCapChanged != 1) // digits have no case
            printRow(row);
}

void Keyboard::drawBase() {
    lcd_clear(BLACK);
    drawField(*this, LETTER_FIELD);
    for (const BottomKey& key : BOTTOM_KEYS)
        fill(key.face, BOTTOM_FACE);
    for (const BottomKey& key : BOTTOM_KEYS)
        drawLabel(key.label, key.face.left, BOTTOM_LABEL_TOP, key.labelWidth, BLACK);
}

void Keyboard::drawKeyboard() {
    for (const CharacterRow& row : CHARACTER_ROWS) {
        if (&row == &CHARACTER_ROWS[DIGIT_ROW] && kbCapChanged == 1)
            continue;
        const Colour face = layoutMode == KEYBOARD_LETTERS ? row.face : KEY_FACE;
        for (keyIndex = 0; keyIndex < row.keys; ++keyIndex)
            fill(keyOf(row, keyIndex), face);
    }
    printText();
}

void Keyboard::drawNumKeyboard() {
    lcd_clear(BLACK);
    drawField(*this, KEYPAD_FIELD);
    for (const auto& row : KEYPAD_ROWS)
        for (keyIndex = 0; keyIndex < 3; ++keyIndex) {
            const KeypadKey& key = row[keyIndex];
            const bool dead = key.action == KeypadAction::AppendDot && layoutMode != KEYBOARD_IP_ADDRESS;
            fill(keyOf(key), dead ? DEAD_FACE : KEY_FACE);
        }
    fill(KEYPAD_DONE, KEY_FACE);
    printText();
}

void Keyboard::drawCursor(int x, bool on) {
    fill({x, cursorY, x + CURSOR_WIDTH, cursorY + CURSOR_HEIGHT}, on ? KEY_FACE : WHITE);
    cursorOn = on ? 1 : 0;
}
