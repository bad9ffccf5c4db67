// The header of a page and the PIN pad as people see them.
#include "display/touch_device.h"
#include "gui/screen.h"
#include "lock/inactivity.h"
#include "lock/pin_pad.h"
#include "tests/support/panel_file.h"
#include "tests/support/panel_pen.h"
#include "tests/support/staged_fonts.h"

#include <gtest/gtest.h>
#include <vector>

using namespace ostrel;

namespace {

constexpr Rect HEADER = {0, 0, 320, 44};
constexpr Rect BOXES = {64, 24, 228, 72}; // and what Del may touch

// One panel and one pen for the whole process.
struct PageDesk {
    PanelFile panel;
    PanelPen pen;
    Rect looksAt; // while the pen is down
    Picture whileDown;
};

PageDesk& desk() {
    static auto* const instance = new PageDesk;
    return *instance;
}

struct PenIsWaitedFor {};

int lookWhileDown(int, int) {
    desk().whileDown = desk().panel.picture(desk().looksAt);
    throw PenIsWaitedFor{};
}

// Kept and never destroyed: a page would draw once more.
Screen& page(const wchar_t* title) {
    static auto* const pages = new std::vector<Screen*>;
    Screen* const made = pages->emplace_back(new Screen(title));
    made->onBack = [] {};
    return *made;
}

class PageLooks : public ::testing::Test {
  protected:
    PageLooks() {
        desk();
        lcd_clear(0);
    }

    static Picture shown(const Rect& area) { return desk().panel.picture(area); }

    // What `area` shows while the pen is on a header button. The touch ends before the button acts.
    static Picture held(Screen& page, int x, int y, const Rect& area) {
        desk().looksAt = area;
        touchCalls.wait = lookWhileDown;
        desk().pen.send(1, x, y);
        readX();
        EXPECT_THROW(page.getTouch(x, y), PenIsWaitedFor);
        desk().pen.send(0, x, y);
        EXPECT_EQ(readX(), -1);
        return desk().whileDown;
    }
};

// Touches the pad with a pen that has left it again by the time it looks.
void type(std::initializer_list<TouchArea> keys) {
    for (const TouchArea& key : keys)
        get_screenLock_touch((key.left + key.right) / 2, (key.top + key.bottom) / 2);
}

} // namespace

TEST_F(PageLooks, OfAnOrdinaryPageHaveBackExitAndTitle) {
    page(L"Settings").draw();
    EXPECT_TRUE(matchesTextGolden(shown(HEADER), "header-back-exit"));
}

TEST_F(PageLooks, OfTheHomePageHaveHomeAndLanguage) {
    Screen& home = page(L"Ασύρματο δίκτυο");
    home.showExit = 0;
    home.showHome = 1;
    home.showLanguage = 1;
    home.draw();
    EXPECT_TRUE(matchesTextGolden(shown(HEADER), "header-home-language"));
}

TEST_F(PageLooks, OfButtonsWithoutEffectAreGray) {
    Screen& first = page(L"Бездротова мережа");
    first.showBack = 0;
    first.showExit = 0;
    first.showHomeGrayed = 1;
    first.showLanguage = 1;
    first.draw();
    EXPECT_TRUE(matchesTextGolden(shown(HEADER), "header-grayed"));
}

TEST_F(PageLooks, OfLongTitlesKeepClearOfTheLanguageButton) {
    Screen& longest = page(L"Wireless network settings and much more");
    longest.showLanguage = 1;
    longest.draw();
    EXPECT_TRUE(matchesTextGolden(shown(HEADER), "header-long-title"));
    for (const wchar_t* title : {L"WWWWWWWWWWWW", L"WWWWWWWWWWWWW", L"mmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmm"}) {
        page(title).draw();
        EXPECT_TRUE(shown({280, 0, 320, 44}) == blankPicture(40, 44, 0)) << title;
    }
}

TEST_F(PageLooks, OfAChangedTitleShowNothingOfTheOldOne) {
    Screen& changing = page(L"Screen & lock"); // nearly as wide as thirteen x
    changing.draw();
    changing.setTitle(L"Wi-Fi");
    const Picture changed = shown(HEADER);
    page(L"Wi-Fi").draw();
    EXPECT_TRUE(matchesPicture(changed, shown(HEADER), "header-changed-title"));
}

TEST_F(PageLooks, OfPressedButtonsLightUp) {
    Screen& one = page(L"");
    one.showLanguage = 1;
    one.draw();
    EXPECT_TRUE(matchesGolden(held(one, 28, 23, {6, 1, 50, 45}), "header-pressed-back"));
    one.draw();
    EXPECT_TRUE(matchesGolden(held(one, 68, 23, {46, 1, 90, 45}), "header-pressed-exit"));
    one.draw();
    EXPECT_TRUE(matchesGolden(held(one, 301, 23, {276, 1, 320, 45}), "header-pressed-language"));
    one.showExit = 0;
    one.showHome = 1;
    one.draw();
    EXPECT_TRUE(matchesGolden(held(one, 68, 23, {46, 1, 90, 45}), "header-pressed-home"));
}

TEST_F(PageLooks, OfThePinPadShowEachDigitInItsBox) {
    draw_screenLock();
    EXPECT_TRUE(matchesTextGolden(shown({0, 0, 320, 240}), "pin-pad"));
    type({tA_screenLockKeyboard_button1});
    EXPECT_TRUE(matchesTextGolden(shown(BOXES), "pin-pad-1-digit"));
    type({tA_screenLockKeyboard_button0});
    EXPECT_TRUE(matchesTextGolden(shown(BOXES), "pin-pad-2-digits"));
    type({tA_screenLockKeyboard_button8});
    EXPECT_TRUE(matchesTextGolden(shown(BOXES), "pin-pad-3-digits"));
    type({tA_screenLockKeyboard_button4});
    EXPECT_TRUE(matchesTextGolden(shown(BOXES), "pin-pad-4-digits"));
}

// Every digit in every box: none may leave a pixel, and none may take one of a box's lines along.
TEST_F(PageLooks, OfThePinPadAfterDelAreThoseBeforeTheDigit) {
    draw_screenLock();
    const TouchArea* const digits[] = {&tA_screenLockKeyboard_button0, &tA_screenLockKeyboard_button1,
                                       &tA_screenLockKeyboard_button2, &tA_screenLockKeyboard_button3,
                                       &tA_screenLockKeyboard_button4, &tA_screenLockKeyboard_button5,
                                       &tA_screenLockKeyboard_button6, &tA_screenLockKeyboard_button7,
                                       &tA_screenLockKeyboard_button8, &tA_screenLockKeyboard_button9};
    for (int box = 0; box < 4; ++box) {
        const Picture before = shown({0, 0, 320, 240});
        const Picture boxesBefore = shown(BOXES);
        for (const TouchArea* digit : digits) {
            type({*digit});
            EXPECT_TRUE(shown(BOXES) != boxesBefore) << box;
            type({tA_screenLockKeyboard_buttonDel});
            EXPECT_TRUE(matchesPicture(shown({0, 0, 320, 240}), before, "pin-pad-after-del")) << box;
        }
        type({tA_screenLockKeyboard_button8});
    }
}

TEST_F(PageLooks, OfThePinPadWithNothingTypedStayAfterDel) {
    draw_screenLock();
    const Picture before = shown({0, 0, 320, 240});
    type({tA_screenLockKeyboard_buttonDel});
    EXPECT_TRUE(matchesPicture(shown({0, 0, 320, 240}), before, "pin-pad-after-vain-del"));
}
