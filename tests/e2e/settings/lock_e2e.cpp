// The panel goes dark, and only the PIN that the pages have stored lights the page again.
#include "tests/e2e/settings/screen_places.h"

namespace {

constexpr Point WIFI = {82, 77};
constexpr Point WIFI_NAME = {210, 63};
constexpr const char* SECONDS = "10"; // long enough for a picture of a page on a busy machine

// Keys of the PIN pad.
constexpr Point PAD_1 = {40, 116};
constexpr Point PAD_2 = {117, 116};
constexpr Point PAD_5 = {117, 163};
constexpr Point PAD_8 = {117, 210};
constexpr Point PAD_DELETE = {274, 116};
constexpr Point PAD_0 = {274, 163};

class LockedPanel : public SettingsDesk {
  protected:
    LockedPanel() {
        play(Story()
                 .tap(SCREEN)
                 .tap(CHANGE_PIN)
                 .tap(NEW_PIN)
                 .dial("2580")
                 .tap(KEYPAD_DONE)
                 .tap(REPEATED_PIN)
                 .dial("2580")
                 .tap(KEYPAD_DONE)
                 .tap(LOCK)
                 .tap(SCREEN_SAVE)
                 .say("expect-setting 1 ScreenLock 1")
                 .say(RESTARTED));
        give("rtdev ScreenTimeout", SECONDS);
    }

    // One touch wakes the panel, two more are swallowed.
    static Story& wake(Story& story) { return story.say("expect-dark").tap({160, 120}, 3); }
    static Story& unlock(Story& story) { return story.tap(PAD_2).tap(PAD_5).tap(PAD_8).tap(PAD_0); }
};
INSTANTIATE_TEST_SUITE_P(In, LockedPanel, testing::Values("english", "greek"), languageOf);

TEST_P(LockedPanel, TakesTheStoredPinAloneAndShowsThePageAgain) {
    Story story;
    story.tap(SCREEN).shot("before");
    wake(story).shot("pad").tap(PAD_2).tap(PAD_5).tap(PAD_8).tap(PAD_1).tap({160, 50}).shot("wrong").tap(PAD_DELETE);
    play(story.tap(PAD_0).shot("after").tap(CHANGE_PIN).shot("works"));
    EXPECT_TRUE(matchesTextGolden(picture("pad"), "run-lock-pad"));
    EXPECT_NE(picture("wrong"), picture("pad"));
    EXPECT_NE(picture("wrong"), picture("before"));
    EXPECT_TRUE(matchesPicture(picture("after"), picture("before"), "settings-unlocked"));
    EXPECT_NE(picture("works"), picture("after"));
}

TEST_P(LockedPanel, HasCancelledTheEntryThatItCameOver) {
    Story story;
    story.tap(WIFI).shot("before").tap(WIFI_NAME).shot("entry");
    wake(story);
    play(unlock(story).shot("after").tap(PAGE_BACK).tap(SCREEN).shot("works"));
    EXPECT_NE(picture("entry"), picture("before"));
    EXPECT_TRUE(matchesPicture(picture("after"), picture("before"), "settings-entry-cancelled"));
    EXPECT_NE(picture("works"), picture("after"));
}

} // namespace
