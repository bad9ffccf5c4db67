// The display contract: everything that draws on the panel or reads its touch goes through these operations.
// libOstrelGui.so implements them; tests replace them with a recording library.
//
// The panel is 320 pixels wide and 240 high, origin at the top left, x to the right, y down. Colours are RGB565
// values; other values are taken modulo 65536. Everything is clipped to the panel, however far outside it a call
// reaches. Texts are wide, zero-terminated, one code point an element, and are only read during the call.
//
// The operations work from the start of the process to its end: before libOstrelGuiInit, while static objects are
// constructed, and after exit has begun. A panel or touch device that is missing is reported once on standard error;
// drawing then goes to memory and the pen is up. None of the operations may be called from two threads at once.
#ifndef OSTREL_GUI_DISPLAY_H
#define OSTREL_GUI_DISPLAY_H

#include "util/api.h"

#include <cstddef>
#include <cstdint>
#include <cwchar>

static_assert(sizeof(wchar_t) == 4, "a wide character holds one code point");
static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "the records' layout is little-endian");

// Characters of a widget's text, its terminator included.
enum : int { WIDGET_TEXT_LENGTH = 80 };

// What the display library draws, erases and measures. The layout is part of the interface.
struct WidgetRecord {
    int32_t x;        // left edge, pixels
    int32_t y;        // top edge, pixels
    int32_t width;    // pixels; 0: the natural width of the text
    int32_t height;   // pixels; 0: the natural height of the text
    int32_t selected; // 0 normal look, 1 selected or pressed look
    int32_t colourA;  // of the kind's look; both colours zero: the theme's
    int32_t colourB;
    int32_t word7;  // never written by the toolkit
    int32_t word8;  // never written by the toolkit
    int32_t word9;  // set by the text-item constructor only: drawText's c
    int32_t word10; // likewise: drawText's a
    int32_t word11; // likewise: drawText's b
    float fontSize; // line box height in pixels; 0: 20
    float scale;    // changes nothing
    wchar_t text[WIDGET_TEXT_LENGTH];
    int32_t type;      // kind number, one of wType's
    int32_t password;  // nonzero: drawn as bullets while passwords are hidden
    int32_t touchable; // -1: never reacts to touch, and looks it
};
static_assert(sizeof(WidgetRecord) == 388, "record layout");
static_assert(alignof(WidgetRecord) == 4, "record layout");
static_assert(offsetof(WidgetRecord, selected) == 16, "record layout");
static_assert(offsetof(WidgetRecord, word7) == 28, "record layout");
static_assert(offsetof(WidgetRecord, fontSize) == 48, "record layout");
static_assert(offsetof(WidgetRecord, text) == 56, "record layout");
static_assert(offsetof(WidgetRecord, type) == 376, "record layout");
static_assert(offsetof(WidgetRecord, touchable) == 384, "record layout");

// Where a touch belongs to an element: left < x < right and top < y < bottom; the edges themselves are outside.
struct TouchArea {
    int32_t left;
    int32_t right;
    int32_t top;
    int32_t bottom;
};
static_assert(sizeof(TouchArea) == 16, "record layout");

// Prepares panel, touch and fonts. Any number of calls is fine; without one, the first operation prepares them.
OSTREL_API void libOstrelGuiInit();

// Fills the whole panel. The colour is remembered as the page's background: erasing paints with it.
OSTREL_API void lcd_clear(int colour);

// Fills x1 <= x < x2, y1 <= y < y2. Equal or swapped corners paint nothing. Always reaches the panel, also where this
// program believes that the colour is there already: another program may have drawn since.
OSTREL_API void fillRect(unsigned short x1, unsigned short y1, unsigned short x2, unsigned short y2, int colour);

// Draws a one-pixel outline through both corners, inclusive. Equal corners make a pixel, swapped ones draw nothing.
OSTREL_API void drawRect(unsigned short x1, unsigned short y1, unsigned short x2, unsigned short y2, int colour);

// Draws a bordered box with rounded corners that is readable over any page: x1 <= x < x2, y1 <= y < y2. `a` and `b`
// are accepted and change nothing.
OSTREL_API void drawRoundedRectangle(int x1, int y1, int x2, int y2, int a, int b);

// Draws `text` with the top of its line box, `size` pixels high, at y. c = 0: starts at x, and `width` is ignored.
// c nonzero: centred in the `width` pixels from x, 3 pixels kept free at both ends; made smaller where it does not
// fit, down to 14 pixels (or `size`, if that is less), then cut with an ellipsis. `a` and `b` change nothing.
// Only the glyphs are painted, blended over what is there. Here and below, sizes count in whole pixels from 6 to 96;
// one that is no number counts as 20.
OSTREL_API void drawText(wchar_t* text, int x, int y, int width, int a, int b, float size, int colour, int c);

// Draws `text` in the big white title font with the top of its line box at y. A page's title, at (90, 10), keeps clear
// of the language button: it is made smaller where it does not fit, and then cut with an ellipsis.
OSTREL_API void drawFontBigWhiteString(wchar_t* text, int x, int y);

// Erases the title row, from x = 90 on, as wide as `text` is in the title font.
OSTREL_API void unDrawTitle(wchar_t* text);

// Width of `text` in pixels: the sum of its characters' advances, so that widths add up.
OSTREL_API int textWidth(wchar_t* text, float size);

// Which character of `text` lies `x` pixels from its start: 1000 * the pixel offset of that character's left edge +
// its index. -1 where there is none.
OSTREL_API int textTouchPosition(wchar_t* text, int x, float size);

// Draws an element by its kind: 0 push button, 1 list row, 2 value field, 3 exclusive choice, 4 switch, 5 check mark
// row, 6 tab, 7 caption, 8 text item, 9 prominent button; any other number looks like 0. The whole rectangle is
// repainted, and of an element of natural size also what its last drawing covered. In kinds 1 to 5 and 7 a tab ends the
// label, and what follows is a value at the right end. Colours of the record's own: colourA is the surface and colourB
// the text; a caption's and a text item's colourA is the text. Records may hold any bits: what makes no sense is drawn
// clipped.
OSTREL_API void drawWidget(WidgetRecord record);

// Paints the element's rectangle with the last lcd_clear colour.
OSTREL_API void unDrawWidget(WidgetRecord record);

// The touch area of exactly the pixels that drawWidget paints for this record.
OSTREL_API TouchArea getTouchArea(WidgetRecord record);

// Whether elements with `password` set show their text. Hidden at first. Takes effect at each element's next drawing.
OSTREL_API void setShowPasswords(bool show);

// The pen. readX advances to the newest sample, but never past a press or a release that it has not yet told of;
// readY belongs to the same sample. While the pen is down x is 1..319 and y 1..239; when it is up both are -1. So two
// quick taps are two presses, however slowly a program looks.
//
// When a program has not asked for the pen for 250 ms (it was busy, or another program had the panel), every stroke
// begun before its next question is dropped to its end. readX, waitForPenUp and waitForTouch are questions.
OSTREL_API int readX();
OSTREL_API int readY();

// Blocks until the current stroke has ended; returns at once when the pen is up, and when the device goes away.
OSTREL_API void waitForPenUp();

// 1: touches are not delivered; 0: they are. A stroke that begins while disabled stays invisible to its end; one that
// had begun before and was not told yet is told once touch is enabled again.
OSTREL_API void disableTouch(int disabled);

// Panel and backlight. Drawing while the panel is off is kept, and shown by turnOn.
OSTREL_API void turnOn();
OSTREL_API void turnOff();

// Registers the idle handler, in place of an earlier one; null: none. It runs 36 times a second on the thread that
// waits in waitForTouch, and nowhere else. Missed ticks are not made up.
OSTREL_API void setScreenLockHandler(void (*handler)());

// Waits for the next press, at most `timeoutMs` milliseconds (-1: for ever; 0: not at all). True: *x and *y are its
// point (either may be null), and readX, readY and waitForPenUp follow that stroke. False: the time is over or the
// panel is gone, and *x and *y are unchanged. Once the panel is gone, waiting for ever ends after a quarter of a
// second. Runs the idle handler whenever it is due.
OSTREL_API bool waitForTouch(int* x, int* y, int timeoutMs = -1);

// A descriptor that is readable when waitForTouch(&x, &y, 0) has something to do: a touch, or an idle tick. For
// programs with a poll loop of their own, which answer with that call whenever it is readable. Without anything to do
// it still becomes readable ten times a second: the answer shows that the program waits, so that the tap that wakes
// it counts. It belongs to the library and stays the same for the process's life. -1 when there is none to be had.
OSTREL_API int touchDescriptor();

// True when there is no touch device or it has gone away for good: a program's loop should end then.
OSTREL_API bool panelClosed();

// The largest image that is loaded: pixels on each side, and length of its file.
enum : int { IMAGE_MAX_SIDE = 1024, IMAGE_MAX_FILE_BYTES = 8 << 20 };

// A store of PNG images, drawn by their index: 0, 1, 2, ... in the order of loading.
class OSTREL_API ImagePNG {
  public:
    ImagePNG();
    ~ImagePNG();
    ImagePNG(const ImagePNG&) = delete;
    ImagePNG& operator=(const ImagePNG&) = delete;

    // Decodes the file at `path`, of any colour type and depth, and returns its index. A file that is missing, broken
    // or too large gets its index too, is reported once on standard error and draws nothing.
    int loadPNG(char* path);
    int loadPNG(const char* path) { return loadPNG(const_cast<char*>(path)); }

    // Draws image `index` with its top left corner at (x, y). a = 0 replaces what is there, transparent pixels
    // becoming the last lcd_clear colour; a nonzero blends over it. `b` changes nothing. An index that was never
    // given out draws nothing.
    void drawPNG(int x, int y, int a, int b, int index);

  private:
    struct Store;
    Store* store;
};

// The same operations for texts that are constant, string literals above all.
inline void drawText(const wchar_t* text, int x, int y, int width, int a, int b, float size, int colour, int c) {
    drawText(const_cast<wchar_t*>(text), x, y, width, a, b, size, colour, c);
}
inline void drawFontBigWhiteString(const wchar_t* text, int x, int y) {
    drawFontBigWhiteString(const_cast<wchar_t*>(text), x, y);
}
inline void unDrawTitle(const wchar_t* text) {
    unDrawTitle(const_cast<wchar_t*>(text));
}
inline int textWidth(const wchar_t* text, float size) {
    return textWidth(const_cast<wchar_t*>(text), size);
}
inline int textTouchPosition(const wchar_t* text, int x, float size) {
    return textTouchPosition(const_cast<wchar_t*>(text), x, size);
}

#endif
