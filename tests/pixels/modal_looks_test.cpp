// Message boxes as people see them.
#include "gui/modal.h"
#include "lang/languages.h"
#include "tests/support/fake_sleep.h"
#include "tests/support/keyboard_panel.h"

using namespace ostrel;

namespace {

constexpr Rect WHOLE = {0, 0, 320, 240};
constexpr Rect BOX = {56, 56, 264, 164}; // and a little of what is around it
constexpr Rect FULL_CONTENT = {56, 20, 264, 192};

// The language with the widest line, see below.
constexpr const char* LONGEST = "greek";

constexpr float LINE_SIZE = 17;

class ModalLooks : public KeyboardPanel {
  protected:
    ModalLooks() {
        modal.onClose = doNothing;
        lcd_clear(0x0310);
    }

    // Lines 1 to 3 from the language file: KEY1 to KEY3, with a limit (if any) behind the second.
    void say(const std::string& key, int limit = 0) {
        modal.setLine1(lang.get((key + "1").c_str(), "modal"));
        std::wstring second = lang.get((key + "2").c_str(), "modal");
        if (limit > 0)
            second += L" " + std::to_wstring(limit);
        modal.setLine2(second.c_str());
        modal.setLine3(lang.get((key + "3").c_str(), "modal"));
    }

    // What the bar shows in each second.
    std::vector<Picture> bar(int seconds, const Rect& area) {
        std::vector<Picture> pictures;
        fakeSleep().duringSleep = [&](uint64_t) { pictures.push_back(shown(area)); };
        modal.time(seconds);
        fakeSleep().duringSleep = nullptr;
        return pictures;
    }

    Modal modal;
};

TEST_F(ModalLooks, AreShownInTheLanguageWithTheWidestLine) {
    std::string widestLanguage;
    int widest = 0;
    for (const char* language :
         {"english", "dutch", "german", "french", "spanish", "italian", "polish", "greek", "ukrainian", "turkish"}) {
        speak(language);
        for (const std::string message : {"less_than_6_l", "more_than_2_l", "valid_ip_l", "savingl"}) {
            for (const char* line : {"1", "2", "3"}) {
                const int width = textWidth(lang.get((message + line).c_str(), "modal"), LINE_SIZE);
                if (width > widest) {
                    widest = width;
                    widestLanguage = language;
                }
            }
        }
    }
    EXPECT_EQ(widestLanguage, LONGEST) << widest;
}

TEST_F(ModalLooks, OfInformationAreABoxWithAnIconAndThreeLines) {
    say("valid_ip_l");
    modal.draw(1, 0);
    EXPECT_TRUE(matchesTextGolden(shown(BOX), "modal-information"));
}

TEST_F(ModalLooks, OfCriticalNoticesHaveAnIconOfTheirOwn) {
    say("savingl");
    modal.draw(2, 0);
    EXPECT_TRUE(matchesTextGolden(shown(BOX), "modal-critical"));
}

TEST_F(ModalLooks, OfTheFrameAsATypeStayReadable) {
    say("savingl");
    modal.draw(0, 0);
    EXPECT_TRUE(matchesTextGolden(shown(BOX), "modal-frame"));
}

TEST_F(ModalLooks, OfFullScreenNoticesHaveFiveLines) {
    say("savingl");
    modal.setLine4(L"The router starts its services again,");
    modal.setLine5(L"which takes about half a minute.");
    modal.draw(3, 0);
    EXPECT_TRUE(matchesTextGolden(shown(WHOLE), "modal-full-information"));
    modal.draw(4, 0);
    EXPECT_TRUE(matchesTextGolden(shown(WHOLE), "modal-full-critical"));
}

TEST_F(ModalLooks, OfTimedBoxesLeaveRoomForTheProgressBar) {
    say("valid_ip_l");
    modal.drawTimed(1);
    EXPECT_TRUE(matchesTextGolden(shown(BOX), "modal-timed-information"));
    modal.drawTimed(0);
    EXPECT_TRUE(matchesTextGolden(shown(BOX), "modal-timed-frame"));
}

TEST_F(ModalLooks, OfTimedFullScreenNoticesLeaveRoomForTheProgressBar) {
    say("savingl");
    modal.drawTimed(3);
    EXPECT_TRUE(matchesTextGolden(bar(4, WHOLE).at(2), "modal-timed-full-information"));
    modal.drawTimed(4);
    EXPECT_TRUE(matchesTextGolden(bar(4, WHOLE).at(3), "modal-timed-full-critical"));
}

TEST_F(ModalLooks, OfSavingShowTheSecondsThatHavePassed) {
    say("savingl");
    modal.drawTimed(2);
    const std::vector<Picture> seconds = bar(23, BOX);
    ASSERT_EQ(seconds.size(), 23U);
    EXPECT_TRUE(matchesTextGolden(seconds[0], "modal-saving-first-second"));
    EXPECT_TRUE(matchesTextGolden(cut(seconds[11], {0, 70, 208, 108}), "modal-saving-half"));
    EXPECT_TRUE(matchesTextGolden(cut(seconds[22], {0, 70, 208, 108}), "modal-saving-last-second"));
}

TEST_F(ModalLooks, OfEveryTypeHoldTheWidestLanguage) {
    struct Case {
        int type;
        const char* message;
        int limit; // behind the second line; 0: none
        Rect area;
        const char* name;
    };
    speak(LONGEST);
    for (const Case& box : {
             Case{0, "savingl", 0, BOX, "modal-frame-longest"},
             Case{1, "valid_ip_l", 0, BOX, "modal-information-longest"},
             Case{1, "less_than_6_l", 179, BOX, "modal-too-long-longest"},
             Case{2, "more_than_2_l", 8, BOX, "modal-critical-longest"},
             Case{3, "less_than_6_l", 179, FULL_CONTENT, "modal-full-information-longest"},
             Case{4, "savingl", 0, FULL_CONTENT, "modal-full-critical-longest"},
         }) {
        lcd_clear(0x0310);
        say(box.message, box.limit);
        modal.setLine4(lang.get("valid_ip_l1", "modal"));
        modal.setLine5(lang.get("valid_ip_l2", "modal"));
        modal.draw(box.type, 0);
        EXPECT_TRUE(matchesTextGolden(shown(box.area), box.name));
    }
}

TEST_F(ModalLooks, OfEveryTimedTypeHoldTheWidestLanguageAboveTheBar) {
    struct Case {
        int type;
        const char* message;
        int limit;  // behind the second line; 0: none
        int second; // of 23
        Rect area;
        const char* name;
    };
    speak(LONGEST);
    for (const Case& box : {
             Case{0, "savingl", 0, 7, BOX, "modal-timed-frame-longest"},
             Case{1, "less_than_6_l", 179, 17, BOX, "modal-timed-information-longest"},
             Case{2, "savingl", 0, 1, BOX, "modal-saving-first-second-longest"},
             Case{2, "savingl", 0, 12, BOX, "modal-saving-longest"},
             Case{2, "savingl", 0, 23, BOX, "modal-saving-last-second-longest"},
             Case{3, "valid_ip_l", 0, 5, FULL_CONTENT, "modal-timed-full-information-longest"},
             Case{4, "savingl", 0, 20, FULL_CONTENT, "modal-timed-full-critical-longest"},
         }) {
        lcd_clear(0x0310);
        say(box.message, box.limit);
        modal.drawTimed(box.type);
        EXPECT_TRUE(matchesTextGolden(bar(23, box.area).at(static_cast<size_t>(box.second - 1)), box.name));
    }
}

} // namespace
