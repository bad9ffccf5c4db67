#include "simulator/progress.h"

#include "simulator/clock.h"

#include <gtest/gtest.h>
#include <vector>

using namespace ostrel;

namespace {

// A stage that changes when the test says so, with the loop's real clock.
struct Watched {
    EventLoop loop;
    std::string stage;
    std::vector<std::string> told;
    Progress progress{loop, [this] { return stage; }, [this](const std::string& line) { told.push_back(line); }};

    void runUntilTold(size_t lines) {
        while (told.size() < lines)
            loop.runOnce(1000);
    }
};

TEST(Progress, TellsWhatTakesLongerThanASecondOnce) {
    Watched watched;
    watched.stage = "the first";
    const int64_t beganAtMs = nowMs();
    watched.progress.watch();
    watched.runUntilTold(1);
    EXPECT_GE(nowMs() - beganAtMs, 1000);
    watched.loop.runOnce(1000);
    watched.loop.runOnce(1000);
    EXPECT_EQ(watched.told, (std::vector<std::string>{"the first"}));

    watched.stage = "the second";
    watched.runUntilTold(2);
    EXPECT_EQ(watched.told.back(), "the second");
}

TEST(Progress, OfNothingIsNotWatched) {
    Watched watched;
    watched.progress.watch();
    watched.stage = "begins later";
    watched.loop.runOnce(0);
    EXPECT_TRUE(watched.told.empty());
    watched.progress.watch();
    watched.runUntilTold(1);
    EXPECT_EQ(watched.told.back(), "begins later");
}

// However often it is looked at: what changes all the time does not take long.
TEST(Progress, BeginsANewSecondWithEachStage) {
    int stages = 0;
    std::vector<std::string> told;
    EventLoop loop;
    Progress progress(
        loop, [&] { return ++stages < 9 ? std::to_string(stages) : "last"; },
        [&](const std::string& line) { told.push_back(line); });
    progress.watch();
    while (told.empty())
        loop.runOnce(1000);
    EXPECT_EQ(told.front(), "last");
}

} // namespace
