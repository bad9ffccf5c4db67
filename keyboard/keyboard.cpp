#include "keyboard/keyboard.h"

#include "keyboard/layout.h"

#include <cstring>
#include <cwchar>

unsigned char isCap = 0;
unsigned char kbCapChanged = 0;
unsigned char isSplMode = 0;
unsigned char isNumericMode = 0;
unsigned char isIPAddrMode = 0;

// Keyboard has a virtual table, so the standard leaves offsetof to the compiler; both of ours define it.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
namespace {

// The members' places on the router, whose pointers have 4 bytes, are part of the binary interface.
constexpr bool onRouter = sizeof(void*) == 4;
static_assert(!onRouter || offsetof(Keyboard, active) == 4, "binary interface");
static_assert(!onRouter || offsetof(Keyboard, returnHandler) == 8, "binary interface");
static_assert(!onRouter || offsetof(Keyboard, outputText) == 24, "binary interface");
static_assert(!onRouter || offsetof(Keyboard, settingValue) == 28, "binary interface");
static_assert(!onRouter || offsetof(Keyboard, initialText) == 388, "binary interface");
static_assert(!onRouter || offsetof(Keyboard, scratch) == 1828, "binary interface");
static_assert(!onRouter || offsetof(Keyboard, keyRect) == 2564, "binary interface");
static_assert(!onRouter || offsetof(Keyboard, rowX) == 2592, "binary interface");
static_assert(!onRouter || offsetof(Keyboard, settings) == 2672, "binary interface");
static_assert(!onRouter || offsetof(Keyboard, layoutMode) == 2676, "binary interface");
static_assert(!onRouter || offsetof(Keyboard, backImage) == 2684, "binary interface");
static_assert(!onRouter || offsetof(Keyboard, rtdev) == 2688, "binary interface");
static_assert(!onRouter || sizeof(Keyboard) == 2692, "binary interface");

} // namespace
#pragma GCC diagnostic pop

Keyboard::Keyboard() {
    active = 0;
    deferCommit = 0;
    maxLength = 0;
    minLength = 0;
    prefixLength = 0;
    edited = 0;
    scrolled = 0;
    rtdev = 0;
    layoutMode = KEYBOARD_LETTERS;
    for (int i = 0; i < 4; ++i) {
        const ostrel::CharacterRow& row = ostrel::CHARACTER_ROWS[i];
        rowX[i] = {row.left, row.left + row.keys * ostrel::KEY_PITCH};
        rowY[i] = {row.top, row.top + ostrel::KEY_SIZE};
    }
    const KeyboardRect& anyBottomKey = ostrel::BOTTOM_KEYS[0].face;
    rowX[4] = {ostrel::BOTTOM_TOUCH_LEFT, ostrel::BOTTOM_TOUCH_RIGHT};
    rowY[4] = {anyBottomKey.top, anyBottomKey.bottom};
    isCap = 0;
    kbCapChanged = 0;
    isSplMode = 0;
    isNumericMode = 0;
    backImage.loadPNG("/ostrel/back_35.png");
    backImage.loadPNG("/ostrel/backimagePressed_35.png");
}

Keyboard::Keyboard(const Keyboard&) {}

Keyboard::~Keyboard() {
    unDraw();
}

void Keyboard::keyboardMode(int mode) {
    layoutMode = mode;
    switch (mode) {
    case 0:
    case 2:
    case 5:
    case KEYBOARD_IP_ADDRESS:
        isNumericMode = 1;
        isIPAddrMode = mode == KEYBOARD_IP_ADDRESS ? 1 : 0;
        break;
    case KEYBOARD_SYMBOLS:
    case 4:
        isNumericMode = 0;
        isSplMode = 1;
        layoutMode = KEYBOARD_SYMBOLS;
        break;
    default:
        isNumericMode = 0;
        isSplMode = 0;
        layoutMode = KEYBOARD_LETTERS;
    }
}

void Keyboard::unDraw() {
    lcd_clear(0);
    active = 0;
    returnHandler();
}

int textLen(wchar_t* text) {
    return static_cast<int>(std::wcslen(text));
}

int textLen(char* text) {
    return static_cast<int>(std::strlen(text));
}
