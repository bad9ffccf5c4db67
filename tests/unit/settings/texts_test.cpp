// The lines of questions are not on a page before they are asked: they are measured by their keys, _q1 to _q3.
#include "tests/support/staged_fonts.h"

#include "gui/display.h"
#include "lang/languages.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <regex>
#include <string>
#include <vector>

namespace {

constexpr int ROOM = 290;
constexpr float SIZE = 20;

std::vector<std::string> questionKeys() {
    std::ifstream english(OSTREL_LANGUAGES "/english.xml");
    const std::regex entry("<([a-z0-9_]+_q[123])>.*");
    std::vector<std::string> keys;
    std::smatch found;
    for (std::string line; std::getline(english, line);)
        if (std::regex_match(line, found, entry))
            keys.push_back(found[1]);
    return keys;
}

TEST(QuestionLines, FitThePageThatAsksInEveryLanguage) {
    const std::vector<std::string> keys = questionKeys();
    EXPECT_GE(keys.size(), 2U);
    int languages = 0;
    for (const auto& item : std::filesystem::directory_iterator(OSTREL_LANGUAGES)) {
        if (item.path().extension() != ".xml")
            continue;
        ++languages;
        for (const std::string& key : keys) {
            ret[0] = 0;
            wchar_t* const text = lang.getvalue(item.path().c_str(), key.c_str(), "settings");
            ASSERT_NE(text, nullptr);
            EXPECT_GT(textWidth(text, SIZE), 0);
            EXPECT_LE(textWidth(text, SIZE), ROOM) << item.path().stem() << " " << key << ": " << ret;
        }
    }
    EXPECT_GE(languages, 10);
}

} // namespace
