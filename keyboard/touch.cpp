#include "keyboard/drawing.h"
#include "util/wide_format.h"

#include <cstdio>
#include <unistd.h>

using namespace ostrel;

namespace {

constexpr useconds_t POLL_US = 20000;
constexpr int BLINK_POLLS = 50;

enum class Touch {
    Missed,   // not for this row or key
    Taken,    // done, also when nothing happened
    EndsLoop, // a dead zone: getTouch returns, and the page calls it again with its next touch
};

bool isHalfOpenInside(const KeyboardRect& area, int x, int y) {
    return area.left <= x && x < area.right && area.top <= y && y < area.bottom;
}

void blink(Keyboard& keyboard) {
    if (++keyboard.blinkCounter < BLINK_POLLS)
        return;
    keyboard.blinkCounter = 0;
    keyboard.cursorOn = keyboard.cursorOn != 0 ? 0 : 1;
    keyboard.drawCursor(keyboard.cursorX, keyboard.cursorOn != 0);
}

// Shows the key pressed, with its character above the fingertip, until the pen lifts.
void pressCharacter(Keyboard& keyboard, const CharacterRow& row, wchar_t character) {
    const bool letters = keyboard.layoutMode == KEYBOARD_LETTERS;
    aswprintf(keyboard.scratch, KEYBOARD_TEXT_LENGTH - 1, L"%lc", character);
    keyboard.keyRect = keyOf(row, keyboard.keyIndex);
    const KeyboardRect key = keyboard.keyRect;
    const KeyboardRect preview = {key.left, PREVIEW_TOP, key.left + KEY_SIZE, PREVIEW_TOP + KEY_SIZE};
    const auto drawOnKey = [&] { drawLabel(keyboard.scratch, key.left, key.top + LABEL_DROP, KEY_SIZE, WHITE); };

    fill(key, letters ? row.pressed : KEY_PRESSED);
    fill(preview, BOTTOM_FACE);
    drawOnKey();
    drawLabel(keyboard.scratch, key.left, PREVIEW_LABEL_TOP, KEY_SIZE, BLACK);
    waitForPenUp();
    fill(preview, BLACK);
    fill(key, letters ? row.face : KEY_FACE);
    drawOnKey();
    keyboard.appendChar(character);
}

Touch touchCharacterRow(Keyboard& keyboard, int index, int x, int y) {
    const CharacterRow& row = CHARACTER_ROWS[index];
    const KeyboardRowX& sides = keyboard.rowX[index];
    const KeyboardRowY& edges = keyboard.rowY[index];
    if (x <= sides.rowLeft - row.reach || x >= sides.rowRight + row.reach || y <= edges.rowTop || y >= edges.rowBottom)
        return Touch::Missed;

    const int column = (x - row.left) / KEY_PITCH;
    const bool symbols = keyboard.layoutMode != KEYBOARD_LETTERS;
    const wchar_t character = characterOf(row, column, symbols, isCap != 0);
    if (keyboard.layoutMode == KEYBOARD_SYMBOLS && character == 0)
        return Touch::EndsLoop;
    if (row.reach != 0 && (x < row.leftZoneEnd || x > sides.rowLeft + row.rightZoneStart))
        return Touch::EndsLoop;
    keyboard.keyIndex = column;
    if (character != 0)
        pressCharacter(keyboard, row, character);
    return Touch::Taken;
}

void pressBottomKey(Keyboard& keyboard, const BottomKey& key) {
    drawBottomKey(key, BOTTOM_PRESSED);
    waitForPenUp();
    if (!key.staysPressed)
        drawBottomKey(key, BOTTOM_FACE);
    key.act(keyboard);
}

void labelSwitchKey(const wchar_t* label) {
    const BottomKey& key = BOTTOM_KEYS[SWITCH_KEY];
    fill(key.face, BOTTOM_FACE);
    drawLabel(label, key.face.left, BOTTOM_LABEL_TOP, key.labelWidth, BLACK);
}

Touch touchBottomRow(Keyboard& keyboard, int x, int y) {
    const KeyboardRowX& sides = keyboard.rowX[4];
    const KeyboardRowY& edges = keyboard.rowY[4];
    if (x <= sides.rowLeft || x >= sides.rowRight || y <= edges.rowTop || y >= edges.rowBottom)
        return Touch::Missed;
    for (const BottomKey& key : BOTTOM_KEYS)
        if (key.touchLeft < x && x < key.touchRight) {
            pressBottomKey(keyboard, key);
            break;
        }
    return Touch::Taken;
}

Touch touchBackButton(Keyboard& keyboard, const TextField& field, int x, int y) {
    if (!isHalfOpenInside(field.backTouched, x, y))
        return Touch::Missed;
    const auto drawBack = [&](int image) {
        fill(field.backErased, BLACK);
        keyboard.backImage.drawPNG(field.backX, field.backY, 1, 0, image);
    };
    drawBack(1);
    waitForPenUp();
    drawBack(0);
    keyboard.keyboardBack_onTouch();
    return Touch::Taken;
}

Touch touchLetters(Keyboard& keyboard, int x, int y) {
    Touch touch = Touch::Missed;
    for (int row = 0; row < 4 && touch == Touch::Missed; ++row)
        touch = touchCharacterRow(keyboard, row, x, y);
    if (touch == Touch::Missed)
        touch = touchBottomRow(keyboard, x, y);
    if (touch == Touch::Missed)
        touch = touchBackButton(keyboard, LETTER_FIELD, x, y);
    return touch;
}

Touch touchKeypadKey(Keyboard& keyboard, int column, const KeypadKey& key) {
    if (key.action == KeypadAction::AppendDot && keyboard.layoutMode != KEYBOARD_IP_ADDRESS)
        return Touch::EndsLoop;
    keyboard.keyIndex = column;
    keyboard.keyRect = keyOf(key);
    aswprintf(keyboard.scratch, KEYBOARD_TEXT_LENGTH - 1, L"%ls", key.label);
    const auto drawKey = [&](int colour) {
        fill(keyboard.keyRect, colour);
        drawLabel(key.label, key.left, key.top + KEYPAD_LABEL_DROP, KEYPAD_KEY_WIDTH, WHITE);
    };
    drawKey(KEY_PRESSED);
    waitForPenUp();
    drawKey(KEY_FACE);
    if (key.action == KeypadAction::Delete)
        keyboard.deleteChar();
    else
        keyboard.appendChar(key.label[0]);
    return Touch::Taken;
}

// The keypad's bands begin a pixel below the keys' upper edges.
bool isInBand(int top, int bottom, int y) {
    return top + 1 <= y && y < bottom;
}

Touch touchKeypad(Keyboard& keyboard, int x, int y) {
    if (KEYPAD_TOUCH_LEFT <= x && x < KEYPAD_TOUCH_RIGHT) {
        const int column = (x - KEYPAD_LEFT) / KEYPAD_PITCH;
        for (const auto& row : KEYPAD_ROWS)
            if (isInBand(row[0].top, row[0].top + KEYPAD_KEY_HEIGHT, y))
                return touchKeypadKey(keyboard, column, row[column]);
        if (isInBand(KEYPAD_DONE.top, KEYPAD_DONE.bottom, y)) {
            drawKeypadDone(KEY_PRESSED);
            waitForPenUp();
            drawKeypadDone(KEY_FACE);
            keyboard.doneOnTouch();
            return Touch::Taken;
        }
    }
    return touchBackButton(keyboard, KEYPAD_FIELD, x, y);
}

// Wider than the panel: a pen beyond the panel's edge is no lifted pen.
bool isPenDown(int x, int y) {
    return x >= 1 && x <= 479 && y >= 1 && y <= 319;
}

} // namespace

void Keyboard::getTouch(int x, int y) {
    while (active != 0) {
        Touch touch = Touch::Taken;
        if (!isPenDown(x, y))
            blink(*this);
        else
            touch = isNumericMode == 1 ? touchKeypad(*this, x, y) : touchLetters(*this, x, y);
        if (touch == Touch::EndsLoop)
            return;
        x = readX();
        y = readY();
        usleep(POLL_US);
    }
}

void Keyboard::cap_onTouch() {
    if (isCap != 1) {
        isCap = 1;
    } else {
        isCap = 0;
        drawBottomKey(BOTTOM_KEYS[CASE_KEY], BOTTOM_FACE);
    }
    kbCapChanged = 1;
    if (layoutMode == KEYBOARD_LETTERS)
        drawKeyboard();
    kbCapChanged = 0;
}

void Keyboard::spl_onTouch() {
    if (layoutMode == KEYBOARD_LETTERS) {
        layoutMode = KEYBOARD_SYMBOLS;
        isSplMode = 1;
        labelSwitchKey(SWITCH_TO_LETTERS);
    } else if (layoutMode == KEYBOARD_SYMBOLS) {
        layoutMode = KEYBOARD_LETTERS;
        isSplMode = 0;
        labelSwitchKey(SWITCH_TO_SYMBOLS);
    }
    drawKeyboard();
}

void Keyboard::leftShift_onTouch() {
    std::puts("in left shift");
}

void Keyboard::rightShift_onTouch() {
    std::puts("in right shift");
}
