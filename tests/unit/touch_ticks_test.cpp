#include "display/wait_ticks.h"
#include "tests/support/touch_desk.h"

#include <gtest/gtest.h>
#include <stdexcept>

using namespace ostrel;

namespace {

int ticked = 0;
TouchDesk* ticking = nullptr; // the desk that a handler uses

void countTick() {
    ++ticked;
}

// Two of the library's programs wait on one desk, so every test starts from zero here.
class IdleTick : public testing::Test {
  protected:
    IdleTick() {
        ticked = 0;
        ticking = &desk;
    }
    bool wait(int timeoutMs) {
        int x = 0;
        int y = 0;
        return desk.input().waitForTouch(&x, &y, timeoutMs);
    }
    TouchDesk desk;
};

} // namespace

TEST(TickTimes, AreThirtySixASecond) {
    IdleTicks ticks;
    ticks.start(5000);
    int count = 0;
    for (int64_t now = 5000; now <= 15000; ++now) {
        const bool isDue = ticks.msUntilDue(now) == 0;
        EXPECT_EQ(ticks.takeDue(now), isDue) << now;
        count += isDue ? 1 : 0;
    }
    EXPECT_EQ(count, 360);
}

TEST(TickTimes, BeginOnePeriodAfterTheStart) {
    IdleTicks ticks;
    ticks.start(0);
    EXPECT_EQ(ticks.msUntilDue(0), 28);
    EXPECT_FALSE(ticks.takeDue(27));
    EXPECT_TRUE(ticks.takeDue(28));
    EXPECT_FALSE(ticks.takeDue(28));
    EXPECT_EQ(ticks.msUntilDue(28), 28);
    EXPECT_FALSE(ticks.takeDue(55));
    EXPECT_TRUE(ticks.takeDue(56));
    EXPECT_EQ(ticks.msUntilDue(56), 28); // 83.3
    EXPECT_FALSE(ticks.takeDue(83));
    EXPECT_TRUE(ticks.takeDue(84));
}

TEST(TickTimes, AreNotMadeUpWhenMissed) {
    IdleTicks ticks;
    ticks.start(0);
    EXPECT_TRUE(ticks.takeDue(10'000));
    EXPECT_FALSE(ticks.takeDue(10'000));
    EXPECT_EQ(ticks.msUntilDue(10'000), 28);
}

TEST(TickTimes, AreNoneWhenStopped) {
    IdleTicks ticks;
    EXPECT_EQ(ticks.msUntilDue(1000), -1);
    EXPECT_FALSE(ticks.takeDue(1000));
    ticks.start(0);
    ticks.stop();
    EXPECT_EQ(ticks.msUntilDue(1000), -1);
    EXPECT_FALSE(ticks.takeDue(1000));
}

TEST_F(IdleTick, RunsThirtySixTimesASecondWhileTheProgramWaits) {
    desk.input().setTickHandler(countTick);
    EXPECT_FALSE(wait(999));
    EXPECT_EQ(ticked, 35);
    EXPECT_FALSE(wait(1));
    EXPECT_EQ(ticked, 36);
    EXPECT_FALSE(wait(10'000));
    EXPECT_EQ(ticked, 396);
    EXPECT_LE(desk.waits, 398); // it sleeps from tick to tick
}

TEST_F(IdleTick, RunsWithTimeOutZeroOnlyWhenOneIsDue) {
    desk.input().setTickHandler(countTick);
    desk.advanceMs(27);
    wait(0);
    EXPECT_EQ(ticked, 0);
    desk.advanceMs(1);
    wait(0);
    EXPECT_EQ(ticked, 1);
    wait(0);
    EXPECT_EQ(ticked, 1);
    EXPECT_EQ(desk.waits, 0);
}

TEST_F(IdleTick, IsNotMadeUpAfterTheProgramWasBusy) {
    desk.input().setTickHandler(countTick);
    desk.advanceMs(60'000);
    wait(0);
    wait(0);
    EXPECT_EQ(ticked, 1);
}

TEST_F(IdleTick, RunsNowhereElse) {
    desk.input().setTickHandler(countTick);
    desk.press(10, 20);
    EXPECT_TRUE(wait(0));
    desk.at(desk.nowMs + 5000, [&] { desk.lift(); });
    desk.input().waitForPenUp();
    for (int i = 0; i < 100; ++i) {
        desk.advanceMs(20);
        desk.looks(1);
    }
    desk.input().descriptor();
    desk.input().disable(true);
    desk.input().disable(false);
    EXPECT_EQ(ticked, 0);
}

TEST_F(IdleTick, GivesWayToAPress) {
    desk.input().setTickHandler(countTick);
    desk.advanceMs(100);
    desk.press(10, 20);
    EXPECT_TRUE(wait(-1));
    EXPECT_EQ(ticked, 0);
}

TEST_F(IdleTick, RunsAlsoWithoutATouchScreen) {
    TouchInput input{TouchDevice{}};
    input.setTickHandler(countTick);
    EXPECT_FALSE(input.waitForTouch(nullptr, nullptr, 1000));
    EXPECT_EQ(ticked, 36);
}

TEST_F(IdleTick, StopsAtNullAndKeepsItsBeatWhenAnotherHandlerIsRegistered) {
    desk.input().setTickHandler(countTick);
    wait(20);
    desk.input().setTickHandler([] { ticked += 100; });
    wait(8);
    EXPECT_EQ(ticked, 100);
    desk.input().setTickHandler(nullptr);
    desk.waits = 0;
    wait(5000);
    EXPECT_EQ(ticked, 100);
    EXPECT_EQ(desk.waits, 1); // without a handler nothing wakes the program
}

TEST_F(IdleTick, MayStopItself) {
    desk.input().setTickHandler([] {
        ++ticked;
        ticking->input().setTickHandler(nullptr);
    });
    wait(1000);
    EXPECT_EQ(ticked, 1);
}

TEST_F(IdleTick, IsNotRunInsideItself) {
    desk.input().setTickHandler([] {
        ++ticked;
        int x = 0;
        int y = 0;
        ticking->input().waitForTouch(&x, &y, 500);
    });
    desk.advanceMs(28);
    wait(0);
    EXPECT_EQ(ticked, 1);
    EXPECT_EQ(desk.nowMs, 1'000'528);
}

TEST_F(IdleTick, RunsAgainAfterOneThatThrew) {
    desk.input().setTickHandler([] {
        if (++ticked == 1)
            throw std::runtime_error("from the handler");
    });
    EXPECT_THROW(wait(1000), std::runtime_error);
    wait(100);
    EXPECT_GT(ticked, 1);
}

TEST_F(IdleTick, ThatTakesAQuarterOfASecondMakesWhatWasTappedMeanwhileStale) {
    desk.input().setTickHandler([] {
        ticking->advanceMs(250);
        ticking->tap(10, 20);
        ticking->input().setTickHandler(nullptr);
    });
    EXPECT_FALSE(wait(1000));
}

TEST_F(IdleTick, ThatIsQuickerLeavesThem) {
    desk.input().setTickHandler([] {
        ticking->advanceMs(249);
        ticking->tap(10, 20);
        ticking->input().setTickHandler(nullptr);
    });
    EXPECT_TRUE(wait(1000));
}
