#include "gui/program_globals.h"
#include "gui/screen.h"
#include "tests/support/fake_system.h"
#include "tests/unit/lock_desk.h"

#include <gtest/gtest.h>
#include <memory>
#include <new>
#include <stdexcept>

namespace {

void note(const char* line) {
    display().calls.emplace_back(line);
}

// A page with two buttons, "Upper" at y 60 and "Lower" at y 120, each 100x40 at x 20.
class Page : public ::testing::Test {
  protected:
    Page() {
        fakeSystem() = {};
        upper.callback = [] { note("upper()"); };
        lower.callback = [] { note("lower()"); };
        for (Widget* const widget : {&upper, &lower}) {
            widget->record.password = 0;
            widget->record.touchable = 1;
        }
        upper.prev = nullptr;
        upper.next = &lower;
        lower.prev = &upper;
        lower.next = nullptr;
        page.widgets = &upper;
        page.onBack = [] { note("onBack()"); };
        page.keyboard.returnHandler = [] { note("returnHandler()"); };
        fakeSleep().log = true;
        desk.take();
    }
    ~Page() override { page.widgets = &upper; }

    std::string touch(int x, int y) {
        page.getTouch(x, y);
        return desk.take();
    }

    LockDesk desk;
    Widget upper{0, 20, 60, 0, 0, 0, 100, 40, 20.0F, 0, L"Upper"};
    Widget lower{0, 20, 120, 0, 0, 0, 100, 40, 20.0F, 0, L"Lower"};
    Screen page{L"Network"};
};

const std::string UPPER = "type 0 at 20,60 100x40 selected 0 \"Upper\")\n";
const std::string LOWER = "type 0 at 20,120 100x40 selected 0 \"Lower\")\n";

std::string pressed(const std::string& label, int y, const std::string& callback) {
    const std::string place = "drawWidget(type 0 at 20," + std::to_string(y) + " 100x40 selected ";
    std::string log = place;
    log += "1 \"" + label + "\")\nwaitForPenUp()\n";
    log += place;
    return log + "0 \"" + label + "\")\n" + callback + "()\n";
}

std::string readOfRtdev(const std::string& name) {
    return "open(\"/dev/apsoc_nvram\", O_RDONLY) = 700\nioctl(700, 0x1001, index 2, \"" + name + "\")\nclose(700)\n";
}

const std::string HEADER_BUTTON_IMAGES = "loadPNG(/ostrel/back_grayed_35.png)\n"
                                         "loadPNG(/ostrel/home_35.png)\n"
                                         "loadPNG(/ostrel/home_grayed_35.png)\n"
                                         "loadPNG(/ostrel/homepressed_35.png)\n"
                                         "loadPNG(/ostrel/language_35.png)\n"
                                         "loadPNG(/ostrel/languagepressed_35.png)\n"
                                         "loadPNG(/ostrel/back_35.png)\n"
                                         "loadPNG(/ostrel/backimagePressed_35.png)\n"
                                         "loadPNG(/ostrel/cross_35.png)\n"
                                         "loadPNG(/ostrel/exitimagePressed_35.png)\n";
const std::string KEYBOARD_IMAGES = "loadPNG(/ostrel/back_35.png)\nloadPNG(/ostrel/backimagePressed_35.png)\n";

TEST(PageConstruction, LoadsTheHeaderImagesOncePerProcess) {
    const LockDesk desk;
    notLoaded = 1;
    Widget widget(0, 0, 0, 0, 0, 0, L"");
    const auto build = [&widget] {
        display().calls.clear();
        auto page = std::make_unique<Screen>(L"Title");
        page->widgets = &widget;
        widget.prev = widget.next = nullptr;
        page->keyboard.returnHandler = [] {};
        return page;
    };
    const auto first = build();
    const std::string opening = KEYBOARD_IMAGES + "libOstrelGuiInit()\nsetScreenLockHandler(handler)\n";
    EXPECT_EQ(display().take(), opening + HEADER_BUTTON_IMAGES);
    EXPECT_EQ(notLoaded, 0);
    // The store counts on over all the tests of this process; the four follow one another.
    EXPECT_EQ(backImagePressedPng, backImagePng + 1);
    EXPECT_EQ(exitImagePng, backImagePng + 2);
    EXPECT_EQ(exitImagePressedPng, backImagePng + 3);
    EXPECT_EQ(display().idleHandler, &slkHandle);

    const auto second = build();
    EXPECT_EQ(display().take(), opening);
}

TEST(PageConstruction, SetsWhatATitledPageStartsWith) {
    const LockDesk desk;
    alignas(Screen) static unsigned char storage[sizeof(Screen)];
    memset(storage, 0xA5, sizeof storage);
    asm volatile("" : : "r"(storage) : "memory");
    auto* const page = new (storage) Screen(L"Title");
    EXPECT_STREQ(page->title, L"Title");
    EXPECT_EQ(page->widgets, nullptr);
    EXPECT_EQ(page->onExit, nullptr);
    EXPECT_EQ(page->onLanguage, nullptr);
    EXPECT_EQ(page->onHome, nullptr);
    EXPECT_EQ(page->showBack, 1);
    EXPECT_EQ(page->showExit, 1);
    EXPECT_EQ(page->showLanguage, 0);
    EXPECT_EQ(page->showHome, 0);
    EXPECT_EQ(page->showHomeGrayed, 0);
    EXPECT_EQ(page->clearOnDraw, 1);
    void (*untouched)();
    memset(&untouched, 0xA5, sizeof untouched);
    EXPECT_EQ(page->onBack, untouched) << "onBack stays as storage holds it";
}

TEST(PageConstruction, UntitledAndCopiedPagesSetNothing) {
    const LockDesk desk;
    alignas(Screen) static unsigned char storage[2][sizeof(Screen)];
    memset(storage, 0xA5, sizeof storage);
    asm volatile("" : : "r"(storage) : "memory");
    const auto* const untitled = new (storage[0]) Screen;
    EXPECT_EQ(display().take(), KEYBOARD_IMAGES + "libOstrelGuiInit()\n");
    const auto* const copy = new (storage[1]) Screen(*untitled);
    EXPECT_EQ(display().take(), KEYBOARD_IMAGES);
    for (const Screen* const page : {untitled, copy}) {
        EXPECT_EQ(page->showBack, 0xA5);
        EXPECT_EQ(page->clearOnDraw, 0xA5);
        EXPECT_EQ(static_cast<uint32_t>(page->title[0]), 0xA5A5A5A5U);
        EXPECT_EQ(page->keyboard.active, 0);
    }
}

TEST_F(Page, ATitleOfAnyLengthIsCutAtItsBuffersEnd) {
    for (const size_t length : {78U, 79U, 80U, 500U}) {
        const std::wstring title(length, L'x');
        page.setTitle(title.c_str());
        EXPECT_EQ(wcslen(page.title), std::min<size_t>(length, 79)) << length;
        EXPECT_NE(page.widgets, nullptr);
    }
}

TEST_F(Page, ANewTitleErasesTheWidthOfThirteenLetters) {
    page.setTitle(L"Wi-Fi");
    EXPECT_EQ(desk.take(), "unDrawTitle(\"xxxxxxxxxxxxx\")\ndrawFontBigWhiteString(\"Wi-Fi\", 90, 10)\n");
    EXPECT_STREQ(page.title, L"Wi-Fi");
}

TEST_F(Page, DrawsSettingsTitleHeaderAndWidgetsInThisOrder) {
    page.widgets = &lower;
    page.draw();
    EXPECT_EQ(
        desk.take(), readOfRtdev("ShowPass") + "setShowPasswords(false)\n" + readOfRtdev("ScreenTimeout") +
                         "lcd_clear(0)\ndrawFontBigWhiteString(\"Network\", 90, 10)\n"
                         "drawPNG(10, 5, 0, 0, " +
                         std::to_string(backImagePng) + ")\ndrawPNG(50, 5, 0, 0, " + std::to_string(exitImagePng) +
                         ")\ndrawWidget(" + UPPER + "drawWidget(" + LOWER);
    EXPECT_EQ(page.widgets, &lower) << "the cursor ends at the tail";
}

TEST_F(Page, DrawingReadsTheSettingsAndRestartsTheIdleCount) {
    fakeSettings().working[2]["ShowPass"] = "1";
    fakeSettings().working[2]["ScreenTimeout"] = "300";
    blCnt = 77;
    lockScreen = 1;
    passUnset = 1;
    page.clearOnDraw = 0;
    page.draw();
    const std::string log = desk.take();
    EXPECT_NE(log.find("setShowPasswords(true)\n"), std::string::npos);
    EXPECT_EQ(log.find("lcd_clear"), std::string::npos);
    EXPECT_EQ(ScreenTime, 300);
    EXPECT_EQ(blCnt, 0);
    EXPECT_EQ(lockScreen, 0);
    EXPECT_EQ(passUnset, 0);

    fakeSettings().working[2]["ScreenTimeout"] = "soon";
    page.draw();
    EXPECT_EQ(ScreenTime, 0);
}

TEST_F(Page, DrawsTheHeaderOfEveryCombinationOfFlags) {
    const std::string back = "drawPNG(10, 5, 0, 0, " + std::to_string(backImagePng) + ")\n";
    const std::string exit = "drawPNG(50, 5, 0, 0, " + std::to_string(exitImagePng) + ")\n";
    for (unsigned flags = 0; flags < 32; ++flags) {
        page.showBack = flags & 1U;
        page.showHome = flags & 2U;
        page.showHomeGrayed = flags & 4U;
        page.showLanguage = flags & 8U;
        page.showExit = flags & 16U;
        page.drawBaseScreen(1);
        EXPECT_EQ(
            desk.take(), (page.showBack != 0 ? back : "drawPNG(10, 5, 0, 0, 0)\n") +
                             (page.showHome != 0 ? "drawPNG(50, 5, 0, 0, 1)\n" : "") +
                             (page.showHomeGrayed != 0 ? "drawPNG(50, 5, 0, 0, 2)\n" : "") +
                             (page.showLanguage != 0 ? "drawPNG(283, 5, 0, 0, 4)\n" : "") +
                             (page.showExit != 0 ? exit : ""));
    }
}

TEST_F(Page, AnIntegerThrownWhileDrawingIsPrintedAndEndsTheDrawing) {
    display().beforeCall = [](const std::string& operation) {
        if (operation == "drawPNG")
            throw 42;
    };
    ::testing::internal::CaptureStdout();
    page.draw();
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "Exception at 42");
    EXPECT_EQ(desk.take().find("drawWidget"), std::string::npos);
    display().beforeCall = nullptr;
}

TEST_F(Page, AnyOtherExceptionPassesOn) {
    display().beforeCall = [](const std::string& operation) {
        if (operation == "lcd_clear")
            throw std::runtime_error("no");
    };
    EXPECT_THROW(page.draw(), std::runtime_error);
    display().beforeCall = nullptr;
}

TEST_F(Page, UndrawErasesFromHeadToTail) {
    page.widgets = &lower;
    page.undraw();
    EXPECT_EQ(desk.take(), "unDrawWidget(" + UPPER + "unDrawWidget(" + LOWER);
    EXPECT_EQ(page.widgets, &lower);
}

TEST_F(Page, DestroyingAPageErasesItsWidgetsAndEndsItsKeyboard) {
    auto other = std::make_unique<Screen>(L"Other");
    other->widgets = &upper;
    other->keyboard.returnHandler = [] { note("returnHandler()"); };
    desk.take();
    other.reset();
    EXPECT_EQ(desk.take(), "unDrawWidget(" + UPPER + "unDrawWidget(" + LOWER + "lcd_clear(0)\nreturnHandler()\n");
}

TEST_F(Page, ATouchAtFortyOneGoesToTheWidgetsAndOneAtFortyToTheHeader) {
    display().touchArea = nullptr;
    upper.touchArea = {0, 320, 20, 100};
    EXPECT_EQ(touch(20, 41), pressed("Upper", 60, "upper"));
    const std::string back = touch(20, 40);
    EXPECT_EQ(back.rfind("drawPNG(10, 5, 0, 0, ", 0), 0U) << back;
}

TEST_F(Page, OffersATouchToTheWidgetsUntilOneTakesIt) {
    page.widgets = &lower;
    EXPECT_EQ(touch(50, 80), pressed("Upper", 60, "upper"));
    EXPECT_EQ(page.widgets, &upper) << "the cursor stays on the one that took it";
    EXPECT_EQ(touch(50, 140), pressed("Lower", 120, "lower"));
    EXPECT_EQ(page.widgets, &lower);
    page.widgets = &upper;
    EXPECT_EQ(touch(300, 230), "");
    EXPECT_EQ(page.widgets, &lower) << "or at the tail";
}

TEST_F(Page, WithoutWidgetsDrawsItsHeaderAndIgnoresTouchesBelow) {
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

TEST_F(Page, TheBackButtonsPlaceIncludesItsUpperLeftAndExcludesItsLowerRightEdge) {
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

TEST_F(Page, AGrayedBackButtonDoesNothing) {
    page.showBack = 0;
    EXPECT_EQ(touch(20, 20), "");
}

TEST_F(Page, HomeWorksOnlyWithoutExit) {
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

TEST_F(Page, TheLanguageButtonRunsThePickerAndThenTheCallbackOrTheDrawing) {
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

TEST_F(Page, TheExitButtonEndsTheProcessAlsoWhenHomeSharesItsPlace) {
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

TEST_F(Page, TheExitButtonWithoutACallbackEndsTheProcessAllTheSame) {
    EXPECT_EXIT(
        {
            atexit([] { fputs(display().take().c_str(), stderr); });
            page.getTouch(85, 5);
        },
        ::testing::ExitedWithCode(0), "waitForPenUp\\(\\)\ndrawPNG\\(50, 5, 0, 0, [0-9]+\\)\nlcd_clear\\(0\\)\n$");
}

TEST_F(Page, AnyDispatchedTouchRestartsTheIdleCount) {
    for (const auto& [x, y] : {std::pair{300, 230}, {100, 20}, {50, 80}}) {
        blCnt = 500;
        touch(x, y);
        EXPECT_EQ(blCnt, 0);
    }
}

TEST_F(Page, TheTouchThatWakesThePanelDoesNothingElse) {
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

TEST_F(Page, AWakingTouchThatHasEndedIsReadOnce) {
    locked = 1;
    display().logPen = true;
    EXPECT_EQ(touch(50, 80), "turnOn()\nreadX(-1)\nreadY(-1)\nsleep(1)\n");
}

TEST_F(Page, TheWakePathsPanelEndsAtItsEdges) {
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

TEST_F(Page, ExactlyTwoTouchesAfterAWakeUpAreSwallowed) {
    locked = 1;
    touch(50, 80);
    blCnt = 3;
    EXPECT_EQ(touch(50, 80), "waitForPenUp()\n");
    EXPECT_EQ(touch(20, 20), "waitForPenUp()\n");
    EXPECT_EQ(blCnt, 3) << "a swallowed touch does not restart the count";
    EXPECT_EQ(touch(50, 80), pressed("Upper", 60, "upper"));
}

TEST_F(Page, WhileThePadIsUpEvenTheHeaderBelongsToIt) {
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

TEST_F(Page, SwallowingComesBeforeThePad) {
    lockScreen = 1;
    returnNext = 1;
    EXPECT_EQ(touch(40, 116), "waitForPenUp()\n");
    EXPECT_EQ(lockPassCnt, 0);
}

TEST_F(Page, WhileTheKeyboardIsShownHeaderAndWidgetsReceiveNothing) {
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

TEST_F(Page, ABackCallbackThatReturnsLeavesTheOtherButtonsAlone) {
    page.showLanguage = 1;
    const std::string log = touch(20, 20);
    EXPECT_EQ(log.find("system"), std::string::npos);
    EXPECT_NE(log.find("onBack()"), std::string::npos);
}

TEST(ProgramGlobals, AreZeroAtLoadButMode) {
    EXPECT_EQ(mode, 1);
    EXPECT_EQ(filed + i + CAP + keyPress + textCnt + textChanged + keyboardEnabled + keyboardReturnFill + kb_cap, 0);
    EXPECT_EQ(keyBoardReturnFunc, nullptr);
    EXPECT_EQ(keyboardText[0], 0);
    EXPECT_EQ(touchWidget.width, 0);
    EXPECT_EQ(lockReturn, 0);
}

} // namespace
