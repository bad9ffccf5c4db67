// What drawing, touch and editing of the keyboard share.
#ifndef OSTREL_KEYBOARD_DRAWING_H
#define OSTREL_KEYBOARD_DRAWING_H

#include "keyboard/layout.h"

namespace ostrel {

constexpr double TEXT_SIZE = 20.0;

void fill(const KeyboardRect& rect, int colour);
void drawLabel(const wchar_t* label, int x, int y, int width, int colour);
void drawFieldText(const wchar_t* text, int x, int y, int width);

// Face and label of a key of the bottom row, or of the keypad's Done.
void drawBottomKey(const BottomKey& key, int colour);
void drawKeypadDone(int colour);

// The text without its prefix: what is measured, shown and scrolled.
wchar_t* shownText(Keyboard& keyboard);
int shownWidth(Keyboard& keyboard);

// Puts the shown text from the character on that textTouchPosition named into `scratch`, and returns that character's
// index; no character is the first.
int formatShownFrom(Keyboard& keyboard, int touchPosition);

} // namespace ostrel

#endif
