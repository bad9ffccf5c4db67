#include "tests/e2e/settings/settings_desk.h"

namespace {

constexpr Point WIFI = {82, 77};
constexpr Point NAME = {210, 63};
constexpr Point OPEN = {60, 101};
constexpr Point WPA3 = {266, 101};
constexpr Point PASSWORD = {210, 139};
constexpr Point SHOW = {160, 177};

class WifiPage : public SettingsDesk {};
INSTANTIATE_TEST_SUITE_P(In, WifiPage, testing::Values("english", "greek"), languageOf);

TEST_P(WifiPage, StoresWhatWasChangedAsOneBatch) {
    play(Story()
             .tap(WIFI)
             .shot("wifi")
             .tap(NAME)
             .tap(DELETE, 6)
             .type("home 24")
             .tap(DONE)
             .tap(WPA3)
             .tap(PASSWORD)
             .tap(DELETE, 14)
             .type("correct horse")
             .tap(DONE)
             .tap(SHOW)
             .shot("wifi-changed")
             .tap(SAVE)
             .shot("wifi-saved")
             .say(RESTARTED)
             .say("expect-setting 1 WifiPassword correct horse")
             .tap(PAGE_BACK));
    EXPECT_TRUE(shows("wifi"));
    EXPECT_TRUE(shows("wifi-changed"));
    EXPECT_TRUE(shows("wifi-saved"));
    EXPECT_EQ(
        stored(), "set main WifiName: \"home 24\"\n"
                  "set main WifiPassword: ****\n"
                  "set main WifiSecurity: \"wpa3\"\n"
                  "set rtdev ShowPass: \"1\"\n"
                  "commit main\n"
                  "commit rtdev\n");
    EXPECT_EQ(kept("main WifiName"), "home 24\n");
    EXPECT_EQ(kept("main WifiPassword"), "correct horse\n");
    EXPECT_EQ(kept("main WifiSecurity"), "wpa3\n");
    EXPECT_EQ(kept("rtdev ShowPass"), "1\n");
}

TEST_P(WifiPage, NeedsNoPasswordForAnOpenNetwork) {
    play(Story()
             .tap(WIFI)
             .tap(OPEN)
             .shot("wifi-open")
             .tap(PASSWORD) // out of reach
             .tap(SAVE)
             .say(RESTARTED));
    EXPECT_TRUE(shows("wifi-open"));
    EXPECT_EQ(stored(), "set main WifiSecurity: \"open\"\ncommit main\n");
}

TEST_P(WifiPage, RefusesNamesThatNoNetworkCanHave) {
    give("main WifiName", "αβγδεζηθικλμνξο"); // 30 bytes
    play(Story()
             .tap(WIFI)
             .tap(NAME)
             .type("abc")
             .tap(DONE)
             .shot("wifi-name-long")
             .tap(ANYWHERE)
             .tap(DELETE, 18)
             .tap(DONE)
             .shot("wifi-name-empty")
             .tap(ANYWHERE)
             .type("abcdefghijklmnopqrstuvwxyz1234567") // 33
             .tap(DONE)
             .shot("wifi-name-33")
             .tap(ANYWHERE)
             .tap(DELETE)
             .tap(DONE)
             .tap(SAVE)
             .say(RESTARTED));
    EXPECT_TRUE(shows("wifi-name-long", MESSAGE_BOX));
    EXPECT_TRUE(shows("wifi-name-empty", MESSAGE_BOX));
    EXPECT_TRUE(shows("wifi-name-33", MESSAGE_BOX));
    EXPECT_EQ(stored(), "set main WifiName: \"abcdefghijklmnopqrstuvwxyz123456\"\ncommit main\n");
}

TEST_P(WifiPage, RefusesAPasswordThatIsTooShortInItsEntry) {
    play(Story()
             .tap(WIFI)
             .tap(PASSWORD)
             .tap(DELETE, 7)
             .tap(DONE)
             .shot("wifi-password-7")
             .tap(ANYWHERE)
             .type("x")
             .tap(DONE)
             .tap(SAVE)
             .say(RESTARTED)
             .say("expect-setting 1 WifiPassword change-x"));
    EXPECT_TRUE(shows("wifi-password-7", MESSAGE_BOX));
    EXPECT_EQ(stored(), "set main WifiPassword: ****\ncommit main\n");
}

TEST_P(WifiPage, RefusesWpaWithoutAPasswordThatItTakes) {
    give("main WifiSecurity", "open");
    give("main WifiPassword", "1234567");
    play(Story().tap(WIFI).tap(WPA3).tap(SAVE).shot("wifi-short").tap(ANYWHERE).shot("wifi-short-after"));
    EXPECT_TRUE(shows("wifi-short", MESSAGE_BOX));
    EXPECT_TRUE(shows("wifi-short-after"));
    EXPECT_EQ(stored(), "");
    give("main WifiPassword", std::string(64, 'x'));
    play(Story().tap(WIFI).tap(WPA3).tap(SAVE).shot("wifi-long"));
    EXPECT_TRUE(shows("wifi-long", MESSAGE_BOX));
    EXPECT_EQ(stored(), "");
    give("main WifiPassword", "contraseña");
    play(Story().tap(WIFI).tap(WPA3).tap(SAVE).shot("wifi-signs"));
    EXPECT_TRUE(shows("wifi-signs", MESSAGE_BOX));
    EXPECT_EQ(stored(), "");
}

TEST_P(WifiPage, LeavesTheStoreAloneWhenItsUserChangesNothingInTheEnd) {
    play(Story()
             .tap(WIFI)
             .shot("before")
             .tap(NAME)
             .type("x")
             .tap(BACK) // of the keyboard
             .shot("cancelled")
             .tap(SAVE) // out of reach
             .tap(WPA3)
             .tap(PAGE_BACK)
             .shot("unsaved")
             .tap(KEEP_EDITING)
             .shot("kept")
             .tap(PAGE_HOME)
             .tap(DISCARD)
             .tap(WIFI)
             .shot("again")
             .tap(PAGE_BACK)
             .tap(WIFI)); // nobody asked
    EXPECT_TRUE(matchesPicture(picture("cancelled"), picture("before"), "settings-cancelled"));
    EXPECT_TRUE(shows("unsaved"));
    EXPECT_NE(picture("kept"), picture("before"));
    EXPECT_TRUE(matchesPicture(picture("again"), picture("before"), "settings-discarded"));
    EXPECT_EQ(stored(), "");
    EXPECT_EQ(kept("main WifiSecurity"), "wpa2\n");
}

} // namespace
