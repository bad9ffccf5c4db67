// Keyboard: the on-screen keyboard, which takes over the whole panel to edit one line of text: letters, symbols, a
// keypad, a keypad for IP addresses. Every page has one; it may also be used alone.
//
// One entry, from the program's side:
//
//     keyboard.returnHandler = redrawMyPage; // must be set before any entry
//     keyboard.keyboardMode(1);              // the layout, before each entry
//     keyboard.maxLength = 32;               // limits, prefix and validation stay until they are changed
//     keyBoardSaveMode(true);
//     keyboard.draw("wifiName");             // or drawRtdev, or drawText; shows the keyboard
//     keyboard.getTouch(x, y);               // each touch while `active` is set; a page does this by itself
//
// The entry ends with Done, when the text passes its checks, or with the back button. Both clear the panel and call
// returnHandler.
//
// What is left from the entry before: the layout, maxLength, minLength, prefixLength, the validation function,
// deferCommit, saveMode, `edited` and outputText. So before each entry a program sets
// - the layout and the limits, prefix and validation function, wherever another entry used others;
// - before draw and drawRtdev: keyBoardSaveMode(true) and deferCommit. A free text turns both round, and only one that
//   was changed and accepted turns them back: after a cancelled or unchanged free text a changed setting would be
//   copied to the free text's buffer instead of being saved;
// - before drawText: nothing; it sets deferCommit and `edited` and clears saveMode itself.
//
// Not for use from several threads. getTouch keeps control while the entry lasts and looks at the pen every 20 ms.
#ifndef OSTREL_KEYBOARD_KEYBOARD_H
#define OSTREL_KEYBOARD_KEYBOARD_H

#include "gui/display.h"
#include "keyboard/key_records.h"
#include "settings/memory.h"

// Characters (or bytes) of each of the keyboard's texts, its terminator included.
enum : int { KEYBOARD_TEXT_LENGTH = 180 };

// The layout codes that have a name. 0, 2 and 5 are plain keypads that keep their number; 4 is 3; all others are 1.
enum : int {
    KEYBOARD_LETTERS = 1,
    KEYBOARD_SYMBOLS = 3,
    KEYBOARD_IP_ADDRESS = 7, // the keypad with a "."; Done accepts IPv4 addresses only
};

// Of a key: left, top, right, bottom as fillRect takes them.
struct KeyboardRect {
    int32_t left;
    int32_t top;
    int32_t right;
    int32_t bottom;
};

// Where touches belong to a row of the letter and symbol layouts, all four sides exclusive.
struct KeyboardRowX {
    int32_t rowLeft;
    int32_t rowRight;
};
struct KeyboardRowY {
    int32_t rowTop;
    int32_t rowBottom;
};

class OSTREL_API Keyboard {
  public:
    // Loads the two pictures of the back button from /ostrel and starts with letters in lower case, no limits and no
    // prefix. Fields that are not named here stay as storage holds them; returnHandler is one of them.
    Keyboard();

    // Copies nothing: a blank keyboard, every field as storage holds it.
    Keyboard(const Keyboard& other);
    Keyboard& operator=(const Keyboard& other) = delete;

    // Clears the panel and calls returnHandler, which must be set by then.
    virtual ~Keyboard();

    // Chooses the layout of the next entry by its code, see above.
    void keyboardMode(int mode);

    // Start an entry and draw it: of the setting `key` of the main settings, of the second section, or of a free text
    // that is `initial` at first (UTF-8). Keys and texts are copied and cut at 179 bytes, as is a longer value; bytes
    // that are no UTF-8 are left out. prefixLength characters at the start of the text are neither shown nor editable.
    // `out` gets the free text when the entry ends, and is kept until then. It holds at least 45 characters, whose
    // contents are cleared at once, and the longest text and terminator that the entry may give: 180 are always enough.
    void draw(char* key);
    void draw(const char* key) { draw(const_cast<char*>(key)); }
    void drawRtdev(char* key);
    void drawRtdev(const char* key) { drawRtdev(const_cast<char*>(key)); }
    void drawText(char* initial, wchar_t* out);
    void drawText(const char* initial, wchar_t* out) { drawText(const_cast<char*>(initial), out); }

    // Handles a touch at (x, y) and then the pen, until the entry ends or a dead zone is touched: a blank key of the
    // symbols, a place beside the letters' last row, the keypad's "." without addresses. Then `active` tells whether
    // the keyboard still waits for its next touch. Returns at once when it is not active.
    void getTouch(int x, int y);

    // Ends the entry: clears the panel and `active`, and calls returnHandler, which must be set.
    void unDraw();

    // Draw parts of the screen: the frame of letters and symbols with the text, their keys, the whole keypad.
    void drawBase();
    void drawKeyboard();
    void drawNumKeyboard();

    // Draws (or erases) the cursor at x.
    void drawCursor(int x, bool on);

    // Edit the text and draw it. appendChar(0) only draws. A 180th character is refused with a message. deleteChar
    // never removes what belongs to the prefix.
    void appendChar(wchar_t c);
    void deleteChar();

    // What the keys do: change the case, change between letters and symbols, cancel, check and accept.
    void cap_onTouch();
    void spl_onTouch();
    void keyboardBack_onTouch();
    void doneOnTouch();

    // Print "in left shift" and "in right shift" to standard output; no key does it.
    void leftShift_onTouch();
    void rightShift_onTouch();

    unsigned char active;      // an entry is on the panel
    unsigned char deferCommit; // 1: what Done saves is not committed at once, and no progress is shown
    void (*returnHandler)();   // called when the keyboard has left the panel; the program sets it
    int32_t maxLength;         // typed characters that Done accepts; 0: any number
    int32_t minLength;         // likewise
    int32_t prefixLength;      // characters at the start of the text that are neither shown nor editable
    wchar_t* outputText;       // drawText's `out`
    char settingValue[KEYBOARD_TEXT_LENGTH];
    char settingKey[KEYBOARD_TEXT_LENGTH];     // or the initial free text
    wchar_t initialText[KEYBOARD_TEXT_LENGTH]; // as the entry began
    wchar_t text[KEYBOARD_TEXT_LENGTH];
    wchar_t scratch[KEYBOARD_TEXT_LENGTH]; // the label of the key pressed last, or the visible text
    int32_t keyIndex;                      // column of the key touched last
    int32_t oldWidth;                      // of the text without prefix, pixels, before and after the last edit
    int32_t newWidth;
    int32_t scrollOffset; // the first character shown of a text wider than its box
    KeyboardRect keyRect; // of the key pressed last
    int32_t cursorX;
    int32_t cursorY;
    int32_t blinkCounter; // looks at a lifted pen since the cursor changed
    KeyboardRowX rowX[5]; // the four rows of characters and the bottom row
    KeyboardRowY rowY[5];
    Memory settings;
    int32_t layoutMode;
    unsigned char edited;   // a free text's result goes to outputText
    unsigned char scrolled; // the text is wider than its box
    unsigned char cursorOn;
    ImagePNG backImage;  // the back button, and pressed
    unsigned char rtdev; // the entry edits a setting of the second section
};

// Layout flags, shared by all keyboards.
extern OSTREL_API unsigned char isCap;         // upper case
extern OSTREL_API unsigned char kbCapChanged;  // 1 while a change of case is drawn
extern OSTREL_API unsigned char isSplMode;     // symbols
extern OSTREL_API unsigned char isNumericMode; // 1: keypad
extern OSTREL_API unsigned char isIPAddrMode;  // the keypad's "." is live

// True (at load): Done saves a changed text as a setting. False: it is copied to outputText, when `edited` is set.
extern OSTREL_API bool saveMode;
OSTREL_API void keyBoardSaveMode(bool save);

// The program's check of a text, or null for none: called by Done once lengths and address are right, with the whole
// text, prefix included, in the keyboard's own buffer. False refuses it: the keyboard is drawn again, without a message
// of its own. The function may show one. Stays set over all entries.
extern OSTREL_API bool (*keyboardValidation)(wchar_t* text);
OSTREL_API void setKeyboardValidationFunction(bool (*validation)(wchar_t* text));

// Cleared at the start of every entry, and used for nothing else.
extern OSTREL_API int32_t leftShift;

// Draws the labels of the layout that the flags choose.
OSTREL_API void printText();

// drawText under another name, with the size converted.
OSTREL_API void drawTextKey(wchar_t* text, int x, int y, int width, int a, int b, double size, int colour, int last);
inline void drawTextKey(const wchar_t* text, int x, int y, int width, int a, int b, double size, int colour, int last) {
    drawTextKey(const_cast<wchar_t*>(text), x, y, width, a, b, size, colour, last);
}

// Characters or bytes before the terminator.
OSTREL_API int textLen(wchar_t* text);
OSTREL_API int textLen(char* text);
inline int textLen(const wchar_t* text) {
    return textLen(const_cast<wchar_t*>(text));
}
inline int textLen(const char* text) {
    return textLen(const_cast<char*>(text));
}

#endif
