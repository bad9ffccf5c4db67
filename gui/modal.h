// Modal: a message box over the page, boxed with three lines or full screen with up to five, that waits for some
// seconds or for a tap; and a progress bar under a notice.
#ifndef OSTREL_GUI_MODAL_H
#define OSTREL_GUI_MODAL_H

#include "gui/display.h"

// Characters of a line, its terminator included.
enum : int { MODAL_LINE_LENGTH = 64 };

// What kinds of message there are; the number is also the icon's index in modalImages.
//
//     0  boxed, the dialog frame itself as icon (merely possible; it is the frame that drawTimed draws)
//     1  boxed, information
//     2  boxed, critical
//     3  full screen, blue: information
//     4  full screen, red: critical
//
// Any other number is boxed and has no icon.
//
// Everything is drawn at once and blocks the caller for as long as it says; a message does not erase itself: what is
// under it is drawn again by the caller, for instance in `onClose`. Texts are copied and cut at 63 characters; a null
// text is an empty one. Not for use from several threads.
class OSTREL_API Modal {
  public:
    // The first one of the process loads the icons from /ostrel. All lines are empty, the type is 0. `onClose` stays
    // as storage holds it.
    Modal();
    ~Modal(); // leaves the panel as it is

    // Sets the first line and empties the others: call it before theirs.
    void setLine1(wchar_t* text);
    void setLine1(const wchar_t* text) { setLine1(const_cast<wchar_t*>(text)); }

    // Each sets its own line only.
    void setLine2(wchar_t* text);
    void setLine2(const wchar_t* text) { setLine2(const_cast<wchar_t*>(text)); }
    void setLine3(wchar_t* text);
    void setLine3(const wchar_t* text) { setLine3(const_cast<wchar_t*>(text)); }
    void setLine4(wchar_t* text);
    void setLine4(const wchar_t* text) { setLine4(const_cast<wchar_t*>(text)); }
    void setLine5(wchar_t* text);
    void setLine5(const wchar_t* text) { setLine5(const_cast<wchar_t*>(text)); }

    // Draws the message, waits `seconds` seconds (0: not at all; negative: until the panel has been tapped, anywhere),
    // and then calls `onClose`, which must be set. Boxed kinds show lines 1 to 3, full-screen ones all five.
    void draw(int type, int seconds);

    // Draws the message and returns at once; `onClose` is not called. Shows lines 1 to 3, higher than draw does, so
    // that time() has room below.
    void drawTimed(int type);

    // Fills a progress bar under the message drawn last, a step a second, and returns after `seconds` seconds; 0 or
    // less: draws the empty bar only. Touch is disabled meanwhile: what is tapped is lost.
    void time(int seconds);

    void (*onClose)(); // called at the end of draw; the owner sets it (doNothing where there is nothing to do)
    wchar_t line1[MODAL_LINE_LENGTH];
    wchar_t line2[MODAL_LINE_LENGTH];
    wchar_t line3[MODAL_LINE_LENGTH];
    wchar_t line4[MODAL_LINE_LENGTH];
    wchar_t line5[MODAL_LINE_LENGTH];
    int32_t type; // of the message drawn last
};

// Does nothing: the `onClose` of a message whose closing needs no action.
OSTREL_API void doNothing();

// The icons, loaded by the first Modal of the process, and whether they are: 1.
extern OSTREL_API ImagePNG modalImages;
extern OSTREL_API unsigned char modalImagesLoaded;

#endif
