#include "lock/inactivity.h"

#include "gui/display.h"
#include "lock/pin_pad.h"
#include "settings/memory.h"

int32_t ScreenTime;
int32_t blCnt;
unsigned char locked;
unsigned char lockScreen;
unsigned char lockReturn;
int32_t returnNext;
unsigned char cntEn;
void (*lockHandler)();

void setLockHandler(void (*handler)()) {
    lockHandler = handler;
}

bool isLocked() {
    return locked != 0;
}

bool isLockScreen() {
    return lockScreen != 0;
}

namespace {

// The product wraps in 32 bits: a huge timeout may come out negative, and then darkens at once.
int32_t thresholdTicks() {
    return static_cast<int32_t>(static_cast<uint32_t>(ScreenTime) * 36U);
}

bool isScreenLockEnabled() {
    char value[NVRAM_TEXT_LENGTH] = "";
    Memory settings;
    settings.getSetting("ScreenLock", value);
    return value[0] == '1';
}

} // namespace

void slkHandle() {
    if (cntEn == 0)
        return;
    if (blCnt >= thresholdTicks() && locked != 1) {
        turnOff();
        locked = 1;
        if (isScreenLockEnabled()) {
            // Drawn while the panel is dark: it is there already when the panel lights again.
            lcd_clear(0);
            draw_screenLock();
            lockScreen = 1;
        }
        return;
    }
    if (lockScreen != 1 && locked != 1)
        ++blCnt;
}
