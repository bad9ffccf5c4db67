// A change of language in the settings program: afterwards every page speaks it, without a restart.
#include "tests/e2e/simulator_run.h"
#include "tests/support/staged_fonts.h"

#include <gtest/gtest.h>

namespace {

struct Visited {
    const char* name;
    const char* touch; // on the home page; empty: the home page itself
};
constexpr Visited PAGES[] = {
    {"home", ""},
    {"wifi", "tap 80 77\n"},
    {"network", "tap 238 77\n"},
    {"screen", "tap 80 141\n"},
    {"pin", "tap 80 141\ntap 96 215\n"},
    {"backup", "tap 238 141\n"},
    {"about", "tap 80 205\n"},
    {"restart", "tap 238 205\n"},
    {"question", "tap 80 141\ntap 60 85\ntap 27 22\n"}, // 30 seconds, and back without saving
};
constexpr const char* HOME = "tap 67 22\n";
constexpr const char* DISCARD = "tap 160 160\n";

std::string shotsOfAllPages(const std::string& language) {
    std::string script;
    for (const Visited& page : PAGES) {
        script += page.touch + std::string("shot ") + language + "-" + page.name + ".png\n";
        if (std::string(page.name) == "question")
            script += DISCARD;
        else if (*page.touch != '\0')
            script += HOME;
    }
    return script;
}

TEST(SettingsLanguage, ChangesEveryTextOfEveryPage) {
    const Desk desk;
    desk.write(
        "script", shotsOfAllPages("english") +
                      "tap 301 23\n" // the language button
                      "tap 134 218\n"
                      "tap 80 63\n"   // Greek
                      "tap 237 218\n" // Done
                      + shotsOfAllPages("greek") + "quit\n");
    const Told told = desk.run("--headless --script script '" OSTREL_SETTINGS "'", "OSTREL_ASSETS='" OSTREL_STAGED "'");
    ASSERT_EQ(told.status, 0) << told.errors;
    EXPECT_EQ(told.errors, "");
    for (const Visited& page : PAGES) {
        const Picture english = readPicture(desk.file(std::string("english-") + page.name + ".png"));
        const Picture greek = readPicture(desk.file(std::string("greek-") + page.name + ".png"));
        ASSERT_EQ(english.width, 320) << page.name;
        EXPECT_TRUE(english != greek) << page.name;
        EXPECT_TRUE(matchesTextGolden(greek, std::string("speaks-greek-") + page.name));
    }
    EXPECT_EQ(desk.nvram("get main Language --committed").output, "greek\n");
}

} // namespace
