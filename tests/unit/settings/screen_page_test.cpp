// The Screen page: what it stores, what it refuses, and what the idle counter does with it.
#include "apps/settings/idle.h"
#include "tests/unit/settings/pages_desk.h"

#include <cerrno>

namespace {

class ScreenPage : public PagesDesk {
  protected:
    ScreenPage() {
        locked = lockScreen = cntEn = 0;
        returnNext = blCnt = 0;
        setLockHandler(unlockPage);
        open();
    }
    ~ScreenPage() override {
        locked = lockScreen = cntEn = 0;
        returnNext = blCnt = 0;
        setLockHandler(nullptr);
    }

    static void open() {
        goHome();
        touch(82, 141);
        display().calls.clear();
    }
    static void choose30Seconds() { touch(58, 85); }
    static void choose30Minutes() { touch(160, 123); }
    static void chooseNever() { touch(262, 123); }
    static void toggleLock() { touch(160, 169); }
    static void touchSave() { touch(251, 215); }

    static void tick(int times) {
        for (int i = 0; i < times; ++i)
            slkHandle();
    }

    // The choices and the switch that are on, as the page draws them.
    static std::string chosen() {
        display().calls.clear();
        redrawPage();
        return callsWith({"selected 1"});
    }
};

TEST_F(ScreenPage, ShowsWhatIsStored) {
    fakeSettings().working[1]["ScreenLock"] = "1";
    fakeSettings().working[1]["PIN"] = "2580";
    open();
    EXPECT_EQ(
        chosen(), "drawWidget(type 3 at 212,67 100x36 selected 1 \"5 min\")\n"
                  "drawWidget(type 4 at 8,149 304x40 selected 1 \"Screen lock with PIN\")\n");
    fakeSettings().working[2]["ScreenTimeout"] = "90"; // from a shell
    fakeSettings().working[1]["ScreenLock"] = "0";
    open();
    EXPECT_EQ(chosen(), "");
    fakeSettings().working[2]["ScreenTimeout"] = "31536000";
    open();
    EXPECT_EQ(chosen(), "drawWidget(type 3 at 212,105 100x36 selected 1 \"Never\")\n");
}

TEST_F(ScreenPage, StoresTimeoutAndLockAsOneBatch) {
    fakeSettings().working[1]["PIN"] = "2580";
    open();
    choose30Minutes();
    toggleLock();
    EXPECT_EQ(stored(), "");
    touchSave();
    EXPECT_EQ(
        stored(), "ioctl(700, 0x1003, index 2, \"ScreenTimeout\", \"1800\")\n"
                  "ioctl(700, 0x1003, index 1, \"ScreenLock\", \"1\")\n"
                  "ioctl(700, 0x1004, index 1)\n"
                  "ioctl(700, 0x1004, index 2)\n" +
                      std::string(RESTART));
    EXPECT_EQ(&shownPage(), &screenPage);
    EXPECT_EQ(ScreenTime, 1800);
    EXPECT_EQ(cntEn, 1);
}

TEST_F(ScreenPage, StoresTheTimeoutAloneInItsSection) {
    choose30Seconds();
    touchSave();
    EXPECT_EQ(
        stored(), "ioctl(700, 0x1003, index 2, \"ScreenTimeout\", \"30\")\n"
                  "ioctl(700, 0x1004, index 2)\n" +
                      std::string(RESTART));
}

TEST_F(ScreenPage, HasNothingToSaveBeforeAChange) {
    touchSave();
    EXPECT_EQ(display().take(), "");
    choose30Seconds();
    touch(262, 85); // 5 min, as it is stored
    display().calls.clear();
    touchSave();
    EXPECT_EQ(display().take(), "");
}

TEST_F(ScreenPage, RefusesTheLockWithoutAPinOfFourDigits) {
    for (const char* const pin : {"", "258", "25800", "25a0"}) {
        fakeSettings().working[1]["PIN"] = pin;
        open();
        tapAwayNext();
        toggleLock();
        EXPECT_EQ(
            said(), "drawText(\"There is no PIN\", 130, 80, 130, 1, 0, 17, 65535, 1)\n"
                    "drawText(\"yet. Please\", 130, 100, 130, 1, 0, 17, 65535, 1)\n"
                    "drawText(\"choose one first.\", 130, 120, 130, 1, 0, 17, 65535, 1)\n")
            << pin;
        EXPECT_EQ(chosen(), "drawWidget(type 3 at 212,67 100x36 selected 1 \"5 min\")\n") << pin;
        touchSave();
        EXPECT_EQ(stored(), "") << pin;
    }
}

TEST_F(ScreenPage, ShowsTheRefusedLockSwitchedOffBesideTheMessage) {
    tapAwayNext();
    toggleLock();
    const std::string drawn = callsWith({"\"Screen lock with PIN\"", "\"There is no PIN\""});
    const size_t off = drawn.find("selected 0 \"Screen lock with PIN\"");
    EXPECT_LT(off, drawn.find("\"There is no PIN\"")) << drawn;
}

TEST_F(ScreenPage, RefusesALockThatWouldNeverBegin) {
    const std::string refusal = "drawText(\"A screen that\", 130, 80, 130, 1, 0, 17, 65535, 1)\n"
                                "drawText(\"never goes dark\", 130, 100, 130, 1, 0, 17, 65535, 1)\n"
                                "drawText(\"is never locked.\", 130, 120, 130, 1, 0, 17, 65535, 1)\n";
    fakeSettings().working[1]["PIN"] = "2580";
    fakeSettings().committed = fakeSettings().working;
    const std::vector<std::vector<void (*)()>> ways = {{toggleLock, chooseNever}, {chooseNever, toggleLock}};
    for (const std::vector<void (*)()>& way : ways) {
        open();
        for (void (*const step)() : way)
            step();
        display().calls.clear();
        tapAwayNext();
        touchSave();
        EXPECT_EQ(said(), refusal);
        EXPECT_EQ(fakeSettings().working, fakeSettings().committed);
        EXPECT_EQ(
            chosen(), "drawWidget(type 3 at 212,105 100x36 selected 1 \"Never\")\n"
                      "drawWidget(type 4 at 8,149 304x40 selected 1 \"Screen lock with PIN\")\n");
    }
    choose30Seconds();
    touchSave();
    EXPECT_EQ(fakeSettings().committed[1]["ScreenLock"], "1");
    EXPECT_EQ(fakeSettings().committed[2]["ScreenTimeout"], "30");
    chooseNever();
    toggleLock();
    touchSave();
    EXPECT_EQ(fakeSettings().committed[1]["ScreenLock"], "0");
    EXPECT_EQ(fakeSettings().committed[2]["ScreenTimeout"], "31536000");
}

TEST_F(ScreenPage, RefusesTheLockWhereNobodyWouldDrawThePageAgain) {
    fakeSettings().working[1]["PIN"] = "2580";
    open();
    setLockHandler(nullptr);
    tapAwayNext();
    toggleLock();
    EXPECT_NE(said().find("\"The screen lock\""), std::string::npos);
    EXPECT_EQ(chosen().find("Screen lock"), std::string::npos);
}

TEST_F(ScreenPage, LetsTheLockBeSwitchedOffInAnyCase) {
    fakeSettings().working[1]["ScreenLock"] = "1";
    fakeSettings().working[1]["PIN"] = "";
    setLockHandler(nullptr);
    open();
    toggleLock();
    touchSave();
    EXPECT_EQ(fakeSettings().committed[1]["ScreenLock"], "0");
}

TEST_F(ScreenPage, AsksBeforeChangesAreLostAndStoresNothing) {
    chooseNever();
    touch(27, 22); // back
    EXPECT_EQ(&shownPage(), &confirmPage);
    touch(160, 163); // discard
    EXPECT_EQ(&shownPage(), &homePage);
    open();
    EXPECT_EQ(chosen(), "drawWidget(type 3 at 212,67 100x36 selected 1 \"5 min\")\n");
    EXPECT_EQ(stored(), "");
}

TEST_F(ScreenPage, SaysWhenTheRouterCouldNotSaveAndKeepsTheChange) {
    chooseNever();
    fakeSettings().refusal = EIO;
    display().calls.clear();
    tapAwayNext();
    touchSave();
    EXPECT_NE(said().find("\"The router could\""), std::string::npos);
    fakeSettings().refusal = 0;
    touchSave();
    EXPECT_EQ(fakeSettings().committed[2]["ScreenTimeout"], "31536000");
}

TEST_F(ScreenPage, NeverStaysLit) {
    chooseNever();
    touchSave();
    EXPECT_EQ(cntEn, 0);
    tick(20'000'000); // six days
    EXPECT_EQ(locked, 0);
    // Nor do programs darken that arm the counter without asking.
    cntEn = 1;
    tick(20'000'000);
    EXPECT_EQ(locked, 0);
}

TEST_F(ScreenPage, DarkensAndLocksAfterTheStoredTimeAndComesBackToThePage) {
    fakeSettings().working[1]["PIN"] = "2580";
    open();
    choose30Seconds();
    toggleLock();
    touchSave();
    tick(30 * 36);
    EXPECT_EQ(locked, 0);
    tick(1);
    EXPECT_EQ(locked, 1);
    EXPECT_EQ(lockScreen, 1);
    touch(160, 120); // wakes
    touch(160, 120); // and two are swallowed
    touch(160, 120);
    EXPECT_EQ(locked, 0);
    display().calls.clear();
    for (const auto& key : {std::pair{117, 116}, {117, 163}, {117, 210}, {40, 116}}) // 2 5 8 1
        touch(key.first, key.second);
    EXPECT_EQ(lockScreen, 1);
    touch(274, 116); // Del
    touch(274, 163); // 0
    EXPECT_EQ(lockScreen, 0);
    EXPECT_NE(callsWith({"drawFontBigWhiteString"}).find("\"Screen\""), std::string::npos);
    EXPECT_EQ(&shownPage(), &screenPage);
}

TEST_F(ScreenPage, IsNotWrittenToWithoutASettingsDriver) {
    fakeSettings().refusal = ENODEV;
    open();
    EXPECT_EQ(chosen(), "");
    tapAwayNext();
    toggleLock(); // no PIN
    chooseNever();
    tapAwayNext();
    touchSave();
    EXPECT_NE(said().find("\"The router could\""), std::string::npos);
    EXPECT_EQ(&shownPage(), &screenPage);
}

TEST_F(ScreenPage, ArmsTheIdleCounterAsTheStoredTimeoutSays) {
    const std::pair<const char*, int> timeouts[] = {
        {"30", 1},       {"1", 1},        {"31535999", 1}, {"0", 0}, {"-5", 0},
        {"31536000", 0}, {"31536001", 0}, {"", 0},         {"x", 0}, {"99999999999999999999", 0},
    };
    for (const auto& [stored, armed] : timeouts) {
        fakeSettings().working[2]["ScreenTimeout"] = stored;
        followTimeout();
        EXPECT_EQ(cntEn, armed) << stored;
    }
}

} // namespace
