#include "tests/support/touch_desk.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>

using namespace ostrel;

namespace {

// A program with a poll loop of its own: it asks only when the descriptor tells it to.
class OwnPollLoop : public testing::Test {
  protected:
    OwnPollLoop() : descriptor(desk.input().descriptor()) {}

    // Real time: the descriptor's timer is the system's. Long enough for any machine, and passed only in a failure.
    bool wakes() const {
        pollfd program = {descriptor, POLLIN, 0};
        return poll(&program, 1, 10'000) == 1;
    }
    bool pressed() {
        int x = 0;
        int y = 0;
        return desk.input().waitForTouch(&x, &y, 0);
    }
    void answerUntilQuiet() {
        while (TouchDesk::isReadable(descriptor))
            EXPECT_FALSE(pressed());
    }

    TouchDesk desk;
    int descriptor;
};

} // namespace

TEST_F(OwnPollLoop, GetsOneDescriptorForGood) {
    EXPECT_GE(descriptor, 0);
    EXPECT_EQ(desk.input().descriptor(), descriptor);
    desk.unplug();
    testing::internal::CaptureStderr();
    EXPECT_FALSE(pressed());
    testing::internal::GetCapturedStderr();
    EXPECT_EQ(desk.input().descriptor(), descriptor);
}

TEST_F(OwnPollLoop, KeepsItsDescriptorFromProgramsThatItStarts) {
    EXPECT_NE(fcntl(descriptor, F_GETFD) & FD_CLOEXEC, 0);
}

TEST_F(OwnPollLoop, WakesForATouch) {
    answerUntilQuiet();
    desk.press(10, 20);
    EXPECT_TRUE(TouchDesk::isReadable(descriptor));
    EXPECT_TRUE(pressed());
    EXPECT_FALSE(TouchDesk::isReadable(descriptor));
}

TEST_F(OwnPollLoop, WakesForAPressThatWasReadWithAnEarlierOne) {
    desk.tap(10, 20);
    desk.tap(30, 40);
    EXPECT_TRUE(pressed());
    EXPECT_TRUE(wakes());
    EXPECT_TRUE(pressed());
    answerUntilQuiet();
}

TEST_F(OwnPollLoop, WakesForAPressThatWasReadWhileThePenWasHeld) {
    desk.press(10, 20);
    EXPECT_TRUE(pressed());
    desk.lift();
    desk.tap(30, 40);
    desk.input().waitForPenUp();
    EXPECT_TRUE(wakes());
    EXPECT_TRUE(pressed());
}

TEST_F(OwnPollLoop, IsWokenToSayThatItStillWaitsAndThenLosesNoTap) {
    for (int beat = 0; beat < 3; ++beat) {
        EXPECT_TRUE(wakes());
        desk.advanceMs(100); // which the program spent in its own poll
        EXPECT_FALSE(pressed());
    }
    desk.advanceMs(99); // the tap comes just before the next
    desk.tap(10, 20);
    EXPECT_TRUE(wakes());
    EXPECT_TRUE(pressed());
}

TEST_F(OwnPollLoop, LosesTheTapsOfTheTimeInWhichItDidNotAnswer) {
    EXPECT_TRUE(wakes());
    desk.advanceMs(250);
    desk.tap(10, 20);
    EXPECT_FALSE(pressed());
}

TEST_F(OwnPollLoop, IsWokenForEveryTick) {
    static int ticks = 0;
    ticks = 0;
    desk.input().setTickHandler([] { ++ticks; });
    for (int i = 1; i <= 4; ++i) {
        EXPECT_TRUE(wakes());
        desk.advanceMs(28);
        EXPECT_FALSE(pressed());
        EXPECT_EQ(ticks, i);
    }
}

TEST_F(OwnPollLoop, IsWokenByTheUnpluggedDeviceAndThenOnlyByTheBeat) {
    desk.unplug();
    testing::internal::CaptureStderr();
    EXPECT_FALSE(pressed());
    testing::internal::GetCapturedStderr();
    EXPECT_TRUE(desk.input().isClosed());
    EXPECT_FALSE(TouchDesk::isReadable(descriptor));
    EXPECT_TRUE(wakes());
}

TEST(MissingTouchScreen, StillGivesADescriptorForItsTicks) {
    TouchDesk desk;
    TouchInput input{TouchDevice{}};
    const int descriptor = input.descriptor();
    ASSERT_GE(descriptor, 0);
    pollfd program = {descriptor, POLLIN, 0};
    EXPECT_EQ(poll(&program, 1, 10'000), 1);
}
