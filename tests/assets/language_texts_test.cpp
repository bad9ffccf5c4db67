// Every text that the toolkit shows, in every language, drawn in its place.
#include "gui/display.h"
#include "lang/languages.h"
#include "tests/support/panel_file.h"
#include "tests/support/staged_fonts.h"
#include "util/wide_format.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace {

// A message's three keys; a limit behind the second line where the keyboard puts one.
struct Message {
    const char* keys[3];
    bool hasLimit;
};
constexpr Message MESSAGES[] = {
    {{"less_than_6_l1", "less_than_6_l2", "less_than_6_l3"}, true},
    {{"more_than_2_l1", "more_than_2_l2", "more_than_2_l3"}, true},
    {{"valid_ip_l1", "valid_ip_l2", "valid_ip_l3"}, false},
    {{"savingl1", "savingl2", "savingl3"}, false},
};

// Centred between x = 133 and 257, at its size and with all its characters: the same pixels as the bare text there.
void expectFits(const PanelFile& panel, wchar_t* line, int y, const std::string& whose) {
    const int width = textWidth(line, 17.0F);
    EXPECT_GT(width, 0) << whose;
    EXPECT_LE(width, 124) << whose;
    lcd_clear(0);
    drawText(line, 130, y, 130, 1, 0, 17.0F, 0xFFFF, 1);
    const Picture centred = panel.picture();
    lcd_clear(0);
    drawText(line, 130 + (130 - width) / 2, y, 0, 1, 0, 17.0F, 0xFFFF, 0);
    EXPECT_TRUE(centred == panel.picture()) << whose << " is made smaller or cut";
}

TEST(LanguageTexts, FitTheMessageBoxAtTheirSize) {
    const PanelFile panel;
    int languages = 0;
    for (const auto& item : std::filesystem::directory_iterator(OSTREL_LANGUAGES)) {
        if (item.path().extension() != ".xml")
            continue;
        ++languages;
        for (const Message& message : MESSAGES)
            for (int i = 0; i < 3; ++i) {
                const std::string whose = item.path().stem().string() + " " + message.keys[i];
                ret[0] = 0;
                wchar_t* const text = lang.getvalue(item.path().c_str(), message.keys[i], "modal");
                ASSERT_NE(text, nullptr) << whose;
                ASSERT_STRNE(text, L"<NOTAG>") << whose;
                wchar_t line[300];
                if (message.hasLimit && i == 1)
                    aswprintf(line, 59, L"%ls %d", text, 179);
                else
                    aswprintf(line, 59, L"%ls", text);
                expectFits(panel, line, 80 + 20 * i, whose);
            }
    }
    EXPECT_GE(languages, 10);
}

} // namespace
