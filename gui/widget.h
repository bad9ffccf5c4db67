// Widget: the touchable element that a program places on a page, and wType, the names of the widget kinds.
#ifndef OSTREL_GUI_WIDGET_H
#define OSTREL_GUI_WIDGET_H

#include "gui/display.h"

// The kind numbers that WidgetRecord::type holds. One instance exists, wType. The order of the members is part of
// the interface.
class OSTREL_API WidgetType {
  public:
    WidgetType();

    int32_t kind8; // text item
    int32_t kind0; // push button
    int32_t kind1; // list row
    int32_t kind2; // value field
    int32_t kind3; // exclusive choice: a touch selects it and clears the others of its group
    int32_t kind4; // switch: a touch flips it
    int32_t kind5; // check mark row
    int32_t kind6; // tab
    int32_t kind7; // caption: never takes a touch
    int32_t kind9; // prominent button
};
static_assert(sizeof(WidgetType) == 40, "binary interface");

extern OSTREL_API WidgetType wType;

// An element of a page. The program creates widgets, usually in static storage (whose zeros are the right start for
// what a constructor leaves alone), links them by `next` and `prev`, and owns them. A widget owns nothing itself.
// Texts are copied and cut at 79 characters; a null text is an empty one. Not for use from several threads.
class OSTREL_API Widget {
  public:
    // Leaves every field as storage holds it.
    Widget();

    // Copies nothing: the copy is a blank widget, every field as storage holds it.
    Widget(const Widget& other);

    // The full constructor. Sets everything of the record but `password`, `touchable` and words 7 to 11, which stay
    // as storage holds them (in static storage: not masked, touchable), then asks the display library for the touch
    // area. flagA = 0, flagB = 1, group = 1, keyboardFlag = 0. The callback is left alone: set it before a touch.
    Widget(
        int type, int x, int y, int colourA, int colourB, int selected, int width, int height, float fontSize,
        int scale, wchar_t* text);
    Widget(
        int type, int x, int y, int colourA, int colourB, int selected, int width, int height, float fontSize,
        int scale, const wchar_t* text)
        : Widget(type, x, y, colourA, colourB, selected, width, height, fontSize, scale, const_cast<wchar_t*>(text)) {}

    // As above, but width, height, font size and scale stay as storage holds them (in static storage 0: the text's
    // natural size), and `password` = 0 and `touchable` = 1 are set, after the touch area.
    Widget(int type, int x, int y, int colourA, int colourB, int selected, wchar_t* text);
    Widget(int type, int x, int y, int colourA, int colourB, int selected, const wchar_t* text)
        : Widget(type, x, y, colourA, colourB, selected, const_cast<wchar_t*>(text)) {}

    // A text item (kind 8), drawn as drawText does with colourA, word10 and word11 as its a and b and word9 as its c.
    // Sets only what its parameters name, and the type: no flag, no group, no touch area.
    Widget(int x, int y, int colourA, int word10, int word11, float fontSize, int word9, int width, wchar_t* text);
    Widget(int x, int y, int colourA, int word10, int word11, float fontSize, int word9, int width, const wchar_t* text)
        : Widget(x, y, colourA, word10, word11, fontSize, word9, width, const_cast<wchar_t*>(text)) {}

    // Erases the widget from the panel, also when it was never drawn.
    virtual ~Widget();

    // Links are the program's, so assigning one widget to another copies the record, links and all.
    Widget& operator=(const Widget& other) = default;

    void draw();
    void unDraw();

    // Copies `text` and draws the widget at once, without erasing it first.
    void setText(wchar_t* text);
    void setText(const wchar_t* text) { setText(const_cast<wchar_t*>(text)); }

    // Despite its name a setter: whether the text is masked. Takes effect at the next draw.
    void isPassword(int flag);

    // 0 or 1. Takes effect at the next draw.
    void setSelected(int state);

    int getType();

    // Offers a touch. Returns 0 at once, with nothing drawn, when (x, y) is not strictly inside the touch area, the
    // widget is a caption or its `touchable` is -1. Otherwise it shows the pressed, selected or flipped look, waits
    // for the pen to lift (a button is then drawn unpressed), calls the callback, which must be set, and returns 1.
    // An exclusive choice clears the others of its group in its list. The callback may draw another page.
    int checkTouch(int x, int y);

    // Copies the settings key `key` into the buffer that keyboardTarget points to, which must be large enough; a
    // null key gives an empty text. Without a buffer (null) nothing happens. The first argument is ignored.
    void useKeyboard(bool, char* key);
    void useKeyboard(bool ignored, const char* key) { useKeyboard(ignored, const_cast<char*>(key)); }

    void (*callback)();  // called after every accepted touch; the program sets it
    unsigned char flagA; // kept for programs
    unsigned char flagB; // kept for programs
    int32_t group;       // of exclusive choices
    Widget* next;        // following widget of the page's list, null at the tail
    Widget* prev;        // preceding one, null at the head
    WidgetRecord record;
    TouchArea touchArea;
    unsigned char keyboardFlag;
    char* keyboardTarget; // where useKeyboard copies to; the program sets it
};

#endif
