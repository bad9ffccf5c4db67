#include "tests/e2e/settings/settings_desk.h"

namespace {

struct Way {
    const char* page;
    Point row; // of the home page
};
constexpr Way WAYS[] = {{"wifi", {82, 77}},     {"network", {238, 77}}, {"screen", {82, 141}},
                        {"backup", {238, 141}}, {"about", {82, 205}},   {"restart", {238, 205}}};

// In the language picker.
constexpr Point NEXT_PAGE = {134, 218};
constexpr Point FIRST_LANGUAGE = {80, 63}; // of the second page: Greek
constexpr Point DONE_BUTTON = {237, 218};

class LanguageButton : public SettingsDesk {
  protected:
    // The home page and all that it leads to.
    static Story& walk(Story& story, const std::string& prefix) {
        story.shot(prefix + "home");
        for (const Way& way : WAYS)
            story.tap(way.row).shot(prefix + way.page).tap(PAGE_BACK);
        return story;
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
    std::vector<std::string> pages = {"home"};
    for (const Way& way : WAYS)
        pages.emplace_back(way.page);
    for (const std::string& page : pages) {
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

class HomePage : public SettingsDesk {};
INSTANTIATE_TEST_SUITE_P(In, HomePage, testing::Values("english", "greek"), languageOf);

TEST_P(HomePage, LeadsToEachPageAndBack) {
    Story story;
    story.shot("home");
    for (const Way& way : WAYS)
        story.tap(way.row).shot(way.page).tap(PAGE_HOME).shot(std::string(way.page) + "-left");
    play(story);
    EXPECT_TRUE(shows("home"));
    for (const Way& way : WAYS) {
        const std::string page = way.page;
        EXPECT_NE(picture(page), picture("home")) << page;
        EXPECT_TRUE(matchesPicture(picture(page + "-left"), picture("home"), "settings-home"));
    }
    EXPECT_EQ(stored(), "");
}

} // namespace
