#include "tests/e2e/settings/screen_places.h"

namespace {

class ScreenPage : public SettingsDesk {};
INSTANTIATE_TEST_SUITE_P(In, ScreenPage, testing::Values("english", "greek"), languageOf);

TEST_P(ScreenPage, StoresTimeoutAndLockAsOneBatch) {
    give("main PIN", "2580");
    play(Story()
             .tap(SCREEN)
             .shot("screen-stored")
             .tap(HALF_AN_HOUR)
             .tap(LOCK)
             .shot("screen-changed")
             .tap(SCREEN_SAVE)
             .shot("screen-saved")
             .say(RESTARTED)
             .say("expect-setting 2 ScreenTimeout 1800")
             .tap(PAGE_BACK));
    EXPECT_TRUE(shows("screen-stored"));
    EXPECT_TRUE(shows("screen-changed"));
    EXPECT_TRUE(shows("screen-saved"));
    EXPECT_EQ(
        stored(), "set rtdev ScreenTimeout: \"1800\"\n"
                  "set main ScreenLock: \"1\"\n"
                  "commit main\n"
                  "commit rtdev\n");
    EXPECT_EQ(kept("main ScreenLock"), "1\n");
    EXPECT_EQ(kept("rtdev ScreenTimeout"), "1800\n");
}

TEST_P(ScreenPage, StoresNeverAsAYear) {
    play(Story().tap(SCREEN).tap(NEVER).tap(SCREEN_SAVE).shot("screen-never").say(RESTARTED));
    EXPECT_TRUE(shows("screen-never"));
    EXPECT_EQ(stored(), "set rtdev ScreenTimeout: \"31536000\"\ncommit rtdev\n");
}

TEST_P(ScreenPage, RefusesTheLockWithoutAPin) {
    play(Story()
             .tap(SCREEN)
             .shot("before")
             .tap(LOCK)
             .shot("screen-no-pin")
             .tap(ANYWHERE)
             .shot("after")
             .tap(SCREEN_SAVE)); // out of reach
    EXPECT_TRUE(shows("screen-no-pin", MESSAGE_BOX));
    EXPECT_TRUE(matchesPicture(picture("after"), picture("before"), "settings-no-lock"));
    EXPECT_EQ(stored(), "");
}

TEST_P(ScreenPage, LeavesTheStoreAloneWhenChangesAreDiscarded) {
    play(Story()
             .tap(SCREEN)
             .shot("before")
             .tap(NEVER)
             .tap(PAGE_BACK)
             .tap(KEEP_EDITING)
             .shot("kept")
             .tap(PAGE_HOME)
             .tap(DISCARD)
             .tap(SCREEN)
             .shot("again"));
    EXPECT_NE(picture("kept"), picture("before"));
    EXPECT_TRUE(matchesPicture(picture("again"), picture("before"), "settings-screen-discarded"));
    EXPECT_EQ(stored(), "");
}

} // namespace
