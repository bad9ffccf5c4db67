#include "tests/unit/lock_desk.h"

#include <gtest/gtest.h>

namespace {

std::string keyDrawn(const char* place, const char* label, int selected = 0) {
    return std::string("type 0 at ") + place + " selected " + std::to_string(selected) + " \"" + label + "\")\n";
}

// A key's place, a point well inside it, and what its label says.
struct Key {
    const char* label;
    const char* place;
    int x, y;
};
constexpr Key ONE{"1", "3,94 75x45", 40, 116};
constexpr Key TWO{"2", "80,94 75x45", 117, 116};
constexpr Key THREE{"3", "157,94 75x45", 195, 116};
constexpr Key FOUR{"4", "3,141 75x45", 40, 163};
constexpr Key FIVE{"5", "80,141 75x45", 117, 163};
constexpr Key SIX{"6", "157,141 75x45", 195, 163};
constexpr Key SEVEN{"7", "3,188 75x45", 40, 210};
constexpr Key EIGHT{"8", "80,188 75x45", 117, 210};
constexpr Key NINE{"9", "157,188 75x45", 195, 210};
constexpr Key DONE{"Done", "234,188 80x45", 274, 210};
constexpr Key ZERO{"0", "234,141 80x45", 274, 163};
constexpr Key DEL{"Del", "234,94 80x45", 274, 116};
constexpr Key IN_ORDER[] = {ONE, TWO, THREE, FOUR, FIVE, SIX, SEVEN, EIGHT, NINE, DONE, ZERO, DEL};

class PinPad : public ::testing::Test {
  protected:
    PinPad() {
        desk.set("PIN", "1234");
        draw_screenLock();
        lockScreen = 1;
        desk.take();
        fakeSleep().log = false;
    }

    // A tap: the pen lifts at the first look.
    std::string tap(const Key& key) {
        get_screenLock_touch(key.x, key.y);
        return desk.take();
    }

    LockDesk desk;
};

std::string pressedAndReleased(const Key& key) {
    return "drawWidget(" + keyDrawn(key.place, key.label, 1) + "drawWidget(" + keyDrawn(key.place, key.label, 0);
}

std::string digitShown(const char* digit, int x) {
    return std::string("drawFontBigWhiteString(\"") + digit + "\", " + std::to_string(x) + ", 37)\n";
}

TEST(PinPadDrawing, DrawsBoxesThenKeysThenAsksForTheirTouchAreas) {
    LockDesk desk;
    lockPassCnt = 3;
    std::string("987").copy(lockPass, 3);
    draw_screenLock();
    std::string expected = "drawRect(100, 30, 130, 65, 65535)\n"
                           "drawRect(130, 30, 160, 65, 65535)\n"
                           "drawRect(160, 30, 190, 65, 65535)\n"
                           "drawRect(190, 30, 220, 65, 65535)\n";
    for (const Key& key : IN_ORDER)
        expected += "drawWidget(" + keyDrawn(key.place, key.label);
    for (const Key& key : IN_ORDER)
        expected += "getTouchArea(" + keyDrawn(key.place, key.label);
    EXPECT_EQ(desk.take(), expected);
    EXPECT_EQ(lockPassCnt, 0);
    EXPECT_STREQ(lockPass, "987") << "stale digits stay";
}

TEST(PinPadDrawing, LeavesEveryOtherFieldOfAKeyAtZero) {
    LockDesk desk;
    draw_screenLock();
    WidgetRecord key = screenLockKeyboard_buttonDone;
    EXPECT_EQ(key.x, 234);
    EXPECT_STREQ(key.text, L"Done");
    key.x = key.y = key.width = key.height = 0;
    memset(key.text, 0, sizeof key.text);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(&key), sizeof key), std::string(sizeof key, '\0'));
    EXPECT_EQ(tA_screenLockKeyboard_buttonDone.left, 234);
    EXPECT_EQ(tA_screenLockKeyboard_buttonDone.bottom, 233);
}

TEST_F(PinPad, FirstFourDigitsFillTheBoxesLeftToRightAndAFifthOnlyAnimates) {
    EXPECT_EQ(tap(NINE), pressedAndReleased(NINE) + digitShown("9", 110));
    EXPECT_EQ(tap(EIGHT), pressedAndReleased(EIGHT) + digitShown("8", 140));
    EXPECT_EQ(tap(SEVEN), pressedAndReleased(SEVEN) + digitShown("7", 170));
    EXPECT_EQ(tap(SIX), pressedAndReleased(SIX) + digitShown("6", 200) + readOf("PIN"));
    EXPECT_EQ(lockPassCnt, 4);
    EXPECT_EQ(tap(FIVE), pressedAndReleased(FIVE) + readOf("PIN"));
    EXPECT_EQ(lockPassCnt, 4);
    EXPECT_STREQ(lockPass, "9876");
}

TEST_F(PinPad, EveryKeyTypesItsDigit) {
    const Key digits[] = {ZERO, ONE, TWO, THREE, FOUR, FIVE, SIX, SEVEN, EIGHT, NINE};
    for (int d = 0; d < 10; ++d) {
        draw_screenLock();
        desk.take();
        EXPECT_EQ(tap(digits[d]), pressedAndReleased(digits[d]) + digitShown(digits[d].label, 110));
        EXPECT_EQ(lockPass[0], '0' + d);
    }
}

TEST_F(PinPad, TheRightFourDigitsUnlockOnTheReleaseOfTheFourthKey) {
    tap(ONE);
    tap(TWO);
    tap(THREE);
    EXPECT_TRUE(isLockScreen());
    EXPECT_EQ(
        tap(FOUR), pressedAndReleased(FOUR) + digitShown("4", 200) + readOf("PIN") + "lcd_clear(0)\nlockHandler()\n");
    EXPECT_FALSE(isLockScreen());
    EXPECT_EQ(lockPassCnt, 4);
    EXPECT_EQ(memcmp(lockPass, "\0\0\0004\0", 5), 0) << "the first three digits are wiped, the fourth stays";
}

TEST_F(PinPad, TheHandlerSeesTheLockAlreadyOff) {
    static bool wasLocked;
    wasLocked = true;
    setLockHandler([] { wasLocked = isLockScreen(); });
    for (const Key& key : {ONE, TWO, THREE, FOUR})
        tap(key);
    EXPECT_FALSE(wasLocked);
}

TEST_F(PinPad, WrongFourDigitsShowTheFourthAndDelErasesIt) {
    for (const Key& key : {ONE, TWO, THREE})
        tap(key);
    EXPECT_EQ(tap(FIVE), pressedAndReleased(FIVE) + digitShown("5", 200) + readOf("PIN"));
    EXPECT_TRUE(isLockScreen());
    EXPECT_EQ(tap(DEL), pressedAndReleased(DEL) + "fillRect(191, 31, 219, 58, 0)\n");
    EXPECT_EQ(lockPassCnt, 3);
    EXPECT_EQ(memcmp(lockPass, "123 ", 5), 0) << "a blank takes the digit's place";
    tap(FOUR);
    EXPECT_FALSE(isLockScreen());
}

TEST_F(PinPad, DelWithNothingTypedPaintsAStripLeftOfTheFirstBox) {
    EXPECT_EQ(tap(DEL), pressedAndReleased(DEL) + "fillRect(71, 31, 99, 58, 0)\n");
    EXPECT_EQ(lockPassCnt, 0);
    EXPECT_EQ(lockPass[0], ' ');
}

TEST_F(PinPad, DelTakesBackOneDigitAfterTheOther) {
    for (const Key& key : {ONE, TWO, THREE})
        tap(key);
    EXPECT_EQ(tap(DEL), pressedAndReleased(DEL) + "fillRect(161, 31, 189, 58, 0)\n");
    EXPECT_EQ(tap(DEL), pressedAndReleased(DEL) + "fillRect(131, 31, 159, 58, 0)\n");
    EXPECT_EQ(tap(DEL), pressedAndReleased(DEL) + "fillRect(101, 31, 129, 58, 0)\n");
    EXPECT_EQ(lockPassCnt, 0);
}

TEST_F(PinPad, AHeldKeyStaysPressedUntilThePenLeavesIt) {
    display().pen = {{40, 116}, {41, 117}, {-1, -1}};
    display().logPen = true;
    fakeSleep().log = true;
    get_screenLock_touch(40, 116);
    EXPECT_EQ(
        desk.take(), "drawWidget(" + keyDrawn(ONE.place, "1", 1) +
                         "readX(40)\nreadY(116)\nusleep(1000)\n"
                         "readX(41)\nreadY(117)\nusleep(1000)\n"
                         "readX(-1)\nreadY(-1)\nusleep(1000)\n"
                         "drawWidget(" +
                         keyDrawn(ONE.place, "1", 0) + digitShown("1", 110));
}

TEST_F(PinPad, AStrokeThatSlidesOntoALaterKeyWorksBoth) {
    display().pen = {{195, 116}, {-1, -1}};
    EXPECT_EQ(
        tap(TWO), pressedAndReleased(TWO) + digitShown("2", 110) + pressedAndReleased(THREE) + digitShown("3", 140));
    EXPECT_EQ(lockPassCnt, 2);
}

TEST_F(PinPad, AStrokeThatSlidesOntoAnEarlierKeyWorksOnlyTheFirst) {
    display().pen = {{117, 116}, {-1, -1}};
    EXPECT_EQ(tap(THREE), pressedAndReleased(THREE) + digitShown("3", 110));
}

TEST_F(PinPad, TheKeysEdgesAreOutside) {
    const struct {
        int x, y;
        bool hit;
    } points[] = {{3, 116, false}, {4, 116, true}, {77, 116, true}, {78, 116, false},
                  {40, 94, false}, {40, 95, true}, {40, 138, true}, {40, 139, false}};
    for (const auto& point : points) {
        draw_screenLock();
        get_screenLock_touch(point.x, point.y);
        EXPECT_EQ(lockPassCnt, point.hit ? 1 : 0) << point.x << ',' << point.y;
    }
}

TEST_F(PinPad, ATouchBetweenKeysOrOnABoxDoesNothing) {
    for (const auto& [x, y] : {std::pair{79, 116}, {40, 140}, {115, 45}, {0, 0}, {319, 239}, {233, 210}}) {
        get_screenLock_touch(x, y);
        EXPECT_EQ(desk.take(), "") << x << ',' << y;
    }
}

TEST_F(PinPad, WithFourDigitsTypedEveryTouchComparesAgain) {
    for (const Key& key : {ONE, TWO, THREE, FIVE})
        tap(key);
    get_screenLock_touch(115, 45);
    EXPECT_EQ(desk.take(), readOf("PIN"));
    desk.set("PIN", "1235");
    get_screenLock_touch(115, 45);
    EXPECT_EQ(desk.take(), readOf("PIN") + "lcd_clear(0)\nlockHandler()\n");
}

TEST_F(PinPad, DoneMatchesAShorterPinAndLeavesWhatWasTyped) {
    desk.set("PIN", "12");
    tap(ONE);
    tap(TWO);
    EXPECT_EQ(tap(DONE), pressedAndReleased(DONE) + readOf("PIN") + "lcd_clear(0)\nlockHandler()\n");
    EXPECT_FALSE(isLockScreen());
    EXPECT_STREQ(lockPass, "12");
    EXPECT_EQ(lockPassCnt, 2);
    draw_screenLock();
    EXPECT_EQ(lockPassCnt, 0);
    EXPECT_STREQ(lockPass, "12");
}

TEST_F(PinPad, DoneComparesStaleBytesBehindTheTypedDigits) {
    desk.set("PIN", "12");
    std::string("9999").copy(lockPass, 4);
    tap(ONE);
    tap(TWO);
    EXPECT_EQ(tap(DONE), pressedAndReleased(DONE) + readOf("PIN"));
    EXPECT_STREQ(lockPass, "1299");
    EXPECT_TRUE(isLockScreen());
}

TEST_F(PinPad, AMissingPinIsMatchedByNothingTyped) {
    fakeSettings().working.clear();
    EXPECT_EQ(tap(DONE), pressedAndReleased(DONE) + readOf("PIN") + "lcd_clear(0)\nlockHandler()\n");
}

TEST_F(PinPad, APinWithATrailingLineEndMatchesNoFourDigits) {
    desk.set("PIN", "1234\n");
    for (const Key& key : {ONE, TWO, THREE, FOUR})
        tap(key);
    EXPECT_TRUE(isLockScreen());
}

TEST_F(PinPad, APinOfAnyLengthIsSafe) {
    desk.set("PIN", std::string(1023, '1'));
    for (const Key& key : {ONE, ONE, ONE, ONE})
        tap(key);
    EXPECT_TRUE(isLockScreen());
}

TEST_F(PinPad, ACountThatAProgramSpoiledNeverWritesOutsideTheDigits) {
    for (const int32_t count : {-7, 5, 100}) {
        lockPassCnt = count;
        memcpy(lockPass, "....", 5);
        tap(ONE);
        EXPECT_STREQ(lockPass, "....") << count;
    }
    lockPassCnt = 100;
    tap(DEL);
    EXPECT_STREQ(lockPass, "....");
}

} // namespace
