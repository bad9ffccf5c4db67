// The router's home program on a desk, touched by scripts, in the language that a test is told. Its pictures are
// compared with tests/golden/settings-LANGUAGE-NAME.png.
#ifndef OSTREL_TESTS_E2E_SETTINGS_SETTINGS_DESK_H
#define OSTREL_TESTS_E2E_SETTINGS_SETTINGS_DESK_H

#include "tests/e2e/simulator_run.h"
#include "tests/e2e/story.h"
#include "tests/support/staged_fonts.h"

#include <cstring>
#include <gtest/gtest.h>
#include <regex>
#include <sstream>
#include <string>

// Middles of header buttons and of what the pages have in common.
constexpr Point PAGE_BACK = {28, 22};
constexpr Point PAGE_HOME = {67, 22};
constexpr Point LANGUAGE_BUTTON = {301, 22};
constexpr Point SAVE = {160, 218};
constexpr Point DISCARD = {160, 163};
constexpr Point KEEP_EDITING = {160, 211};

constexpr ostrel::Rect WHOLE = {0, 0, 320, 240};
constexpr ostrel::Rect MESSAGE_BOX = {56, 56, 264, 164};

class SettingsDesk : public testing::TestWithParam<const char*> {
  protected:
    SettingsDesk() { give("main Language", GetParam()); }

    // A setting as it is before the program starts.
    void give(const std::string& name, const std::string& value) {
        EXPECT_EQ(desk.nvram("set " + name + " '" + value + "'").status, 0);
    }

    // What survives a power cut.
    std::string kept(const std::string& name) { return desk.nvram("get " + name + " --committed").output; }

    // Every command of a script waits until the program looks for touches, up to two minutes.
    void play(const Story& story) {
        desk.write("script", story.text);
        const Told told = desk.run(
            "--headless --patience 120 --speed 50 --script script '" OSTREL_SETTINGS "'",
            "OSTREL_ASSETS='" OSTREL_STAGED "'");
        EXPECT_EQ(told.status, 0) << told.errors;
        EXPECT_EQ(told.errors, "");
    }

    testing::AssertionResult shows(const std::string& shot, const ostrel::Rect& area = WHOLE) {
        return matchesTextGolden(picture(shot, area), std::string("settings-") + GetParam() + "-" + shot);
    }

    Picture picture(const std::string& shot, const ostrel::Rect& area = WHOLE) {
        const Picture whole = readPicture(desk.file(shot + ".png"));
        return whole.width == 320 ? cut(whole, area) : Picture();
    }

    // All that the program changed in the settings, in order: "set main WifiName: "Home"", "commit main".
    std::string stored() {
        std::istringstream log(contentOf(desk.file("state/log")));
        const std::regex change("[^ ]+ settings\\[[0-9]+\\] nvram ((set|commit) .*)");
        std::string changes;
        std::smatch found;
        for (std::string line; std::getline(log, line);)
            if (std::regex_match(line, found, change))
                changes += found[1].str() + "\n";
        return changes;
    }

    Desk desk;
};

// The end of a story that saved: the services restart in the background.
inline const char* const RESTARTED = "expect-log command killall nvram_daemon\n"
                                     "expect-log command init_system restart";

inline std::string languageOf(const testing::TestParamInfo<const char*>& info) {
    return info.param;
}

#endif
