// Every text of the program in every language, measured with the fonts of the panel against the place it stands in.
#include "apps/settings/pages.h"
#include "apps/settings/texts.h"
#include "tests/support/fake_settings.h"
#include "tests/support/panel_file.h"
#include "tests/support/staged_fonts.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <regex>
#include <string>
#include <vector>

namespace {

constexpr int TITLE_ROOM = 190;
constexpr float TITLE_SIZE = 28;
constexpr int MESSAGE_ROOM = 124;
constexpr float MESSAGE_SIZE = 17;
constexpr int QUESTION_ROOM = 290;
constexpr float QUESTION_SIZE = 20;
constexpr int VALUE_GAP = 10;

// What an element keeps free left and right of its text, by kind.
constexpr int MARGINS[] = {12, 40, 24, 52, 72, 52, 12, 4, 0, 12};

void expectFits(const WidgetRecord& record, const std::string& whose) {
    std::wstring text = record.text;
    const int room = record.width - MARGINS[record.type];
    const size_t tab = text.find(L'\t');
    std::wstring value = tab == std::wstring::npos ? L"" : text.substr(tab + 1);
    text.resize(std::min(tab, text.size()));
    const int textWidthPx = textWidth(text.data(), record.fontSize);
    const int valueWidthPx = value.empty() ? 0 : textWidth(value.data(), record.fontSize);
    EXPECT_LE(textWidthPx + (value.empty() ? 0 : VALUE_GAP + valueWidthPx), room) << whose;
    EXPECT_LE(valueWidthPx, room * 3 / 5) << whose;
}

std::vector<std::filesystem::path> languages() {
    std::vector<std::filesystem::path> files;
    for (const auto& item : std::filesystem::directory_iterator(OSTREL_LANGUAGES))
        if (item.path().extension() == ".xml")
            files.push_back(item.path());
    std::sort(files.begin(), files.end());
    return files;
}

class SettingsTexts : public testing::Test {
  protected:
    SettingsTexts() {
        restartFakeSettings();
        // The widest addresses; names are their owners' own, and may be shortened.
        fakeSettings().working[1] = {
            {"WifiName", "Ostrel"},           {"WifiPassword", "change-me-soon"}, {"DHCP", "0"},
            {"IPAddress", "255.255.255.255"}, {"NetMask", "255.255.255.255"},     {"Gateway", "255.255.255.255"}};
        std::snprintf(lang.file, sizeof lang.file, "%s", OSTREL_LANGUAGES "/english.xml");
        [[maybe_unused]] static const bool prepared = [] {
            preparePages();
            return true;
        }();
    }

    static void speak(const std::filesystem::path& language) {
        std::snprintf(lang.file, sizeof lang.file, "%s", language.c_str());
        for (const Page* const page : allPages())
            page->retext();
    }

    PanelFile panel;
};

TEST_F(SettingsTexts, FitTheirPlacesOnThePagesInEveryLanguage) {
    for (const auto& language : languages()) {
        speak(language);
        for (const Page* const page : allPages()) {
            showPage(*page);
            Screen& screen = *page->screen;
            const std::string whose = language.stem().string() + ", " + utf8Of(screen.title);
            EXPECT_LE(textWidth(screen.title, TITLE_SIZE), TITLE_ROOM) << whose;
            Widget* widget = screen.widgets;
            while (widget->prev != nullptr)
                widget = widget->prev;
            for (; widget != nullptr; widget = widget->next)
                expectFits(widget->record, whose + ", " + utf8Of(widget->record.text));
        }
    }
}

// By their keys: _l1 to _l3 stand in a message box, _q1 to _q3 on a page that asks.
TEST_F(SettingsTexts, FitTheMessageBoxesAndTheQuestionsInEveryLanguage) {
    std::ifstream english(OSTREL_LANGUAGES "/english.xml");
    const std::regex entry("<([a-z0-9_]+_([lq])[123])>.*");
    std::vector<std::pair<std::string, bool>> keys;
    bool isOurs = false;
    for (std::string line; std::getline(english, line);) {
        std::smatch found;
        isOurs = isOurs || line == "<settings>";
        if (isOurs && std::regex_match(line, found, entry))
            keys.emplace_back(found[1], found[2] == "l");
        if (line == "</settings>")
            break;
    }
    ASSERT_GE(keys.size(), 30U);
    for (const auto& language : languages())
        for (const auto& [key, isMessage] : keys) {
            wchar_t* const text = lang.getvalue(language.c_str(), key.c_str(), "settings");
            ASSERT_NE(text, nullptr);
            EXPECT_LE(
                textWidth(text, isMessage ? MESSAGE_SIZE : QUESTION_SIZE), isMessage ? MESSAGE_ROOM : QUESTION_ROOM)
                << language.stem() << ", " << key << ": " << ret;
        }
}

TEST_F(SettingsTexts, FitTheQuestionPageInEveryLanguage) {
    for (const auto& language : languages()) {
        speak(language);
        showPage(wifiPage);
        touchPage(60, 101); // open
        ASSERT_TRUE(wifiPage.isChanged());
        touchPage(28, 22); // back
        ASSERT_EQ(&shownPage(), &confirmPage);
        const std::string whose = language.stem().string();
        EXPECT_LE(textWidth(confirmPage.screen->title, TITLE_SIZE), TITLE_ROOM) << whose;
        Widget* widget = confirmPage.screen->widgets;
        while (widget->prev != nullptr)
            widget = widget->prev;
        for (; widget != nullptr; widget = widget->next)
            expectFits(widget->record, whose + ", " + utf8Of(widget->record.text));
    }
}

} // namespace
