#include "keyboard/drawing.h"
#include "keyboard/messages.h"
#include "util/wide_format.h"

using namespace ostrel;

namespace {

constexpr int MAX_CHARACTERS = KEYBOARD_TEXT_LENGTH - 1;
constexpr int BLINK_DELAY = -25; // what blinkCounter starts from after an edit: the cursor stays on for longer

void showFullMessage(Keyboard& keyboard) {
    Modal modal;
    setLines(keyboard, modal, TOO_LONG, MAX_CHARACTERS);
    modal.draw(1, -1);
    lcd_clear(BLACK);
    keyboard.drawBase(); // also over the keypad
    keyboard.drawKeyboard();
}

// The text fits, as before: only the new character is drawn.
void drawAppended(Keyboard& keyboard, const TextField& field, wchar_t c) {
    aswprintf(keyboard.scratch, MAX_CHARACTERS, L"%lc", c);
    keyboard.drawCursor(keyboard.cursorX, false);
    drawFieldText(
        keyboard.scratch, keyboard.oldWidth + field.textX, field.textY, keyboard.newWidth - keyboard.oldWidth);
    keyboard.cursorX = keyboard.newWidth + field.textX;
}

// The text is too wide: its end is shown. `oldWidth` becomes the width of what is hidden on the left.
void drawScrolled(Keyboard& keyboard, const TextField& field) {
    keyboard.scrolled = 1;
    const int position =
        textTouchPosition(shownText(keyboard), keyboard.newWidth - field.visibleWidth, static_cast<float>(TEXT_SIZE));
    keyboard.oldWidth = position / 1000;
    keyboard.scrollOffset = formatShownFrom(keyboard, position);
    fill(field.box, WHITE);
    drawFieldText(keyboard.scratch, field.textX, field.textY, keyboard.newWidth - keyboard.oldWidth);
    keyboard.cursorX = keyboard.newWidth + field.textX - keyboard.oldWidth;
}

// The text fits again: all of it is drawn.
void drawUnscrolled(Keyboard& keyboard, const TextField& field) {
    keyboard.scrolled = 0;
    keyboard.scrollOffset = 0;
    fill(field.box, WHITE);
    drawFieldText(shownText(keyboard), field.textX, field.textY, keyboard.newWidth);
    keyboard.cursorX = keyboard.newWidth + field.textX;
}

} // namespace

void Keyboard::appendChar(wchar_t c) {
    const int length = textLen(text);
    if (length >= MAX_CHARACTERS) {
        showFullMessage(*this);
        return;
    }
    oldWidth = shownWidth(*this);
    text[length] = c;
    text[length + 1] = 0;
    newWidth = shownWidth(*this);

    const TextField& field = currentField();
    const int decidingWidth = field.scrollsByNewWidth ? newWidth : oldWidth;
    if (decidingWidth > field.visibleWidth)
        drawScrolled(*this, field);
    else if (scrolled == 1)
        drawUnscrolled(*this, field);
    else
        drawAppended(*this, field, length < prefixLength ? L'\0' : c); // a prefix is not shown, even while it grows
    drawCursor(cursorX, true);
    blinkCounter = BLINK_DELAY;
}

void Keyboard::deleteChar() {
    const int length = textLen(text);
    if (length <= prefixLength || length == 0)
        return;
    oldWidth = shownWidth(*this);
    text[length - 1] = 0;
    newWidth = shownWidth(*this);
    const TextField& field = currentField();
    if (newWidth <= field.visibleWidth)
        fill({newWidth + field.textX, field.box.top, oldWidth + field.textX, field.box.bottom}, WHITE);
    appendChar(0);
}
