#include "gui/program_globals.h"
#include "tests/unit/page_desk.h"

#include <gtest/gtest.h>
#include <memory>
#include <new>
#include <stdexcept>

namespace {

class Page : public PageDesk {};

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

TEST(ProgramGlobals, AreZeroAtLoadButMode) {
    EXPECT_EQ(mode, 1);
    EXPECT_EQ(filed + i + CAP + keyPress + textCnt + textChanged + keyboardEnabled + keyboardReturnFill + kb_cap, 0);
    EXPECT_EQ(keyBoardReturnFunc, nullptr);
    EXPECT_EQ(keyboardText[0], 0);
    EXPECT_EQ(touchWidget.width, 0);
    EXPECT_EQ(lockReturn, 0);
}

} // namespace
