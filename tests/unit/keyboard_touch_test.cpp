#include "tests/support/keyboard_desk.h"

namespace {

class KeyboardTouch : public KeyboardDesk {
  protected:
    KeyboardTouch() { fakeSleep().log = false; }
};

constexpr auto LooksAgain = KeyboardDesk::After::LooksAgain;
constexpr auto Returned = KeyboardDesk::After::Returned;

TEST_F(KeyboardTouch, OnASpareColumnDoesNothingInALayoutThatTheProgramMadeUp) {
    begin(1);
    keyboard.layoutMode = 5; // without the keypad's flag
    EXPECT_EQ(touch(17, 130), LooksAgain);
    EXPECT_EQ(touch(290, 130), LooksAgain);
    EXPECT_EQ(display().take(), "");
    EXPECT_EQ(touch(17, 99), LooksAgain);
    EXPECT_EQ(shown(), "`");
}

TEST_F(KeyboardTouch, TypesAHeldKeyOnlyWhenThePenHasLifted) {
    begin(1);
    std::string whileHeld = "not held";
    display().beforeCall = [&](const std::string& operation) {
        if (operation == "waitForPenUp")
            whileHeld = shown();
    };
    touch(48, 130);
    EXPECT_EQ(whileHeld, "");
    EXPECT_EQ(shown(), "w");
}

TEST_F(KeyboardTouch, TypesOnePressAfterAnotherInOneLoop) {
    begin(1);
    EXPECT_EQ(play({{30, 161}, {-1, -1}, {30, 161}, {203, 190}, {10, 190}}), Returned) << "ended beside the last row";
    EXPECT_EQ(shown(), "aan");
    EXPECT_EQ(keyboard.active, 1);
}

TEST_F(KeyboardTouch, LooksAtThePenEveryTwentyMilliseconds) {
    begin(1);
    fakeSleep().log = true;
    display().logPen = true;
    play({{-1, -1}, {100, 60}});
    EXPECT_EQ(
        display().take(), "readX(100)\nreadY(60)\nusleep(20000)\n"
                          "readX(-1)\nreadY(-1)\nusleep(20000)\n");
}

TEST_F(KeyboardTouch, ReturnsAtOnceFromAKeyboardThatIsNotShown) {
    begin(1);
    keyboard.active = 0;
    display().logPen = true;
    keyboard.getTouch(100, 130);
    EXPECT_EQ(display().take(), "");
}

const char* const SWITCH_PRESSED = "fillRect(6, 209, 65, 237, 15837)\n"
                                   "drawText(\"#@%\", 6, 214, 59, 1, 0, 20, 0, 1)\n"
                                   "waitForPenUp()\n"
                                   "fillRect(6, 209, 65, 237, 36509)\n"
                                   "drawText(\"#@%\", 6, 214, 59, 1, 0, 20, 0, 1)\n";

std::string keysOf(Keyboard& keyboard) {
    std::vector<std::string> kept;
    kept.swap(display().calls);
    keyboard.drawKeyboard();
    std::string keys = display().take();
    display().calls.swap(kept);
    return keys;
}

TEST_F(KeyboardTouch, SwitchesBetweenLettersAndSymbols) {
    begin(1);
    touch(30, 220);
    EXPECT_EQ(keyboard.layoutMode, 3);
    EXPECT_EQ(isSplMode, 1);
    EXPECT_EQ(
        display().take(), std::string(SWITCH_PRESSED) +
                              "fillRect(6, 209, 65, 237, 36509)\n"
                              "drawText(\"abc\", 6, 214, 59, 1, 0, 20, 0, 1)\n" +
                              keysOf(keyboard));
    touch(30, 220);
    EXPECT_EQ(keyboard.layoutMode, 1);
    EXPECT_EQ(isSplMode, 0);
    EXPECT_EQ(
        display().take(), std::string(SWITCH_PRESSED) +
                              "fillRect(6, 209, 65, 237, 36509)\n"
                              "drawText(\"#@%\", 6, 214, 59, 1, 0, 20, 0, 1)\n" +
                              keysOf(keyboard));
}

TEST_F(KeyboardTouch, RedrawsTheKeysWhenAMadeUpLayoutIsSwitched) {
    begin(1);
    keyboard.layoutMode = 6;
    touch(30, 220);
    EXPECT_EQ(keyboard.layoutMode, 6);
    EXPECT_EQ(display().take(), SWITCH_PRESSED + keysOf(keyboard));
}

TEST_F(KeyboardTouch, KeepsTheCaseKeyPressedWhileCapitalsAreOn) {
    begin(1);
    touch(90, 220);
    EXPECT_EQ(isCap, 1);
    EXPECT_EQ(kbCapChanged, 0);
    kbCapChanged = 1; // as while the case changed: the digits are not drawn
    const std::string capitals = keysOf(keyboard);
    kbCapChanged = 0;
    EXPECT_EQ(
        display().take(), "fillRect(68, 209, 110, 237, 15837)\n"
                          "drawText(\"CAP\", 68, 214, 45, 1, 0, 20, 0, 1)\n"
                          "waitForPenUp()\n" +
                              capitals);
    EXPECT_EQ(capitals.find("\"1\""), std::string::npos);
    EXPECT_NE(capitals.find("\"Q\""), std::string::npos);

    touch(17, 130);
    EXPECT_EQ(shown(), "Q");
    EXPECT_EQ(isCap, 1);
    display().calls.clear();

    touch(90, 220);
    EXPECT_EQ(isCap, 0);
    kbCapChanged = 1;
    const std::string small = keysOf(keyboard);
    kbCapChanged = 0;
    EXPECT_EQ(
        display().take(), "fillRect(68, 209, 110, 237, 15837)\n"
                          "drawText(\"CAP\", 68, 214, 45, 1, 0, 20, 0, 1)\n"
                          "waitForPenUp()\n"
                          "fillRect(68, 209, 110, 237, 36509)\n"
                          "drawText(\"CAP\", 68, 214, 45, 1, 0, 20, 0, 1)\n" +
                              small);
}

TEST_F(KeyboardTouch, ChangesTheCaseUnderTheSymbolsWithoutDrawingThem) {
    begin(3);
    touch(90, 220);
    EXPECT_EQ(isCap, 1);
    EXPECT_EQ(
        display().take(), "fillRect(68, 209, 110, 237, 15837)\n"
                          "drawText(\"CAP\", 68, 214, 45, 1, 0, 20, 0, 1)\n"
                          "waitForPenUp()\n");
}

TEST_F(KeyboardTouch, TypesASpace) {
    begin(1);
    touch(160, 220);
    EXPECT_EQ(
        display().take(), "fillRect(113, 209, 206, 237, 15837)\n"
                          "drawText(\"Space\", 113, 214, 90, 1, 0, 20, 0, 1)\n"
                          "waitForPenUp()\n"
                          "fillRect(113, 209, 206, 237, 36509)\n"
                          "drawText(\"Space\", 113, 214, 90, 1, 0, 20, 0, 1)\n"
                          "fillRect(50, 22, 52, 42, 65535)\n"
                          "drawText(\" \", 50, 24, 10, 1, 0, 20, 0, 0)\n"
                          "fillRect(60, 22, 62, 42, 1405)\n");
    EXPECT_EQ(shown(), " ");
}

TEST_F(KeyboardTouch, DeletesTheLastCharacter) {
    begin(1, "ab");
    touch(230, 220);
    EXPECT_EQ(
        display().take(), "fillRect(209, 209, 251, 237, 15837)\n"
                          "drawText(\"DEL\", 209, 214, 45, 1, 0, 20, 0, 1)\n"
                          "waitForPenUp()\n"
                          "fillRect(209, 209, 251, 237, 36509)\n"
                          "drawText(\"DEL\", 209, 214, 45, 1, 0, 20, 0, 1)\n"
                          "fillRect(60, 15, 70, 50, 65535)\n"
                          "fillRect(70, 22, 72, 42, 65535)\n"
                          "drawText(\"\", 60, 24, 0, 1, 0, 20, 0, 0)\n"
                          "fillRect(60, 22, 62, 42, 1405)\n");
    EXPECT_EQ(shown(), "a");
}

TEST_F(KeyboardTouch, ShowsDonePressedAndEndsTheEntryAfterOneMoreLookAtThePen) {
    begin(1, "ab");
    fakeSleep().log = true;
    display().logPen = true;
    touch(300, 220);
    EXPECT_EQ(
        display().take(), "fillRect(254, 209, 313, 237, 15837)\n"
                          "drawText(\"Done\", 254, 214, 59, 1, 0, 20, 0, 1)\n"
                          "waitForPenUp()\n"
                          "fillRect(254, 209, 313, 237, 36509)\n"
                          "drawText(\"Done\", 254, 214, 59, 1, 0, 20, 0, 1)\n"
                          "lcd_clear(0)\n"
                          "returnHandler()\n"
                          "readX(-1)\n"
                          "readY(-1)\n"
                          "usleep(20000)\n");
    EXPECT_EQ(keyboard.active, 0);
}

TEST_F(KeyboardTouch, ShowsTheBackButtonPressedAndEndsTheEntryAfterOneMoreLookAtThePen) {
    begin(1, "ab");
    fakeSleep().log = true;
    display().logPen = true;
    touch(20, 30);
    EXPECT_EQ(
        display().take(), "fillRect(5, 15, 40, 50, 0)\n"
                          "drawPNG(5, 15, 1, 0, 1)\n"
                          "waitForPenUp()\n"
                          "fillRect(5, 15, 40, 50, 0)\n"
                          "drawPNG(5, 15, 1, 0, 0)\n"
                          "lcd_clear(0)\n"
                          "returnHandler()\n"
                          "readX(-1)\n"
                          "readY(-1)\n"
                          "usleep(20000)\n");
}

TEST_F(KeyboardTouch, ShowsTheKeypadsBackButtonPressedInItsOwnPlace) {
    begin(5, "12");
    touch(20, 30);
    EXPECT_EQ(
        display().take(), "fillRect(10, 13, 45, 48, 0)\n"
                          "drawPNG(10, 13, 1, 0, 1)\n"
                          "waitForPenUp()\n"
                          "fillRect(10, 13, 45, 48, 0)\n"
                          "drawPNG(10, 13, 1, 0, 0)\n"
                          "lcd_clear(0)\n"
                          "returnHandler()\n");
}

TEST_F(KeyboardTouch, DeletesOnTheKeypad) {
    begin(2, "12");
    touch(60, 180);
    EXPECT_EQ(
        display().take(), "fillRect(50, 166, 120, 196, 2879)\n"
                          "drawText(\"DEL\", 50, 172, 70, 1, 0, 20, 65535, 1)\n"
                          "waitForPenUp()\n"
                          "fillRect(50, 166, 120, 196, 1405)\n"
                          "drawText(\"DEL\", 50, 172, 70, 1, 0, 20, 65535, 1)\n"
                          "fillRect(65, 13, 75, 48, 65535)\n"
                          "fillRect(75, 19, 77, 39, 65535)\n"
                          "drawText(\"\", 65, 22, 0, 1, 0, 20, 0, 0)\n"
                          "fillRect(65, 19, 67, 39, 1405)\n");
    EXPECT_EQ(shown(), "1");
}

TEST_F(KeyboardTouch, ShowsTheKeypadsDonePressed) {
    begin(2, "12");
    touch(160, 220);
    EXPECT_EQ(
        display().take(), "fillRect(50, 203, 274, 233, 2879)\n"
                          "drawText(\"Done\", 50, 209, 224, 1, 0, 20, 65535, 1)\n"
                          "waitForPenUp()\n"
                          "fillRect(50, 203, 274, 233, 1405)\n"
                          "drawText(\"Done\", 50, 209, 224, 1, 0, 20, 65535, 1)\n"
                          "lcd_clear(0)\n"
                          "returnHandler()\n");
}

TEST_F(KeyboardTouch, TypesNoPointOnAPlainKeypadAndReturnsToThePage) {
    for (const int mode : {0, 2, 5}) {
        begin(mode, "12");
        EXPECT_EQ(touch(239, 181), Returned);
        EXPECT_EQ(shown(), "12");
        EXPECT_EQ(keyboard.active, 1);
        EXPECT_EQ(display().take(), "");
    }
}

TEST_F(KeyboardTouch, BlinksEveryFiftyLooksAtALiftedPen) {
    begin(1);
    const auto waitLooks = [&](size_t count) { play(std::vector<std::pair<int, int>>(count, {-1, -1})); };
    waitLooks(49);
    EXPECT_EQ(display().take(), "");
    waitLooks(1);
    EXPECT_EQ(display().take(), "fillRect(50, 22, 52, 42, 65535)\n");
    waitLooks(49);
    EXPECT_EQ(display().take(), "");
    waitLooks(1);
    EXPECT_EQ(display().take(), "fillRect(50, 22, 52, 42, 1405)\n");
    EXPECT_EQ(keyboard.blinkCounter, 0);
}

TEST_F(KeyboardTouch, KeepsTheCursorOnForSeventyFiveLooksAfterAKey) {
    begin(2);
    touch(85, 70);
    display().calls.clear();
    const auto waitLooks = [&](size_t count) { play(std::vector<std::pair<int, int>>(count, {-1, -1})); };
    waitLooks(74);
    EXPECT_EQ(display().take(), "");
    waitLooks(1);
    EXPECT_EQ(display().take(), "fillRect(65, 19, 67, 39, 65535)\n");
    waitLooks(50);
    EXPECT_EQ(display().take(), "fillRect(65, 19, 67, 39, 1405)\n");
}

TEST_F(KeyboardTouch, CountsAPenBeyondTheLargestPanelAsLiftedAndNoneWithin) {
    begin(1);
    const struct {
        int x, y, idle;
    } points[] = {{0, 100, 1},   {480, 100, 1}, {400, 0, 1}, {400, 320, 1}, {-1, -1, 1},
                  {479, 319, 0}, {400, 1, 0},   {479, 1, 0}, {1, 319, 0},   {1, 1, 0}};
    for (const auto& point : points) {
        keyboard.blinkCounter = 0;
        touch(point.x, point.y);
        EXPECT_EQ(keyboard.blinkCounter, point.idle) << point.x << ',' << point.y;
    }
    EXPECT_EQ(display().take(), "");
}

TEST_F(KeyboardTouch, TellsOfShiftKeysOnStandardOutputOnly) {
    testing::internal::CaptureStdout();
    keyboard.leftShift_onTouch();
    keyboard.rightShift_onTouch();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "in left shift\nin right shift\n");
    EXPECT_EQ(display().take(), "");
}

} // namespace
