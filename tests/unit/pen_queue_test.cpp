#include "display/pen_queue.h"

#include <gtest/gtest.h>
#include <string>

using namespace ostrel;

namespace {

std::string placed(PenPoint at) {
    return at.x < 0 && at.y < 0 ? "up" : std::to_string(at.x) + "," + std::to_string(at.y);
}

std::string looks(PenQueue& pen, int count) {
    std::string seen;
    for (int i = 0; i < count; ++i)
        seen += (i == 0 ? "" : " ") + placed(pen.look());
    return seen;
}

void tap(PenQueue& pen, int x, int y) {
    pen.press({x, y});
    pen.release();
}

} // namespace

TEST(Pen, IsUpBeforeItTouches) {
    PenQueue pen;
    EXPECT_EQ(looks(pen, 2), "up up");
    EXPECT_FALSE(pen.isHeld());
}

TEST(Pen, IsWhereItWentSinceTheLastLook) {
    PenQueue pen;
    pen.press({10, 20});
    EXPECT_EQ(looks(pen, 2), "10,20 10,20");
    pen.move({11, 20});
    pen.move({12, 20});
    EXPECT_EQ(looks(pen, 2), "12,20 12,20");
    pen.release();
    EXPECT_EQ(looks(pen, 2), "up up");
}

TEST(Pen, TellsAPressAtItsOwnPlaceAlsoWhenItHasMovedOn) {
    PenQueue pen;
    pen.press({10, 20});
    pen.move({200, 100});
    EXPECT_EQ(looks(pen, 3), "10,20 200,100 200,100");
}

TEST(Pen, TellsOfATapThatWasOverBeforeAnybodyLooked) {
    PenQueue pen;
    tap(pen, 10, 20);
    EXPECT_EQ(looks(pen, 3), "10,20 up up");
}

TEST(Pen, TellsTwoQuickTapsAsTwo) {
    PenQueue pen;
    tap(pen, 10, 20);
    tap(pen, 10, 20);
    EXPECT_EQ(looks(pen, 5), "10,20 up 10,20 up up");
}

TEST(Pen, KeepsTheLookedAtPlaceUntilTheNextLook) {
    PenQueue pen;
    pen.press({10, 20});
    pen.look();
    pen.move({30, 40});
    EXPECT_EQ(placed(pen.latest()), "10,20");
    pen.look();
    EXPECT_EQ(placed(pen.latest()), "30,40");
}

TEST(TakingAPress, MakesItTheStrokeThatLooksFollow) {
    PenQueue pen;
    pen.press({10, 20});
    PenPoint at{};
    ASSERT_TRUE(pen.takePress(at));
    EXPECT_EQ(placed(at), "10,20");
    EXPECT_EQ(placed(pen.latest()), "10,20");
    EXPECT_TRUE(pen.isHeld());
    EXPECT_FALSE(pen.takePress(at));
    pen.move({15, 20});
    EXPECT_EQ(looks(pen, 1), "15,20");
    pen.release();
    EXPECT_FALSE(pen.isHeld());
    EXPECT_EQ(looks(pen, 1), "up");
}

TEST(TakingAPress, GoesOnToTheNextStrokeAndTellsThePassedReleaseWithIt) {
    PenQueue pen;
    tap(pen, 10, 20);
    tap(pen, 30, 40);
    PenPoint at{};
    ASSERT_TRUE(pen.takePress(at));
    EXPECT_EQ(placed(at), "10,20");
    ASSERT_TRUE(pen.takePress(at));
    EXPECT_EQ(placed(at), "30,40");
    EXPECT_FALSE(pen.takePress(at));
    EXPECT_EQ(looks(pen, 2), "up up");
}

TEST(TakingAPress, ChangesNothingWhenThereIsNone) {
    PenQueue pen;
    pen.press({10, 20});
    pen.look();
    PenPoint at = {7, 8};
    EXPECT_FALSE(pen.takePress(at));
    EXPECT_EQ(placed(at), "7,8");
    EXPECT_TRUE(pen.isHeld());
}

TEST(Dropping, HidesAStrokeToItsEnd) {
    PenQueue pen;
    pen.press({10, 20});
    pen.look();
    pen.drop();
    EXPECT_EQ(looks(pen, 1), "up");
    pen.move({30, 40});
    EXPECT_EQ(looks(pen, 1), "up");
    pen.release();
    EXPECT_EQ(looks(pen, 1), "up");
    tap(pen, 50, 60);
    EXPECT_EQ(looks(pen, 2), "50,60 up");
}

TEST(Dropping, TakesEveryStrokeSoFar) {
    PenQueue pen;
    tap(pen, 10, 20);
    tap(pen, 30, 40);
    pen.drop();
    EXPECT_FALSE(pen.hasPress());
    EXPECT_EQ(looks(pen, 1), "up");
}

TEST(DisabledTouch, HidesAStrokeThatBeginsMeanwhileToItsEnd) {
    PenQueue pen;
    pen.disable(true);
    pen.press({10, 20});
    EXPECT_EQ(looks(pen, 1), "up");
    pen.disable(false);
    pen.move({30, 40});
    EXPECT_EQ(looks(pen, 1), "up");
    pen.release();
    EXPECT_EQ(looks(pen, 1), "up");
    tap(pen, 50, 60);
    EXPECT_EQ(looks(pen, 2), "50,60 up");
}

TEST(DisabledTouch, LetsAStrokeThatTheProgramHoldsEnd) {
    PenQueue pen;
    pen.press({10, 20});
    pen.look();
    pen.disable(true);
    pen.move({30, 40});
    EXPECT_EQ(looks(pen, 1), "30,40");
    pen.release();
    EXPECT_EQ(looks(pen, 1), "up");
}

TEST(DisabledTouch, HoldsBackAStrokeThatBeganBeforeIt) {
    PenQueue pen;
    tap(pen, 10, 20);
    pen.disable(true);
    PenPoint at{};
    EXPECT_FALSE(pen.takePress(at));
    EXPECT_EQ(looks(pen, 2), "up up");
    pen.disable(false);
    EXPECT_EQ(looks(pen, 2), "10,20 up");
}

TEST(FullPenQueue, HoldsASetNumberOfStrokesAndLosesOnlyWholeOnes) {
    PenQueue pen;
    for (int i = 0; i < 1024; ++i)
        tap(pen, 10, 20);
    tap(pen, 30, 40);
    std::string expected;
    for (int i = 0; i < 1024; ++i)
        expected += "10,20 up ";
    EXPECT_EQ(looks(pen, 2049), expected + "up");
    tap(pen, 50, 60);
    EXPECT_EQ(looks(pen, 2), "50,60 up");
}

TEST(FullPenQueue, NeverLosesTheReleaseOfAStrokeThatItHolds) {
    PenQueue pen;
    for (int i = 0; i < 1023; ++i)
        tap(pen, 10, 20);
    pen.press({30, 40}); // the last that fits
    pen.release();
    pen.press({70, 80}); // does not
    pen.move({71, 80});
    looks(pen, 2046);
    EXPECT_EQ(looks(pen, 3), "30,40 up up");
    pen.move({72, 80});
    pen.release();
    EXPECT_EQ(looks(pen, 1), "up");
}

TEST(PenWithoutARelease, EndsItsStrokeWithTheNextPress) {
    PenQueue pen;
    pen.press({10, 20});
    pen.press({30, 40});
    EXPECT_EQ(looks(pen, 4), "10,20 up 30,40 30,40");
}
