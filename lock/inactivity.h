// Inactivity: after a time without touches the panel goes dark and, when the user has enabled it, the PIN pad comes
// up in front of the program.
//
// The idle counter is off until the program sets `cntEn`. Every page's draw() loads the timeout and restarts the
// counter; every touch that a page dispatches restarts it. "Never" is a cleared `cntEn`, not a timeout of 0: a timeout
// of 0 or less darkens the panel at the next tick.
//
// The state is plain variables, which programs may read and write. Not for use from several threads.
#ifndef OSTREL_LOCK_INACTIVITY_H
#define OSTREL_LOCK_INACTIVITY_H

#include "util/api.h"

#include <cstdint>

extern OSTREL_API int32_t ScreenTime;       // idle timeout in units of 36 ticks, that is seconds; from "ScreenTimeout"
extern OSTREL_API int32_t blCnt;            // ticks since the last touch
extern OSTREL_API unsigned char locked;     // 1 while the panel is dark after the timeout
extern OSTREL_API unsigned char lockScreen; // 1 while the PIN pad is up and owns all touches
extern OSTREL_API unsigned char lockReturn; // kept for programs
extern OSTREL_API int32_t returnNext;       // touches still to be swallowed after a wake-up
extern OSTREL_API unsigned char cntEn;      // nonzero: the idle counter counts. Only the program sets it.

// Called after the right PIN, when the pad has been cleared: the program draws its page again. Called without a null
// test: register one before the user can enable "ScreenLock".
extern OSTREL_API void (*lockHandler)();

// Stores the handler, a null pointer like any other.
OSTREL_API void setLockHandler(void (*handler)());

// The idle tick. The display library calls it 36 times a second while the program waits for a touch; every titled page
// registers it. At the timeout it switches the panel off and sets `locked`; when the setting "ScreenLock" begins with
// '1' it then clears the panel, draws the PIN pad on it and sets `lockScreen`. It does not count while the panel is
// dark or the pad is up.
OSTREL_API void slkHandle();

OSTREL_API bool isLocked();
OSTREL_API bool isLockScreen();

#endif
