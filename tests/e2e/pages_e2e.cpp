// Pages of real programs in the simulator, touched by scripts: the lock from end to end, and a second program that the
// language button starts.
#include "tests/e2e/simulator_run.h"
#include "tests/support/staged_fonts.h"

#include <gtest/gtest.h>

namespace {

class Pages : public ::testing::Test {
  protected:
    // The router's own files, and a language picker.
    Pages() {
        std::filesystem::copy(
            OSTREL_STAGED, desk.file("assets"),
            std::filesystem::copy_options::recursive | std::filesystem::copy_options::overwrite_existing);
        desk.write("assets/language", "#!/bin/sh\nexec '" OSTREL_PAGES "' picker\n");
        std::filesystem::permissions(desk.file("assets/language"), std::filesystem::perms::all);
    }

    Told play(const std::string& script) const {
        desk.write("script", script);
        return desk.run("--script script --speed 100 '" OSTREL_PAGES "' home");
    }

    testing::AssertionResult shows(const std::string& shot, const std::string& golden) const {
        return matchesTextGolden(readPicture(desk.file(shot)), golden);
    }

    Desk desk;
};

} // namespace

// The widget "Count" lies under (160, 70), where the pad has no key.
TEST_F(Pages, LockThePanelUntilThePinIsTyped) {
    const Told run = play("shot page.png\n"
                          "tap 160 70\n"
                          "tap 160 120\n"
                          "expect-dark\n"
                          "tap 160 70\n" // wakes the panel
                          "shot awake.png\n"
                          "tap 160 70\n" // swallowed, and so is the next
                          "tap 160 70\n"
                          "tap 160 70\n" // on the pad, beside its keys
                          "tap 28 23\n"  // where the page has its back button
                          "shot pad.png\n"
                          "tap 117 116\n"
                          "tap 117 163\n"
                          "tap 117 210\n"
                          "tap 117 116\n" // 2582
                          "shot wrong.png\n"
                          "tap 274 116\n" // Del
                          "shot corrected.png\n"
                          "tap 274 163\n" // 0
                          "shot unlocked.png\n"
                          "tap 160 70\n");
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output, "home: counted 1\nhome: armed\nhome: unlocked\nhome: counted 2\n");
    EXPECT_TRUE(shows("page.png", "run-home"));
    EXPECT_TRUE(shows("awake.png", "run-lock-pad"));
    EXPECT_TRUE(shows("pad.png", "run-lock-pad"));
    EXPECT_TRUE(shows("wrong.png", "run-lock-wrong-pin"));
    EXPECT_TRUE(shows("corrected.png", "run-lock-corrected"));
    EXPECT_TRUE(shows("unlocked.png", "run-home"));
}

TEST_F(Pages, GiveThePanelToTheProgramThatTheLanguageButtonStarts) {
    const Told run = play("tap 160 70\n"
                          "tap 301 23\n"
                          "shot picker.png\n"
                          "tap 160 70\n"
                          "tap 160 120\n"
                          "tap 301 23\n"
                          "tap 160 70\n"
                          "tap 28 23\n"
                          "shot home.png\n"
                          "tap 160 70\n"
                          "tap 28 23\n"
                          "exit-code 0\n");
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(
        run.output, "home: counted 1\n"
                    "picker: counted 1\n"
                    "picker: counted 2\n"
                    "picker: counted 3\n"
                    "picker: back\n"
                    "home: counted 2\n"
                    "home: back\n");
    EXPECT_TRUE(shows("picker.png", "run-picker"));
    EXPECT_TRUE(shows("home.png", "run-home"));
}
