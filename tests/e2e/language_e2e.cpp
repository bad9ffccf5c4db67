// The router's language picker in the simulator, started by the language button of a program's page.
#include "tests/e2e/simulator_run.h"
#include "tests/support/staged_fonts.h"

#include <gtest/gtest.h>

namespace {

class LanguagePicker : public testing::Test {
  protected:
    void play(const std::string& script) {
        desk.write("script", script);
        const Told told = desk.run(
            "--headless --script script --speed 100 '" OSTREL_PAGES "' home", "OSTREL_ASSETS='" OSTREL_STAGED "'");
        EXPECT_EQ(told.status, 0) << told.errors;
        EXPECT_EQ(told.errors, "");
    }

    testing::AssertionResult shows(const std::string& shot, const std::string& golden) const {
        return matchesTextGolden(readPicture(desk.file(shot)), golden);
    }

    std::string storedLanguage() { return desk.nvram("get main Language --committed").output; }

    Desk desk;
};

TEST_F(LanguagePicker, StoresTheLanguageThatWasTouched) {
    play("tap 301 23\n"
         "shot english.png\n"
         "tap 134 218\n" // the second page
         "tap 80 63\n"   // Greek
         "shot greek.png\n"
         "tap 237 218\n" // Done
         "shot home.png\n"
         "tap 301 23\n"
         "shot again.png\n"
         "tap 27 22\n"
         "tap 28 23\n" // the page's own back button
         "exit-code 0\n");
    EXPECT_TRUE(shows("english.png", "picker-english"));
    EXPECT_TRUE(shows("greek.png", "picker-greek"));
    EXPECT_TRUE(shows("home.png", "run-home"));
    EXPECT_TRUE(shows("again.png", "picker-greek"));
    EXPECT_EQ(storedLanguage(), "greek\n");
    const std::string log = contentOf(desk.file("state/log"));
    EXPECT_EQ(log.find(" command "), std::string::npos) << "services are restarted: " << log;
}

TEST_F(LanguagePicker, LeavesTheLanguageAsItWasOnBack) {
    play("tap 301 23\n"
         "tap 80 63\n" // German
         "shot german.png\n"
         "tap 27 22\n"
         "shot home.png\n"
         "tap 28 23\n"
         "exit-code 0\n");
    EXPECT_TRUE(shows("german.png", "picker-german"));
    EXPECT_TRUE(shows("home.png", "run-home"));
    EXPECT_EQ(storedLanguage(), "english\n");
    EXPECT_EQ(contentOf(desk.file("state/log")).find("nvram set"), std::string::npos);
}

// The pad's keys lie at other places than what the picker shows.
TEST_F(LanguagePicker, LocksThePanelAndKeepsTheChoice) {
    for (const char* const setting : {"main ScreenLock 1", "main PIN 2580", "rtdev ScreenTimeout 3"})
        ASSERT_EQ(desk.nvram(std::string("set ") + setting).status, 0);
    play("tap 301 23\n"
         "tap 80 63\n" // German
         "expect-dark\n"
         "tap 300 180\n" // wakes the panel; the next two are swallowed
         "tap 300 180\n"
         "tap 300 180\n"
         "shot pad.png\n"
         "tap 117 116\n"
         "tap 117 163\n"
         "tap 117 210\n"
         "tap 274 163\n" // 2580
         "shot german.png\n"
         "tap 237 218\n"
         "tap 28 23\n"
         "exit-code 0\n");
    EXPECT_TRUE(shows("pad.png", "run-lock-pad"));
    EXPECT_TRUE(shows("german.png", "picker-german"));
    EXPECT_EQ(storedLanguage(), "german\n");
}

} // namespace
