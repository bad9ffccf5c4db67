#include "simulator/event_loop.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <string>
#include <unistd.h>

using namespace ostrel;

namespace {

struct Pipe {
    Pipe() { EXPECT_EQ(pipe(ends), 0); }
    ~Pipe() {
        close(ends[0]);
        close(ends[1]);
    }
    void fill() const { EXPECT_EQ(write(ends[1], "x", 1), 1); }
    int ends[2] = {};
};

TEST(EventLoop, CallsTimersInTheOrderTheyWereSet) {
    EventLoop loop;
    std::string calls;
    loop.after(0, [&] { calls += 'a'; });
    loop.after(0, [&] {
        calls += 'b';
        loop.stop();
    });
    loop.run();
    EXPECT_EQ(calls, "ab");
}

TEST(EventLoop, DoesNotCallATimerThatAnEarlierOneCancelled) {
    EventLoop loop;
    std::string calls;
    EventLoop::Timer second = 0;
    loop.after(0, [&] {
        calls += 'a';
        loop.cancel(second);
    });
    second = loop.after(0, [&] { calls += 'b'; });
    loop.runOnce(0);
    loop.runOnce(0);
    EXPECT_EQ(calls, "a");
}

TEST(EventLoop, DoesNotCallAWatcherThatAnotherOneRemoved) {
    EventLoop loop;
    const Pipe first;
    const Pipe second;
    int calls = 0;
    const auto removeBoth = [&](short /*events*/) {
        ++calls;
        loop.unwatch(first.ends[0]);
        loop.unwatch(second.ends[0]);
    };
    loop.watch(first.ends[0], POLLIN, removeBoth);
    loop.watch(second.ends[0], POLLIN, removeBoth);
    first.fill();
    second.fill();
    loop.runOnce(0);
    loop.runOnce(0);
    EXPECT_EQ(calls, 1);
}

TEST(EventLoop, DoesNotTakeANewWatcherForTheOneItReplaced) {
    EventLoop loop;
    const Pipe first;
    const Pipe second;
    int newCalls = 0;
    loop.watch(first.ends[0], POLLIN, [&](short /*events*/) {
        loop.unwatch(first.ends[0]);
        loop.unwatch(second.ends[0]);
        loop.watch(second.ends[0], POLLIN, [&](short /*events*/) { ++newCalls; });
    });
    loop.watch(second.ends[0], POLLIN, [](short /*events*/) {});
    first.fill();
    second.fill();
    loop.runOnce(0);
    EXPECT_EQ(newCalls, 0); // what was ready belonged to the old one
    loop.runOnce(0);
    EXPECT_EQ(newCalls, 1);
}

} // namespace
