// A router without a panel for the lock's tests: a recording display, a settings driver, sleeps that pass at once, all
// in one log, and the lock as it is when the library has just been loaded.
#ifndef OSTREL_TESTS_UNIT_LOCK_DESK_H
#define OSTREL_TESTS_UNIT_LOCK_DESK_H

#include "lock/inactivity.h"
#include "lock/pin_pad.h"
#include "tests/support/call_log.h"
#include "tests/support/fake_settings.h"
#include "tests/support/fake_sleep.h"
#include "tests/support/recording_display.h"

#include <cstring>

struct LockDesk {
    LockDesk() {
        display() = {};
        restartFakeSettings();
        callLog().shareWith(&display().calls);
        fakeSleep() = {};
        ScreenTime = 0;
        blCnt = 0;
        locked = 0;
        lockScreen = 0;
        returnNext = 0;
        cntEn = 0;
        lockPassCnt = 0;
        memset(lockPass, 0, sizeof lockPass);
        setLockHandler([] { display().calls.emplace_back("lockHandler()"); });
    }
    ~LockDesk() {
        callLog() = {};
        display() = {};
    }
    LockDesk(const LockDesk&) = delete;
    LockDesk& operator=(const LockDesk&) = delete;

    // One setting of the main section.
    void set(const std::string& name, const std::string& value) { fakeSettings().working[1][name] = value; }

    std::string take() { return display().take(); }
};

// The log of reading one setting of the main section.
inline std::string readOf(const std::string& name) {
    return "open(\"/dev/apsoc_nvram\", O_RDONLY) = 700\nioctl(700, 0x1001, index 1, \"" + name + "\")\nclose(700)\n";
}

#endif
