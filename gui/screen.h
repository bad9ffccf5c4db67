// Screen: one page of a program, with a header bar of image buttons, a big title, a list of widgets and an on-screen
// keyboard, and the one dispatcher of touches for the whole toolkit.
//
// A program constructs a page, sets the callbacks and flags that it uses, links its widgets and calls draw(). Then it
// hands every touch to the page that is showing:
//
//     int x, y;
//     while (waitForTouch(&x, &y))
//         page.getTouch(x, y);
//
// Which page is showing is the program's decision. Not for use from several threads.
#ifndef OSTREL_GUI_SCREEN_H
#define OSTREL_GUI_SCREEN_H

#include "gui/display.h"
#include "gui/widget.h"
#include "keyboard/keyboard.h"

// Characters of a page's title, its terminator included.
enum : int { SCREEN_TITLE_LENGTH = 80 };

class OSTREL_API Screen {
  public:
    // Constructs the keyboard and initialises the display library; every other member stays as storage holds it, and
    // the idle tick is not registered.
    Screen();

    // A page with back and exit buttons, no callbacks, no widgets, that clears the panel when it is drawn. Registers
    // the idle tick; the first titled page of the process loads the header images. The title is copied and cut at 79
    // characters. onBack stays as storage holds it: set it, or clear showBack.
    explicit Screen(wchar_t* title);
    explicit Screen(const wchar_t* title) : Screen(const_cast<wchar_t*>(title)) {}

    // Copies nothing: as Screen(), but without initialising the display library.
    Screen(const Screen& other);
    Screen& operator=(const Screen& other) = delete;

    // Erases the widgets, of which there must be at least one, then ends the keyboard, which clears the panel and
    // calls keyboard.returnHandler; that must be set by then.
    virtual ~Screen();

    // Changes the title and draws it. The old one is erased as far as thirteen "x" are wide.
    void setTitle(wchar_t* title);
    void setTitle(const wchar_t* title) { setTitle(const_cast<wchar_t*>(title)); }

    // Draws the whole page. Reads "ShowPass" and "ScreenTimeout" from the settings, restarts the idle counter and
    // takes a PIN pad off the touch path. An integer that the display library throws ends the drawing and is printed
    // as "Exception at %d" on standard output.
    void draw();

    // Erases the widgets. There must be at least one.
    void undraw();

    // Draws the header's buttons. The argument is not used.
    void drawBaseScreen(int unused);

    // Dispatches one touch. The first of these that applies takes it: the dark panel is switched on; the two touches
    // after that are swallowed; the PIN pad; the keyboard while it is active; below the header (y of 41 and more) the
    // widgets from the head of the list until one takes it; in the header the buttons. A button shows its pressed
    // look until the pen lifts, then acts: back calls onBack, which must be set; exit calls onExit if it is set,
    // clears the panel and ends the process with exit(0); language runs "./ostrel/language", clears the panel and
    // calls onLanguage, or draws the page again if that is null; home calls onHome if it is set. Blocks while the pen
    // is down, and while a keyboard entry lasts.
    void getTouch(int x, int y);

    Widget* widgets; // any member of the page's list, or null. Walks move it, and leave it where they end.
    Keyboard keyboard;
    void (*onExit)();
    unsigned char showBack; // 0: drawn grayed, and without effect
    unsigned char showExit; // exit and home share a place: a page shows one or the other
    unsigned char showLanguage;
    unsigned char showHome;
    unsigned char showHomeGrayed; // drawn grayed, without effect
    void (*onBack)();
    void (*onLanguage)();
    void (*onHome)();
    unsigned char clearOnDraw; // clear the panel at the start of draw()
    wchar_t title[SCREEN_TITLE_LENGTH];
};

// The header's images, shared by all pages, and the indices of four of them.
extern OSTREL_API ImagePNG baseImages;
extern OSTREL_API unsigned char notLoaded; // 1 until the first titled page has loaded them
extern OSTREL_API int32_t backImagePng;
extern OSTREL_API int32_t backImagePressedPng;
extern OSTREL_API int32_t exitImagePng;
extern OSTREL_API int32_t exitImagePressedPng;

extern OSTREL_API unsigned char passUnset; // 1 until a page has been drawn

#endif
