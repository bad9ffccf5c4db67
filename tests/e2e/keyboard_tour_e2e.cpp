// The keyboard tour in the simulator, touched as people do: every kind of entry, what it stores, and every message box.
#include "tests/e2e/simulator_run.h"
#include "tests/e2e/story.h"
#include "tests/support/staged_fonts.h"

#include <gtest/gtest.h>

using ostrel::Rect;

namespace {

constexpr Rect WHOLE = {0, 0, 320, 240};
constexpr Rect TEXT_BOX = {40, 10, 320, 54};

// Middles of what is touched.
enum { NETWORK_NAME, DARK_AFTER, ADDRESS, WEB_PAGE, PIN, MESSAGES };
constexpr Point ROWS[] = {{160, 61}, {160, 93}, {160, 125}, {160, 157}, {160, 189}, {160, 221}};
constexpr Point EXIT = {67, 22};

class KeyboardTour : public testing::Test {
  protected:
    void play(const Story& story, const std::string& options = "--speed 50") {
        desk.write("script", story.text);
        const Told told = desk.run(
            "--headless --script script " + options + " '" OSTREL_TOUR "'", "OSTREL_ASSETS='" OSTREL_STAGED "'");
        EXPECT_EQ(told.status, 0) << told.errors;
        EXPECT_EQ(told.errors, "");
    }

    std::string setting(const std::string& section, const std::string& name) {
        return desk.nvram("get " + section + " " + name).output;
    }

    void give(const std::string& section, const std::string& name, const std::string& value) {
        EXPECT_EQ(desk.nvram("set " + section + " " + name + " '" + value + "'").status, 0);
    }

    Picture picture(const std::string& name, const Rect& area) {
        const Picture whole = readPicture(desk.file(name + ".png"));
        return whole.width == 320 ? cut(whole, area) : Picture();
    }

    std::string log() { return contentOf(desk.file("state/log")); }

    Desk desk;
};

TEST_F(KeyboardTour, EditsASettingSavesItAndRestartsTheServices) {
    play(Story()
             .shot("entries")
             .tap(ROWS[NETWORK_NAME])
             .shot("opened")
             .tap(DELETE, 6)
             .tap(CASE)
             .type("h")
             .tap(CASE)
             .type("ome 24")
             .shot("typed")
             .tap(SWITCH)
             .tap({265, 99}) // &
             .tap(SWITCH)
             .shot("typed-more")
             .tap(DONE)
             .shot("stored")
             .say("expect-log command killall nvram_daemon")
             .say("expect-log command init_system restart") // goes on in the background
             .tap(EXIT)
             .say("exit-code 0"));
    EXPECT_TRUE(matchesTextGolden(picture("entries", WHOLE), "tour-entries"));
    EXPECT_TRUE(matchesTextGolden(picture("opened", TEXT_BOX), "tour-network-name"));
    EXPECT_TRUE(matchesTextGolden(picture("typed", TEXT_BOX), "tour-network-name-typed"));
    EXPECT_TRUE(matchesTextGolden(picture("stored", {0, 42, 320, 78}), "tour-network-name-stored"));
    EXPECT_EQ(setting("main", "WifiName"), "Home 24&\n");
    EXPECT_EQ(desk.nvram("get main WifiName --committed").output, "Home 24&\n");
}

TEST_F(KeyboardTour, RefusesANameThatIsTooLongUntilItIsShorter) {
    play(Story()
             .tap(ROWS[NETWORK_NAME])
             .type("abcdefghijklmnopqrstuvwxyz1") // 6 were there
             .tap(DONE)
             .shot("too-long")
             .tap(ANYWHERE)
             .shot("again")
             .tap(DELETE)
             .tap(DONE));
    EXPECT_TRUE(matchesTextGolden(picture("too-long", {56, 56, 264, 164}), "tour-too-long"));
    EXPECT_TRUE(matchesTextGolden(picture("again", TEXT_BOX), "tour-too-long-text"));
    EXPECT_EQ(setting("main", "WifiName"), "Ostrelabcdefghijklmnopqrstuvwxyz\n");
}

TEST_F(KeyboardTour, EditsASettingOfTheSecondSectionWithoutARestart) {
    play(Story()
             .tap(ROWS[DARK_AFTER])
             .tap(KEYPAD_DELETE, 3)
             .dial("9")
             .tap(KEYPAD_DONE)
             .shot("too-short")
             .tap(ANYWHERE)
             .dial("0")
             .tap(KEYPAD_DONE)
             .shot("stored"));
    EXPECT_TRUE(matchesTextGolden(picture("too-short", {56, 56, 264, 164}), "tour-dark-after-refused"));
    EXPECT_TRUE(matchesTextGolden(picture("stored", {0, 74, 320, 110}), "tour-dark-after-stored"));
    EXPECT_EQ(setting("rtdev", "ScreenTimeout"), "90\n");
    EXPECT_EQ(log().find("command init_system"), std::string::npos) << log();
}

TEST_F(KeyboardTour, AsksForAnAddressUntilItIsOne) {
    play(Story()
             .tap(ROWS[ADDRESS])
             .dial(".7")
             .tap(KEYPAD_DONE)
             .shot("no-address")
             .tap(ANYWHERE)
             .tap(KEYPAD_DELETE, 3)
             .dial("9")
             .shot("address")
             .tap(KEYPAD_DONE));
    EXPECT_TRUE(matchesTextGolden(picture("no-address", {56, 56, 264, 164}), "tour-no-address"));
    EXPECT_TRUE(matchesTextGolden(picture("address", TEXT_BOX), "tour-address"));
    EXPECT_EQ(setting("main", "IPAddress"), "192.168.1.9\n");
}

TEST_F(KeyboardTour, KeepsAFreeTextBehindItsPrefix) {
    play(Story()
             .tap(ROWS[WEB_PAGE])
             .type("abc")
             .tap(DONE)
             .shot("too-short")
             .tap(ANYWHERE)
             .tap(DELETE, 9) // more than were typed: the prefix stays
             .type("router.home")
             .shot("typed")
             .tap(DONE)
             .shot("stored"));
    EXPECT_TRUE(matchesTextGolden(picture("too-short", {56, 56, 264, 164}), "tour-too-short"));
    EXPECT_TRUE(matchesTextGolden(picture("typed", TEXT_BOX), "tour-web-page"));
    EXPECT_TRUE(matchesTextGolden(picture("stored", {0, 138, 320, 174}), "tour-web-page-stored"));
    EXPECT_EQ(setting("main", "WebPage"), "http://router.home\n");
}

TEST_F(KeyboardTour, AsksForAPinOfFourDigits) {
    play(Story()
             .tap(ROWS[PIN])
             .dial("113")
             .tap(KEYPAD_DONE)
             .shot("refused")
             .tap(ANYWHERE)
             .dial("3")
             .tap(KEYPAD_DONE)
             .shot("stored"));
    EXPECT_TRUE(matchesTextGolden(picture("refused", {56, 56, 264, 164}), "tour-pin-refused"));
    EXPECT_TRUE(matchesTextGolden(picture("stored", {0, 170, 320, 206}), "tour-pin-stored"));
    EXPECT_EQ(setting("main", "PIN"), "1133\n");
}

TEST_F(KeyboardTour, ChangesNothingWhenAnEntryIsCancelled) {
    play(Story()
             .shot("before")
             .tap(ROWS[NETWORK_NAME])
             .type("x")
             .tap(BACK)
             .tap(ROWS[DARK_AFTER])
             .dial("1")
             .tap(KEYPAD_BACK)
             .tap(ROWS[WEB_PAGE])
             .type("x")
             .tap(BACK)
             .shot("after"));
    EXPECT_TRUE(matchesPicture(picture("after", WHOLE), picture("before", WHOLE), "tour-cancelled"));
    EXPECT_EQ(setting("main", "WifiName"), "Ostrel\n");
    EXPECT_EQ(setting("rtdev", "ScreenTimeout"), "300\n");
    EXPECT_NE(desk.nvram("get main WebPage").status, 0);
    EXPECT_EQ(log().find("nvram set"), std::string::npos) << log();
}

TEST_F(KeyboardTour, WritesNothingBackOfAValueThatItCannotShow) {
    const std::string tooLong(300, 'x');
    give("main", "WifiName", tooLong);
    give(
        "rtdev", "ScreenTimeout",
        "6\xFF"
        "0");
    play(Story().tap(ROWS[DARK_AFTER]).shot("dropped").tap(KEYPAD_DONE).tap(ROWS[NETWORK_NAME]).shot("cut").tap(BACK));
    EXPECT_TRUE(matchesTextGolden(picture("dropped", TEXT_BOX), "tour-invalid-bytes"));
    EXPECT_TRUE(matchesTextGolden(picture("cut", TEXT_BOX), "tour-value-too-long"));
    EXPECT_EQ(setting("main", "WifiName"), tooLong + "\n");
    EXPECT_EQ(
        setting("rtdev", "ScreenTimeout"), "6\xFF"
                                           "0\n");
}

TEST_F(KeyboardTour, ShowsItsMessagesInTheRoutersLanguage) {
    give("main", "Language", "greek");
    play(Story().tap(ROWS[ADDRESS]).dial(".").tap(KEYPAD_DONE).shot("greek").tap(ANYWHERE).tap(KEYPAD_BACK));
    EXPECT_TRUE(matchesTextGolden(picture("greek", {56, 56, 264, 164}), "tour-no-address-greek"));
}

// Real pen timing: everything typed in real time, 60 ms from tap to tap.
TEST_F(KeyboardTour, LosesNoLetterOfAFastTypist) {
    const std::string letters = "thequickbrownfoxjumpsoverthelazydogaabbccddeeffgg1";
    ASSERT_EQ(letters.size(), 50U);
    Story story;
    story.tap(ROWS[WEB_PAGE]);
    for (const char letter : letters)
        story.touch(letterKey(letter));
    story.tap(DONE).tap(ROWS[PIN]);
    for (const char digit : {'7', '7', '7', '7'})
        story.touch(keypadKey(digit));
    play(story.tap(KEYPAD_DONE), "");
    EXPECT_EQ(setting("main", "WebPage"), "http://" + letters + "\n");
    EXPECT_EQ(setting("main", "PIN"), "7777\n");
}

TEST_F(KeyboardTour, ShowsAMessageBoxOfEveryType) {
    Story story;
    story.tap(ROWS[MESSAGES]).shot("messages");
    for (int type = 0; type < 5; ++type) {
        const int y = 63 + 39 * type;
        story.tap({80, y}).shot("type-" + std::to_string(type)).tap(ANYWHERE).shot("closed-" + std::to_string(type));
        story.tap({240, y}).shot("bar-over-" + std::to_string(type));
    }
    play(story.tap({27, 22}).shot("entries"));
    EXPECT_TRUE(matchesTextGolden(picture("messages", WHOLE), "tour-messages"));
    for (int type = 0; type < 5; ++type) {
        const std::string number = std::to_string(type);
        EXPECT_TRUE(matchesPicture(picture("closed-" + number, WHOLE), picture("messages", WHOLE), "tour-closed"));
        EXPECT_TRUE(matchesPicture(picture("bar-over-" + number, WHOLE), picture("messages", WHOLE), "tour-bar-over"));
        EXPECT_NE(picture("type-" + number, WHOLE), picture("messages", WHOLE)) << number;
    }
    EXPECT_TRUE(matchesTextGolden(picture("type-1", {56, 56, 264, 164}), "tour-message-information"));
    EXPECT_TRUE(matchesTextGolden(picture("entries", WHOLE), "tour-entries"));
}

} // namespace
