#include "tests/unit/lock_desk.h"

#include <climits>
#include <gtest/gtest.h>

namespace {

void tick(int times = 1) {
    for (int i = 0; i < times; ++i)
        slkHandle();
}

TEST(Inactivity, WithTheCounterLeftOffThePanelNeverGoesDark) {
    LockDesk desk;
    ScreenTime = 1;
    tick(1000);
    EXPECT_EQ(desk.take(), "");
    EXPECT_EQ(blCnt, 0);
    EXPECT_FALSE(isLocked());
}

TEST(Inactivity, DarkensAtThirtySixTicksForEachUnitOfTheTimeout) {
    LockDesk desk;
    cntEn = 1;
    ScreenTime = 2;
    tick(72);
    EXPECT_EQ(desk.take(), "");
    EXPECT_EQ(blCnt, 72);
    EXPECT_FALSE(isLocked());

    tick();
    EXPECT_EQ(desk.take(), "turnOff()\n" + readOf("ScreenLock"));
    EXPECT_TRUE(isLocked());
    EXPECT_FALSE(isLockScreen());
    EXPECT_EQ(blCnt, 72) << "the tick that darkens does not count";
}

TEST(Inactivity, AnyNonzeroMasterSwitchArmsTheCounter) {
    LockDesk desk;
    cntEn = 255;
    ScreenTime = 1;
    tick(3);
    EXPECT_EQ(blCnt, 3);
}

TEST(Inactivity, DrawsThePadOnTheDarkPanelWhenTheUserEnabledIt) {
    LockDesk desk;
    desk.set("ScreenLock", "1");
    cntEn = 1;
    tick();
    const std::string log = desk.take();
    EXPECT_EQ(
        log.rfind("turnOff()\n" + readOf("ScreenLock") + "lcd_clear(0)\ndrawRect(100, 30, 130, 65, 65535)\n", 0), 0U)
        << log;
    EXPECT_TRUE(isLocked());
    EXPECT_TRUE(isLockScreen());
}

TEST(Inactivity, OnlyTheFirstCharacterOfScreenLockCounts) {
    const struct {
        const char* value;
        bool pad;
    } cases[] = {{"1", true}, {"10", true},  {"1 yes", true}, {"0", false},
                 {"", false}, {"01", false}, {" 1", false},   {"yes", false}};
    for (const auto& one : cases) {
        LockDesk desk;
        desk.set("ScreenLock", one.value);
        cntEn = 1;
        tick();
        EXPECT_TRUE(isLocked());
        EXPECT_EQ(isLockScreen(), one.pad) << '"' << one.value << '"';
    }
}

TEST(Inactivity, AScreenLockValueOfAnyLengthIsSafe) {
    LockDesk desk;
    desk.set("ScreenLock", '1' + std::string(1022, 'x'));
    cntEn = 1;
    tick();
    EXPECT_TRUE(isLockScreen());
}

TEST(Inactivity, AMissingSettingsDeviceOnlyDarkens) {
    LockDesk desk;
    fakeSettings().refusal = 5;
    cntEn = 1;
    tick();
    EXPECT_TRUE(isLocked());
    EXPECT_FALSE(isLockScreen());
}

TEST(Inactivity, ATimeoutOfZeroOrLessDarkensAtTheFirstTickAndAgainAfterEveryWakeUp) {
    for (const int32_t timeout : {0, -1, -1000}) {
        LockDesk desk;
        cntEn = 1;
        ScreenTime = timeout;
        for (int wakeUp = 0; wakeUp < 3; ++wakeUp) {
            tick();
            EXPECT_EQ(desk.take(), "turnOff()\n" + readOf("ScreenLock"));
            EXPECT_TRUE(isLocked());
            tick();
            EXPECT_EQ(desk.take(), "") << "dark stays dark";
            locked = 0;
            blCnt = 0;
        }
    }
}

TEST(Inactivity, AHugeTimeoutWrapsInThirtyTwoBits) {
    const struct {
        int32_t timeout;
        bool darkens; // at the first tick
    } cases[] = {
        {59652323, false},  // 36 times that is 2147483628, the last that fits
        {59652324, true},   // wraps to a negative number
        {119304647, true},  // wraps to -4
        {119304648, false}, // wraps to 32
        {INT_MAX, true},    // wraps to -36
        {INT_MIN, true},    // wraps to 0
    };
    for (const auto& one : cases) {
        LockDesk desk;
        cntEn = 1;
        ScreenTime = one.timeout;
        tick();
        EXPECT_EQ(isLocked(), one.darkens) << one.timeout;
    }
}

TEST(Inactivity, TheCounterStopsWhileThePadIsLit) {
    LockDesk desk;
    cntEn = 1;
    ScreenTime = 1;
    lockScreen = 1;
    tick(1000);
    EXPECT_EQ(blCnt, 0);
    EXPECT_EQ(desk.take(), "");
    EXPECT_FALSE(isLocked());
}

TEST(Inactivity, TheCounterStopsWhileThePanelIsDark) {
    LockDesk desk;
    cntEn = 1;
    ScreenTime = 1;
    locked = 1;
    blCnt = 5;
    tick(1000);
    EXPECT_EQ(blCnt, 5);
    EXPECT_EQ(desk.take(), "");
}

TEST(Inactivity, AFlagThatIsSetButNotOneDoesNotHoldTheCounterOrTheDarkening) {
    LockDesk desk;
    cntEn = 1;
    ScreenTime = 1;
    locked = 2;
    lockScreen = 2;
    tick(36);
    EXPECT_EQ(blCnt, 36);
    EXPECT_TRUE(isLocked());
    EXPECT_TRUE(isLockScreen());
    tick();
    EXPECT_EQ(desk.take(), "turnOff()\n" + readOf("ScreenLock"));
    EXPECT_EQ(locked, 1);
}

TEST(Inactivity, APadUnderANonPositiveTimeoutIsDrawnAfreshAtTheNextTick) {
    LockDesk desk;
    desk.set("ScreenLock", "1");
    cntEn = 1;
    lockScreen = 1;
    lockPassCnt = 3;
    tick();
    EXPECT_TRUE(isLocked());
    EXPECT_TRUE(isLockScreen());
    EXPECT_EQ(lockPassCnt, 0) << "the typed digits are gone";
}

TEST(Inactivity, ANullHandlerIsStoredLikeAnyOther) {
    LockDesk desk;
    setLockHandler(nullptr);
    EXPECT_EQ(lockHandler, nullptr);
}

} // namespace
