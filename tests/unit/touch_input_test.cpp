#include "tests/support/touch_desk.h"

#include <gtest/gtest.h>
#include <linux/input.h>
#include <string>

using namespace ostrel;

namespace {

// What waitForTouch says: the press's place, or "nothing".
std::string waited(TouchDesk& desk, int timeoutMs) {
    int x = -7;
    int y = -7;
    if (desk.input().waitForTouch(&x, &y, timeoutMs))
        return std::to_string(x) + "," + std::to_string(y);
    EXPECT_EQ(x, -7);
    EXPECT_EQ(y, -7);
    return "nothing";
}

} // namespace

TEST(PolledPen, FollowsTheStream) {
    TouchDesk desk;
    EXPECT_EQ(desk.looks(1), "up\n");
    desk.press(100, 50);
    EXPECT_EQ(desk.looks(2), "100,50\n100,50\n");
    desk.move(110, 60);
    EXPECT_EQ(desk.looks(1), "110,60\n");
    desk.lift();
    EXPECT_EQ(desk.looks(1), "up\n");
}

TEST(PolledPen, TellsBothOfTwoTapsMadeBetweenTwoPolls) {
    TouchDesk desk;
    desk.tap(100, 50);
    desk.advanceMs(2);
    desk.tap(100, 50);
    desk.advanceMs(20);
    EXPECT_EQ(desk.looks(5), "100,50\nup\n100,50\nup\nup\n");
}

TEST(PolledPen, PutsTogetherRecordsThatArriveInPieces) {
    TouchDesk desk;
    input_event frame[4] = {};
    const TouchEvent events[] = {
        {EV_ABS, ABS_X, 100}, {EV_ABS, ABS_Y, 50}, {EV_KEY, BTN_TOUCH, 1}, {EV_SYN, SYN_REPORT, 0}};
    for (size_t i = 0; i < 4; ++i) {
        frame[i].type = events[i].type;
        frame[i].code = events[i].code;
        frame[i].value = events[i].value;
    }
    const auto* const bytes = reinterpret_cast<const unsigned char*>(frame);
    for (size_t at = 0; at < sizeof frame - 1; ++at) {
        desk.writeBytes(bytes + at, 1);
        ASSERT_EQ(desk.looks(1), "up\n") << "after byte " << at;
    }
    desk.writeBytes(bytes + sizeof frame - 1, 1);
    EXPECT_EQ(desk.looks(1), "100,50\n");
}

TEST(PolledPen, GoesOnAfterLostEventsWithTheStateThatFollows) {
    TouchDesk desk;
    desk.press(100, 50);
    EXPECT_EQ(desk.looks(1), "100,50\n");
    desk.write({{EV_SYN, SYN_DROPPED, 0}, {EV_ABS, ABS_X, 5}, {EV_SYN, SYN_REPORT, 0}});
    EXPECT_EQ(desk.looks(1), "100,50\n");
    desk.lift();
    EXPECT_EQ(desk.looks(1), "up\n");
}

TEST(PolledPen, ReadsMoreThanOneBufferfulInOneLook) {
    TouchDesk desk;
    desk.press(1, 1);
    EXPECT_EQ(desk.looks(1), "1,1\n");
    for (int x = 2; x <= 300; ++x)
        desk.move(x, 7);
    EXPECT_EQ(desk.looks(1), "300,7\n");
}

TEST(StaleTaps, AreThoseBegunBeforeTheFirstQuestionInAQuarterOfASecond) {
    for (const int silenceMs : {249, 250, 60'000}) {
        TouchDesk desk;
        desk.looks(1);
        desk.tap(100, 50);
        desk.advanceMs(silenceMs);
        EXPECT_EQ(desk.looks(2), silenceMs == 249 ? "100,50\nup\n" : "up\nup\n") << silenceMs;
        desk.tap(30, 40);
        EXPECT_EQ(desk.looks(2), "30,40\nup\n") << silenceMs;
    }
}

TEST(StaleTaps, AreKeptForAsLongAsTheirDeviceSays) {
    for (const int silenceMs : {59'999, 60'000}) {
        TouchDesk desk;
        ostrel::TouchDevice device = desk.duplicate();
        device.staleAfterMs = 60'000;
        ostrel::TouchInput patient(device);
        desk.tap(100, 50);
        desk.advanceMs(silenceMs);
        EXPECT_EQ(patient.readX(), silenceMs == 59'999 ? 100 : -1) << silenceMs;
    }
}

TEST(StaleTaps, AreDroppedAlsoWhenTheyWereMadeJustBeforeTheQuestion) {
    TouchDesk desk;
    desk.looks(1);
    desk.advanceMs(5000);
    desk.tap(100, 50);
    EXPECT_EQ(desk.looks(2), "up\nup\n");
}

TEST(StaleTaps, AreDroppedToTheirEnd) {
    TouchDesk desk;
    desk.looks(1);
    desk.press(100, 50);
    desk.advanceMs(250);
    EXPECT_EQ(desk.looks(1), "up\n");
    desk.move(110, 60);
    EXPECT_EQ(desk.looks(1), "up\n");
    desk.lift();
    EXPECT_EQ(desk.looks(1), "up\n");
    desk.tap(30, 40);
    EXPECT_EQ(desk.looks(2), "30,40\nup\n");
}

TEST(StaleTaps, IncludeAStrokeThatTheProgramKnewOf) {
    TouchDesk desk;
    desk.press(100, 50);
    EXPECT_EQ(desk.looks(1), "100,50\n");
    desk.advanceMs(250);
    EXPECT_EQ(desk.looks(1), "up\n");
}

TEST(StaleTaps, IncludeThoseThatWaitedInTheQueue) {
    TouchDesk desk;
    desk.tap(100, 50);
    desk.tap(120, 50);
    EXPECT_EQ(desk.looks(1), "100,50\n");
    desk.advanceMs(250);
    EXPECT_EQ(desk.looks(2), "up\nup\n");
}

TEST(StaleTaps, AreDroppedByWaitForTouchAndWaitForPenUpToo) {
    TouchDesk desk;
    desk.looks(1);
    desk.advanceMs(250);
    desk.tap(100, 50);
    EXPECT_EQ(waited(desk, 0), "nothing");
    desk.press(100, 50);
    EXPECT_EQ(waited(desk, 0), "100,50");
    desk.advanceMs(250);
    desk.input().waitForPenUp(); // would wait for ever for a stroke that it saw
    EXPECT_EQ(desk.waits, 0);
}

TEST(StaleTaps, AreNotThoseOfAProgramThatKeepsAsking) {
    TouchDesk desk;
    for (int i = 0; i < 100; ++i) {
        desk.advanceMs(249);
        EXPECT_EQ(desk.looks(1), "up\n");
    }
    desk.tap(100, 50);
    desk.advanceMs(249);
    EXPECT_EQ(desk.looks(1), "100,50\n");
}

TEST(StaleTaps, AreNotKeptByReadingTheOldPlaceOrDisablingTouch) {
    TouchDesk desk;
    desk.looks(1);
    desk.tap(100, 50);
    desk.advanceMs(249);
    desk.input().readY();
    desk.input().disable(true);
    desk.input().disable(false);
    desk.advanceMs(1);
    EXPECT_EQ(desk.looks(2), "up\nup\n");
}

TEST(StaleTaps, AreNotThoseThatEndAWait) {
    TouchDesk desk;
    desk.at(desk.nowMs + 3'600'000, [&] { desk.press(100, 50); });
    desk.at(desk.nowMs + 3'700'000, [&] { desk.lift(); });
    EXPECT_EQ(waited(desk, -1), "100,50");
    desk.input().waitForPenUp();
    desk.tap(30, 40);
    EXPECT_EQ(waited(desk, 0), "30,40");
}

TEST(StaleTaps, AreWhatTheStreamHeldBeforeTheProgramOpenedIt) {
    TouchDesk first;
    first.tap(100, 50);
    first.press(120, 60);
    // The same device, opened by another program just now.
    TouchDevice device = first.duplicate();
    TouchInput second(device);
    EXPECT_EQ(second.readX(), -1);
    first.move(121, 60);
    EXPECT_EQ(second.readX(), -1);
    first.lift();
    first.tap(30, 40);
    EXPECT_EQ(second.readX(), 30);
    EXPECT_EQ(second.readY(), 40);
}

TEST(DisabledTouch, HidesWhatIsTappedBetweenTheTwoCalls) {
    TouchDesk desk;
    desk.tap(10, 20);
    desk.input().disable(true);
    desk.tap(30, 40);
    desk.press(50, 60);
    desk.input().disable(false);
    desk.lift();
    desk.tap(70, 80);
    EXPECT_EQ(desk.looks(5), "10,20\nup\n70,80\nup\nup\n");
}

TEST(DisabledTouch, GivesNoPressWhileItLasts) {
    TouchDesk desk;
    desk.input().disable(true);
    desk.at(desk.nowMs + 10, [&] { desk.tap(10, 20); });
    EXPECT_EQ(waited(desk, 100), "nothing");
    desk.input().disable(false);
    EXPECT_EQ(waited(desk, 0), "nothing");
}

TEST(WaitForPenUp, ReturnsAtOnceWhenThePenIsUp) {
    TouchDesk desk;
    desk.input().waitForPenUp();
    desk.tap(10, 20); // queued, but the program was not told yet
    desk.input().waitForPenUp();
    EXPECT_EQ(desk.waits, 0);
    EXPECT_EQ(desk.looks(1), "10,20\n");
}

TEST(WaitForPenUp, EndsWithTheCurrentStrokeHoweverLongAndKeepsTheNext) {
    TouchDesk desk;
    desk.press(10, 20);
    EXPECT_EQ(waited(desk, 0), "10,20");
    for (int i = 1; i <= 50; ++i)
        desk.at(desk.nowMs + int64_t{400} * i, [&desk, i] { desk.move(10 + i, 20); });
    desk.at(desk.nowMs + 30'000, [&] {
        desk.lift();
        desk.tap(30, 40);
    });
    desk.input().waitForPenUp();
    EXPECT_EQ(desk.nowMs, 1'030'000);
    EXPECT_EQ(desk.waits, 51); // one for each thing that happened: it blocks
    EXPECT_EQ(desk.looks(2), "30,40\nup\n");
}

TEST(WaitForPenUp, BlocksAlsoForAPressThatNobodyWasToldOfAndKeepsIt) {
    TouchDesk desk;
    desk.press(10, 20);
    desk.at(desk.nowMs + 700, [&] { desk.lift(); });
    desk.input().waitForPenUp();
    EXPECT_EQ(desk.nowMs, 1'000'700);
    EXPECT_EQ(desk.looks(2), "10,20\nup\n");
}

TEST(WaitForPenUp, DoesNotWaitForAPressThatIsHeldBack) {
    TouchDesk desk;
    desk.press(10, 20);
    desk.input().disable(true);
    desk.input().waitForPenUp();
    EXPECT_EQ(desk.waits, 0);
}

TEST(WaitForPenUp, TellsOfTheRelease) {
    TouchDesk desk;
    desk.tap(10, 20);
    EXPECT_EQ(waited(desk, 0), "10,20");
    desk.input().waitForPenUp();
    EXPECT_EQ(desk.input().readY(), -1);
    EXPECT_EQ(desk.looks(1), "up\n");
}

TEST(WaitForPenUp, ReturnsWhenTheDeviceGoesAway) {
    TouchDesk desk;
    desk.press(10, 20);
    EXPECT_EQ(waited(desk, 0), "10,20");
    desk.at(desk.nowMs + 700, [&] { desk.unplug(); });
    testing::internal::CaptureStderr();
    desk.input().waitForPenUp();
    EXPECT_EQ(
        testing::internal::GetCapturedStderr(),
        "ostrel: the touch screen /dev/desk is gone: No such device. The pen stays up.\n");
    EXPECT_TRUE(desk.input().isClosed());
    EXPECT_EQ(desk.looks(2), "up\nup\n");
}

TEST(WaitForTouch, WaitsExactlyAsLongAsItWasTold) {
    TouchDesk desk;
    EXPECT_EQ(waited(desk, 0), "nothing");
    EXPECT_EQ(desk.nowMs, 1'000'000);
    EXPECT_EQ(desk.waits, 0);
    EXPECT_EQ(waited(desk, 1), "nothing");
    EXPECT_EQ(desk.nowMs, 1'000'001);
    EXPECT_EQ(waited(desk, 5000), "nothing");
    EXPECT_EQ(desk.nowMs, 1'005'001);
}

TEST(WaitForTouch, GivesThePressThatComesInTime) {
    TouchDesk desk;
    desk.at(desk.nowMs + 500, [&] { desk.press(10, 20); });
    EXPECT_EQ(waited(desk, 500), "10,20");
    EXPECT_EQ(desk.nowMs, 1'000'500);
    desk.lift();
    desk.at(desk.nowMs + 501, [&] { desk.press(30, 40); });
    EXPECT_EQ(waited(desk, 500), "nothing");
    EXPECT_EQ(desk.nowMs, 1'001'000);
}

TEST(WaitForTouch, LeavesItsPressToBeFollowed) {
    TouchDesk desk;
    desk.press(10, 20);
    EXPECT_EQ(waited(desk, -1), "10,20");
    EXPECT_EQ(desk.input().readY(), 20);
    desk.move(15, 25);
    EXPECT_EQ(desk.looks(1), "15,25\n");
    desk.at(desk.nowMs + 100, [&] { desk.lift(); });
    desk.input().waitForPenUp();
    EXPECT_EQ(desk.nowMs, 1'000'100);
}

TEST(WaitForTouch, IsNotEndedByMovesAndReleases) {
    TouchDesk desk;
    desk.press(10, 20);
    EXPECT_EQ(waited(desk, -1), "10,20");
    desk.at(desk.nowMs + 100, [&] { desk.move(15, 25); });
    desk.at(desk.nowMs + 200, [&] { desk.lift(); });
    desk.at(desk.nowMs + 300, [&] { desk.press(30, 40); });
    EXPECT_EQ(waited(desk, -1), "30,40");
    EXPECT_EQ(desk.nowMs, 1'000'300);
}

TEST(WaitForTouch, TakesNullForAPlaceThatNobodyWants) {
    TouchDesk desk;
    desk.press(10, 20);
    EXPECT_TRUE(desk.input().waitForTouch(nullptr, nullptr, 0));
}

TEST(UnpluggedTouchScreen, EndsAWaitAndClosesThePanel) {
    TouchDesk desk;
    EXPECT_FALSE(desk.input().isClosed());
    desk.at(desk.nowMs + 900, [&] { desk.unplug(); });
    testing::internal::CaptureStderr();
    EXPECT_EQ(waited(desk, -1), "nothing");
    EXPECT_NE(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(desk.nowMs, 1'000'900);
    EXPECT_TRUE(desk.input().isClosed());
}

TEST(UnpluggedTouchScreen, StillTellsOfTheTapsBeforeIt) {
    TouchDesk desk;
    desk.tap(10, 20);
    EXPECT_EQ(desk.looks(1), "10,20\n");
    desk.unplug();
    testing::internal::CaptureStderr();
    EXPECT_EQ(desk.looks(2), "up\nup\n");
    EXPECT_NE(testing::internal::GetCapturedStderr(), "");
}

TEST(MissingTouchScreen, LeavesThePenUpAndWaitsOutEveryTimeOut) {
    TouchDesk desk;
    TouchInput input{TouchDevice{}};
    EXPECT_TRUE(input.isClosed());
    EXPECT_EQ(input.readX(), -1);
    EXPECT_EQ(input.readY(), -1);
    input.waitForPenUp();
    input.disable(true);
    input.disable(false);
    EXPECT_FALSE(input.waitForTouch(nullptr, nullptr, 0));
    EXPECT_EQ(desk.nowMs, 1'000'000);
    EXPECT_FALSE(input.waitForTouch(nullptr, nullptr, 3000));
    EXPECT_EQ(desk.nowMs, 1'003'000);
}

TEST(MissingTouchScreen, ReturnsFromAnEndlessWaitAfterAWhileSoThatNothingSpins) {
    TouchDesk desk;
    TouchInput input{TouchDevice{}};
    for (int i = 0; i < 4; ++i)
        EXPECT_FALSE(input.waitForTouch(nullptr, nullptr, -1));
    EXPECT_EQ(desk.nowMs, 1'001'000);
    EXPECT_EQ(desk.waits, 4);
}
