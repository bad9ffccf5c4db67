// Whole stories: a storm of taps, and two programs that share a panel.
#include "tests/support/touch_desk.h"

#include <chrono>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/input.h>
#include <string>
#include <thread>
#include <unistd.h>

using namespace ostrel;

namespace {

constexpr int TAPS = 200;

std::string allTaps() {
    std::string expected;
    for (int i = 1; i <= TAPS; ++i)
        expected += std::to_string(i) + ",50\nup\n";
    return expected;
}

// What a program that looks at the pen every 20 ms sees, without the looks at which nothing had changed.
std::string polledEvery20Ms(TouchDesk& desk, int changes) {
    std::string seen;
    std::string last = "up\n";
    while (changes > 0) {
        const std::string now = desk.looks(1);
        desk.advanceMs(20);
        if (now != last) {
            seen += now;
            last = now;
            --changes;
        } else if (!desk.waitForStream()) {
            return seen + "and no more";
        }
    }
    return seen;
}

// A device node as the kernel keeps one: every program that opens it has a queue of its own, and what the pen does
// goes into all of them.
class PanelOfTwo {
  public:
    ~PanelOfTwo() {
        for (const int writer : writers)
            close(writer);
    }
    TouchDevice open() {
        int ends[2] = {-1, -1};
        EXPECT_EQ(pipe2(ends, O_NONBLOCK | O_CLOEXEC), 0);
        writers.push_back(ends[1]);
        TouchDevice device;
        device.descriptor = ends[0];
        device.isStream = true;
        return device;
    }
    void tap(int x, int y) {
        write({{EV_ABS, ABS_X, x}, {EV_ABS, ABS_Y, y}, {EV_KEY, BTN_TOUCH, 1}, {EV_SYN, SYN_REPORT, 0}});
        write({{EV_KEY, BTN_TOUCH, 0}, {EV_SYN, SYN_REPORT, 0}});
    }

  private:
    void write(const std::vector<TouchEvent>& events) {
        for (const TouchEvent& event : events) {
            input_event record{};
            record.type = event.type;
            record.code = event.code;
            record.value = event.value;
            for (const int writer : writers)
                EXPECT_EQ(::write(writer, &record, sizeof record), static_cast<ssize_t>(sizeof record));
        }
    }
    std::vector<int> writers;
};

std::string look(TouchInput& program) {
    const int x = program.readX();
    return x < 0 ? "up" : std::to_string(x) + "," + std::to_string(program.readY());
}

} // namespace

TEST(TwoHundredTaps, ReachAProgramThatPollsEvery20MsInOrderWhileTheyAreMade) {
    TouchDesk desk;
    std::thread finger([&desk] {
        for (int i = 1; i <= TAPS; ++i) {
            desk.press(i, 50);
            std::this_thread::sleep_for(std::chrono::milliseconds(1)); // a finger's pace, nothing waits for it
            desk.lift();
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    });
    const std::string seen = polledEvery20Ms(desk, 2 * TAPS);
    finger.join();
    EXPECT_EQ(seen, allTaps());
}

TEST(TwoHundredTaps, ReachAProgramThatPollsEvery20MsInOrderWhenTheyWereAllMadeAtOnce) {
    TouchDesk desk;
    desk.looks(1);
    for (int i = 1; i <= TAPS; ++i)
        desk.tap(i, 50);
    EXPECT_EQ(polledEvery20Ms(desk, 2 * TAPS), allTaps());
}

TEST(TwoHundredTaps, ReachAProgramThatWaitsForEach) {
    TouchDesk desk;
    for (int i = 1; i <= TAPS; ++i) {
        desk.at(desk.nowMs + 4 * i, [&desk, i] { desk.press(i, 50); });
        desk.at(desk.nowMs + 4 * i + 2, [&desk] { desk.lift(); });
    }
    for (int i = 1; i <= TAPS; ++i) {
        int x = 0;
        int y = 0;
        ASSERT_TRUE(desk.input().waitForTouch(&x, &y, -1));
        EXPECT_EQ(x, i);
        desk.input().waitForPenUp();
    }
}

TEST(TwoPrograms, WithAQueueEachNeverGetEachOthersTaps) {
    TouchDesk desk; // its clock
    PanelOfTwo panel;
    TouchInput home(panel.open());
    EXPECT_EQ(look(home), "up");
    panel.tap(300, 20); // starts the language picker
    EXPECT_EQ(look(home), "300,20");
    home.waitForPenUp();

    TouchInput picker(panel.open());
    for (int i = 1; i <= 50; ++i) {
        desk.advanceMs(100);
        panel.tap(i, 100);
        EXPECT_EQ(look(picker), std::to_string(i) + ",100");
        picker.waitForPenUp();
    }

    // The picker ended with the last tap, just now.
    EXPECT_EQ(look(home), "up");
    EXPECT_EQ(look(home), "up");
    panel.tap(40, 50);
    EXPECT_EQ(look(home), "40,50");
    EXPECT_EQ(look(home), "up");
}

TEST(TwoPrograms, OnOneStreamNeverGetWhatWasLeftInItForTheOther) {
    TouchDesk home;
    home.looks(1);
    {
        TouchInput picker(home.duplicate());
        home.advanceMs(400);
        home.tap(10, 20);
        EXPECT_EQ(look(picker), "up"); // nobody had asked before
        home.tap(30, 40);
        EXPECT_EQ(look(picker), "30,40");
        // Taps that the picker does not live to read, and half a stroke.
        home.tap(50, 60);
        home.press(70, 80);
    }
    EXPECT_EQ(home.looks(2), "up\nup\n");
    home.move(75, 80);
    home.lift();
    EXPECT_EQ(home.looks(1), "up\n");
    home.tap(90, 100);
    EXPECT_EQ(home.looks(2), "90,100\nup\n");
}

TEST(TwoPrograms, OnOneStreamStartAfreshWhenTheOtherGotTheRelease) {
    TouchDesk home;
    home.press(300, 20);
    EXPECT_EQ(home.looks(1), "300,20\n");
    {
        TouchInput picker(home.duplicate());
        home.lift();
        EXPECT_EQ(look(picker), "up");
        home.advanceMs(1000);
    }
    EXPECT_EQ(home.looks(1), "up\n");
    home.tap(40, 50);
    EXPECT_EQ(home.looks(2), "40,50\nup\n");
}
