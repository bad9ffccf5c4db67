#include "tests/e2e/settings/screen_places.h"

namespace {

class PinPage : public SettingsDesk {};
INSTANTIATE_TEST_SUITE_P(In, PinPage, testing::Values("english", "greek"), languageOf);

TEST_P(PinPage, TakesANewPinTwiceAndThenTheLock) {
    play(Story()
             .tap(SCREEN)
             .tap(CHANGE_PIN)
             .shot("pin")
             .tap(NEW_PIN)
             .dial("2580")
             .tap(KEYPAD_DONE)
             .shot("pin-once")
             .tap(REPEATED_PIN)
             .dial("2580")
             .tap(KEYPAD_DONE)
             .shot("pin-saved")
             .say(RESTARTED)
             .say("expect-setting 1 PIN 2580")
             .tap(LOCK)
             .tap(SCREEN_SAVE)
             .shot("pin-lock")
             .say("expect-setting 1 ScreenLock 1"));
    EXPECT_TRUE(shows("pin"));
    EXPECT_TRUE(shows("pin-once"));
    EXPECT_TRUE(shows("pin-saved"));
    EXPECT_TRUE(shows("pin-lock"));
    EXPECT_EQ(stored(), "set main PIN: ****\ncommit main\nset main ScreenLock: \"1\"\ncommit main\n");
    EXPECT_EQ(kept("main PIN"), "2580\n");
}

TEST_P(PinPage, AsksForTheCurrentPinFirst) {
    give("main PIN", "1357");
    play(Story()
             .tap(SCREEN)
             .tap(CHANGE_PIN)
             .shot("pin-current")
             .tap(NEW_PIN) // out of reach
             .tap(CURRENT_PIN)
             .dial("1357")
             .tap(KEYPAD_DONE)
             .shot("pin-allowed")
             .tap(NEW_PIN)
             .dial("2580")
             .tap(KEYPAD_DONE)
             .tap(REPEATED_PIN)
             .dial("2580")
             .tap(KEYPAD_DONE)
             .say(RESTARTED)
             .say("expect-setting 1 PIN 2580"));
    EXPECT_TRUE(shows("pin-current"));
    EXPECT_TRUE(shows("pin-allowed"));
    EXPECT_EQ(kept("main PIN"), "2580\n");
}

TEST_P(PinPage, RefusesAWrongCurrentPinAndLeadsBackAfterTheThird) {
    give("main PIN", "1357");
    play(Story()
             .tap(SCREEN)
             .shot("before")
             .tap(CHANGE_PIN)
             .tap(CURRENT_PIN)
             .dial("1358")
             .tap(KEYPAD_DONE)
             .shot("pin-wrong")
             .tap(ANYWHERE)
             .dial("135")
             .tap(KEYPAD_DONE)
             .tap(ANYWHERE)
             .dial("7531")
             .tap(KEYPAD_DONE)
             .shot("pin-too-often")
             .tap(ANYWHERE)
             .shot("after"));
    EXPECT_TRUE(shows("pin-wrong", MESSAGE_BOX));
    EXPECT_TRUE(shows("pin-too-often", MESSAGE_BOX));
    EXPECT_TRUE(matchesPicture(picture("after"), picture("before"), "settings-pin-given-up"));
    EXPECT_EQ(stored(), "");
}

TEST_P(PinPage, RefusesWhatIsNotFourDigitsAndTwoThatDiffer) {
    play(Story()
             .tap(SCREEN)
             .tap(CHANGE_PIN)
             .shot("before")
             .tap(NEW_PIN)
             .dial("258")
             .tap(KEYPAD_DONE)
             .shot("pin-four-digits")
             .tap(ANYWHERE)
             .dial("00") // one too many
             .tap(KEYPAD_DONE)
             .tap(ANYWHERE)
             .tap(KEYPAD_DELETE)
             .tap(KEYPAD_DONE)
             .tap(REPEATED_PIN)
             .dial("2581")
             .tap(KEYPAD_DONE)
             .shot("pin-different")
             .tap(ANYWHERE)
             .shot("after"));
    EXPECT_TRUE(shows("pin-four-digits", MESSAGE_BOX));
    EXPECT_TRUE(shows("pin-different", MESSAGE_BOX));
    EXPECT_TRUE(matchesPicture(picture("after"), picture("before"), "settings-pin-again"));
    EXPECT_EQ(stored(), "");
}

TEST_P(PinPage, StoresNothingWhenItIsCancelledAtAnyStep) {
    give("main PIN", "1357");
    Story story;
    story.tap(SCREEN);
    for (int step = 0; step < 3; ++step) {
        const Point fields[] = {CURRENT_PIN, NEW_PIN, REPEATED_PIN};
        const char* const pins[] = {"1357", "2580", "2580"};
        story.tap(CHANGE_PIN);
        for (int done = 0; done < step; ++done)
            story.tap(fields[done]).dial(pins[done]).tap(KEYPAD_DONE);
        story.tap(fields[step]).dial(pins[step]).tap(KEYPAD_BACK).shot("step-" + std::to_string(step)).tap(PAGE_BACK);
    }
    play(story.shot("after"));
    EXPECT_NE(picture("step-0"), picture("step-1"));
    EXPECT_NE(picture("step-1"), picture("step-2"));
    EXPECT_EQ(stored(), "");
    EXPECT_EQ(kept("main PIN"), "1357\n");
}

} // namespace
