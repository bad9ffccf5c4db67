// The PIN pad: twelve keys and four boxes that stand in front of the program until the user's PIN, the setting "PIN",
// has been typed. The idle tick draws it and a page's dispatcher hands it the touches while `lockScreen` is set;
// programs rarely call it themselves.
#ifndef OSTREL_LOCK_PIN_PAD_H
#define OSTREL_LOCK_PIN_PAD_H

#include "gui/display.h"

extern OSTREL_API char lockPass[5];    // the typed digits; stale behind them until the next comparison
extern OSTREL_API int32_t lockPassCnt; // how many are typed, 0 to 4

// The keys, filled each time the pad is drawn, and their touch areas.
extern OSTREL_API WidgetRecord screenLockKeyboard_button0, screenLockKeyboard_button1, screenLockKeyboard_button2,
    screenLockKeyboard_button3, screenLockKeyboard_button4, screenLockKeyboard_button5, screenLockKeyboard_button6,
    screenLockKeyboard_button7, screenLockKeyboard_button8, screenLockKeyboard_button9, screenLockKeyboard_buttonDone,
    screenLockKeyboard_buttonDel;
extern OSTREL_API TouchArea tA_screenLockKeyboard_button0, tA_screenLockKeyboard_button1, tA_screenLockKeyboard_button2,
    tA_screenLockKeyboard_button3, tA_screenLockKeyboard_button4, tA_screenLockKeyboard_button5,
    tA_screenLockKeyboard_button6, tA_screenLockKeyboard_button7, tA_screenLockKeyboard_button8,
    tA_screenLockKeyboard_button9, tA_screenLockKeyboard_buttonDone, tA_screenLockKeyboard_buttonDel;

// Draws the pad on whatever is on the panel and starts a new entry. Clear the panel first.
OSTREL_API void draw_screenLock();

// Handles one touch. A key shows its pressed look while the pen stays on it and acts when the pen leaves it: a digit is
// shown and stored while fewer than four are typed, Del takes the last one back, Done compares what is typed with the
// PIN. With four digits typed every touch compares. On a match `lockScreen` is cleared, the panel is cleared and
// `lockHandler` is called, which must be set. A wrong PIN changes nothing. A stroke that slides onto a key later in
// the order 1 to 9, Done, 0, Del works that key as well.
OSTREL_API void get_screenLock_touch(int x, int y);

#endif
