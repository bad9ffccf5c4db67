// The road of a touch through a page.
#include "tests/unit/page_desk.h"

#include <gtest/gtest.h>
#include <string>

namespace {

class PageTouch : public PageDesk {};

TEST_F(PageTouch, ATouchAtFortyOneGoesToTheWidgetsAndOneAtFortyToTheHeader) {
    display().touchArea = nullptr;
    upper.touchArea = {0, 320, 20, 100};
    EXPECT_EQ(touch(20, 41), pressed("Upper", 60, "upper"));
    const std::string back = touch(20, 40);
    EXPECT_EQ(back.rfind("drawPNG(10, 5, 0, 0, ", 0), 0U) << back;
}

TEST_F(PageTouch, OffersATouchToTheWidgetsUntilOneTakesIt) {
    page.widgets = &lower;
    EXPECT_EQ(touch(50, 80), pressed("Upper", 60, "upper"));
    EXPECT_EQ(page.widgets, &upper) << "the cursor stays on the one that took it";
    EXPECT_EQ(touch(50, 140), pressed("Lower", 120, "lower"));
    EXPECT_EQ(page.widgets, &lower);
    page.widgets = &upper;
    EXPECT_EQ(touch(300, 230), "");
    EXPECT_EQ(page.widgets, &lower) << "or at the tail";
}

TEST_F(PageTouch, WithoutWidgetsDrawsItsHeaderAndIgnoresTouchesBelow) {
    page.widgets = nullptr;
    page.draw();
    EXPECT_EQ(desk.take().find("drawWidget"), std::string::npos);
    EXPECT_EQ(touch(50, 80), "");
    EXPECT_EQ(page.widgets, nullptr);
}

struct HeaderPlace {
    int x, y;
    bool hit;
};

TEST_F(PageTouch, TheBackButtonsPlaceIncludesItsUpperLeftAndExcludesItsLowerRightEdge) {
    const std::string log = "drawPNG(10, 5, 0, 0, " + std::to_string(backImagePressedPng) +
                            ")\nwaitForPenUp()\ndrawPNG(10, 5, 0, 0, " + std::to_string(backImagePng) + ")\nonBack()\n";
    page.showExit = 0;
    for (const HeaderPlace& place :
         {HeaderPlace{10, 20, true},
          {9, 20, false},
          {45, 20, true},
          {46, 20, false},
          {20, 5, true},
          {20, 4, false},
          {20, 40, true}})
        EXPECT_EQ(touch(place.x, place.y), place.hit ? log : "") << place.x << ',' << place.y;
}

TEST_F(PageTouch, AGrayedBackButtonDoesNothing) {
    page.showBack = 0;
    EXPECT_EQ(touch(20, 20), "");
}

TEST_F(PageTouch, HomeWorksOnlyWithoutExit) {
    page.showExit = 0;
    page.showHome = 1;
    page.onHome = [] { note("onHome()"); };
    const std::string log = "drawPNG(50, 5, 0, 0, 3)\nwaitForPenUp()\ndrawPNG(50, 5, 0, 0, 1)\nonHome()\n";
    for (const HeaderPlace& place :
         {HeaderPlace{50, 20, true}, {49, 20, false}, {85, 20, true}, {86, 20, false}, {60, 5, true}, {60, 4, false}})
        EXPECT_EQ(touch(place.x, place.y), place.hit ? log : "") << place.x << ',' << place.y;
    page.onHome = nullptr;
    EXPECT_EQ(touch(60, 20), "drawPNG(50, 5, 0, 0, 3)\nwaitForPenUp()\ndrawPNG(50, 5, 0, 0, 1)\n");
    page.showHome = 0;
    page.showHomeGrayed = 1;
    EXPECT_EQ(touch(60, 20), "");
}

TEST_F(PageTouch, TheLanguageButtonRunsThePickerAndThenTheCallbackOrTheDrawing) {
    page.showLanguage = 1;
    page.onLanguage = [] { note("onLanguage()"); };
    const std::string log = "drawPNG(283, 5, 0, 0, 5)\nwaitForPenUp()\ndrawPNG(283, 5, 0, 0, 4)\n"
                            "system(\"./ostrel/language\")\nlcd_clear(0)\n";
    for (const HeaderPlace& place : {HeaderPlace{283, 20, true}, {282, 20, false}, {318, 20, true}, {319, 20, false}})
        EXPECT_EQ(touch(place.x, place.y), place.hit ? log + "onLanguage()\n" : "") << place.x << ',' << place.y;
    page.onLanguage = nullptr;
    const std::string redrawn = touch(300, 20);
    EXPECT_EQ(redrawn.rfind(log + readOfRtdev("ShowPass"), 0), 0U) << redrawn;
}

TEST_F(PageTouch, TheExitButtonEndsTheProcessAlsoWhenHomeSharesItsPlace) {
    page.showHome = 1;
    page.onExit = [] { note("onExit()"); };
    EXPECT_EXIT(
        {
            atexit([] { fputs(display().take().c_str(), stderr); });
            page.getTouch(60, 20);
        },
        ::testing::ExitedWithCode(0),
        "^drawPNG\\(50, 5, 0, 0, [0-9]+\\)\nwaitForPenUp\\(\\)\ndrawPNG\\(50, 5, 0, 0, [0-9]+\\)\nonExit\\(\\)\n"
        "lcd_clear\\(0\\)\n$");
}

TEST_F(PageTouch, TheExitButtonWithoutACallbackEndsTheProcessAllTheSame) {
    EXPECT_EXIT(
        {
            atexit([] { fputs(display().take().c_str(), stderr); });
            page.getTouch(85, 5);
        },
        ::testing::ExitedWithCode(0), "waitForPenUp\\(\\)\ndrawPNG\\(50, 5, 0, 0, [0-9]+\\)\nlcd_clear\\(0\\)\n$");
}

TEST_F(PageTouch, AnyDispatchedTouchRestartsTheIdleCount) {
    for (const auto& [x, y] : {std::pair{300, 230}, {100, 20}, {50, 80}}) {
        blCnt = 500;
        touch(x, y);
        EXPECT_EQ(blCnt, 0);
    }
}

TEST_F(PageTouch, TheTouchThatWakesThePanelDoesNothingElse) {
    locked = 1;
    blCnt = 500;
    display().logPen = true;
    display().pen = {{50, 80}, {51, 80}, {-1, -1}};
    EXPECT_EQ(
        touch(50, 80), "turnOn()\nreadX(50)\nreadY(80)\n"
                       "readX(51)\nreadY(80)\nusleep(1000)\n"
                       "readX(-1)\nreadY(-1)\nusleep(1000)\n"
                       "sleep(1)\n");
    EXPECT_FALSE(isLocked());
    EXPECT_EQ(blCnt, 0);
    EXPECT_EQ(returnNext, 2);
}

TEST_F(PageTouch, AWakingTouchThatHasEndedIsReadOnce) {
    locked = 1;
    display().logPen = true;
    EXPECT_EQ(touch(50, 80), "turnOn()\nreadX(-1)\nreadY(-1)\nsleep(1)\n");
}

TEST_F(PageTouch, TheWakePathsPanelEndsAtItsEdges) {
    const struct {
        int x, y;
        bool down;
    } points[] = {{1, 1, true},      {0, 1, false},     {1, 0, false},    {319, 239, true},
                  {320, 239, false}, {319, 240, false}, {-5, 100, false}, {100, -5, false}};
    for (const auto& point : points) {
        locked = 1;
        display().penRead = 0;
        display().pen = {{point.x, point.y}};
        fakeSleep().sleptUs = 0;
        touch(50, 80);
        EXPECT_EQ(fakeSleep().sleptUs, point.down ? 1001000U : 1000000U) << point.x << ',' << point.y;
    }
}

TEST_F(PageTouch, ExactlyTwoTouchesAfterAWakeUpAreSwallowed) {
    locked = 1;
    touch(50, 80);
    blCnt = 3;
    EXPECT_EQ(touch(50, 80), "waitForPenUp()\n");
    EXPECT_EQ(touch(20, 20), "waitForPenUp()\n");
    EXPECT_EQ(blCnt, 3) << "a swallowed touch does not restart the count";
    EXPECT_EQ(touch(50, 80), pressed("Upper", 60, "upper"));
}

TEST_F(PageTouch, WhileThePadIsUpEvenTheHeaderBelongsToIt) {
    desk.set("PIN", "1234");
    draw_screenLock();
    lockScreen = 1;
    desk.take();
    EXPECT_EQ(touch(20, 20), "");
    EXPECT_EQ(touch(50, 80), "");
    fakeSleep().log = false;
    EXPECT_EQ(
        touch(40, 116), "drawWidget(type 0 at 3,94 75x45 selected 1 \"1\")\n"
                        "drawWidget(type 0 at 3,94 75x45 selected 0 \"1\")\n"
                        "drawFontBigWhiteString(\"1\", 110, 37)\n");
}

TEST_F(PageTouch, SwallowingComesBeforeThePad) {
    lockScreen = 1;
    returnNext = 1;
    EXPECT_EQ(touch(40, 116), "waitForPenUp()\n");
    EXPECT_EQ(lockPassCnt, 0);
}

TEST_F(PageTouch, WhileTheKeyboardIsShownHeaderAndWidgetsReceiveNothing) {
    page.keyboard.active = 1;
    isNumericMode = 1;
    page.keyboard.layoutMode = 2;
    fakeSleep().log = false;
    // The keypad's dead "." hands the touch back at once.
    EXPECT_EQ(touch(240, 180), "");
    fakeSleep().duringSleep = [this](uint64_t) { page.keyboard.active = 0; };
    EXPECT_EQ(touch(300, 20), "") << "the header's language place";
    fakeSleep().duringSleep = nullptr;
    isNumericMode = 0;
}

TEST_F(PageTouch, ABackCallbackThatReturnsLeavesTheOtherButtonsAlone) {
    page.showLanguage = 1;
    const std::string log = touch(20, 20);
    EXPECT_EQ(log.find("system"), std::string::npos);
    EXPECT_NE(log.find("onBack()"), std::string::npos);
}

} // namespace
