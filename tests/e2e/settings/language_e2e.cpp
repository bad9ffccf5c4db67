#include "tests/e2e/settings/settings_desk.h"

namespace {

constexpr Point WIFI = {82, 77};
constexpr Point NETWORK = {238, 77};

// In the language picker.
constexpr Point NEXT_PAGE = {134, 218};
constexpr Point FIRST_LANGUAGE = {80, 63}; // of the second page: Greek
constexpr Point DONE_BUTTON = {237, 218};

class LanguageButton : public SettingsDesk {
  protected:
    // All pages that the home page leads to without storing anything.
    static Story& walk(Story& story, const std::string& prefix) {
        return story.shot(prefix + "home")
            .tap(WIFI)
            .shot(prefix + "wifi")
            .tap(PAGE_BACK)
            .tap(NETWORK)
            .shot(prefix + "network")
            .tap(PAGE_BACK);
    }
};
INSTANTIATE_TEST_SUITE_P(From, LanguageButton, testing::Values("english"), languageOf);

TEST_P(LanguageButton, ChangesTheTextsOfAllPages) {
    Story story;
    walk(story, "english-").tap(LANGUAGE_BUTTON).tap(NEXT_PAGE).tap(FIRST_LANGUAGE).tap(DONE_BUTTON);
    play(walk(story, "changed-"));
    EXPECT_EQ(kept("main Language"), "greek\n");
    Story fresh;
    play(walk(fresh, "greek-"));
    for (const std::string page : {"home", "wifi", "network"}) {
        EXPECT_NE(picture("english-" + page), picture("changed-" + page)) << page;
        EXPECT_TRUE(matchesPicture(picture("changed-" + page), picture("greek-" + page), "settings-language-" + page));
    }
}

TEST_P(LanguageButton, LeavesTheTextsWhenThePickerIsLeftByBack) {
    play(Story().shot("before").tap(LANGUAGE_BUTTON).tap(NEXT_PAGE).tap(FIRST_LANGUAGE).tap(PAGE_BACK).shot("after"));
    EXPECT_TRUE(matchesPicture(picture("after"), picture("before"), "settings-language-left"));
    EXPECT_EQ(kept("main Language"), "english\n");
}

TEST_P(LanguageButton, LeadsToEnglishTextsWhereTheLanguageHasNoFile) {
    give("main Language", "klingon");
    desk.write("script", Story().shot("without").text);
    const Told told = desk.run(
        "--headless --patience 120 --speed 50 --script script '" OSTREL_SETTINGS "'",
        "OSTREL_ASSETS='" OSTREL_STAGED "'");
    EXPECT_EQ(told.status, 0);
    give("main Language", "english");
    play(Story().shot("english"));
    EXPECT_TRUE(matchesPicture(picture("without"), picture("english"), "settings-language-none"));
}

} // namespace
