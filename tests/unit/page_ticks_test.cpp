// Where the idle handler runs, with the real display library, a touch stream and a clock that the test moves: on the
// thread that waits for a touch, and never while a page deals with one.
#include "display/clock.h"
#include "display/touch_device.h"
#include "gui/screen.h"
#include "lock/inactivity.h"
#include "lock/pin_pad.h"
#include "tests/support/fake_sleep.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdexcept>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <vector>

using namespace ostrel;

namespace {

int64_t clockMs = 1'000'000;
int waits = 0; // since the pen went down
int ticks = 0;
std::thread::id tickThread;

void tick() {
    ++ticks;
    tickThread = std::this_thread::get_id();
}

// The touch stream that the display library opens at its first question.
int stream() {
    static const int descriptor = [] {
        char folder[] = "/tmp/ostrel-ticks-XXXXXX";
        if (mkdtemp(folder) == nullptr)
            throw std::runtime_error("no folder for the pen");
        const std::string path = std::string(folder) + "/pen";
        if (mkfifo(path.c_str(), 0600) != 0)
            throw std::runtime_error("no touch stream");
        setenv("OSTREL_TOUCH", path.c_str(), 1);
        const int opened = open(path.c_str(), O_RDWR | O_CLOEXEC | O_NONBLOCK);
        readX();
        unlink(path.c_str());
        rmdir(folder);
        return opened;
    }();
    return descriptor;
}

void send(int down, int x, int y) {
    const TouchEvent events[] = {{EV_ABS, ABS_X, x}, {EV_ABS, ABS_Y, y}, {EV_KEY, BTN_TOUCH, down}, {EV_SYN, 0, 0}};
    for (const TouchEvent& event : events) {
        input_event record{};
        record.type = event.type;
        record.code = event.code;
        record.value = event.value;
        if (write(stream(), &record, sizeof record) != sizeof record)
            throw std::runtime_error("the touch stream is full");
    }
}

bool isDown = false;

void lift() {
    if (isDown)
        send(0, 1, 1);
    isDown = false;
}

// Nothing comes: the whole time passes. Unless the pen is down, which then lifts after ten seconds.
int wait(int, int timeoutMs) {
    clockMs += isDown ? 1000 : timeoutMs;
    if (!isDown)
        return 0;
    if (++waits == 10)
        lift();
    return 1;
}

// Kept and never destroyed: a page would draw once more.
Screen* newPage() {
    static auto* const pages = new std::vector<Screen*>;
    return pages->emplace_back(new Screen(L"Page"));
}

class PageTicks : public ::testing::Test {
  protected:
    PageTicks() {
        setenv("OSTREL_FRAMEBUFFER", "/nowhere", 1); // a panel in memory
        replaceClock([] { return clockMs; });
        touchCalls.wait = wait;
        stream();
        page = newPage();
        page->onBack = [] { called = true; };
        setScreenLockHandler(tick); // in place of the page's own
        fakeSleep() = {};
        fakeSleep().log = false;
        // Who polls the pen sees it down for ten seconds, too, and then an entry ends.
        fakeSleep().duringSleep = [this](uint64_t) {
            clockMs += 200; // less than makes a stroke stale
            if (++waits == 50) {
                lift();
                page->keyboard.active = 0;
            }
        };
        ticks = 0;
        called = false;
        waits = 0;
        locked = 0;
        lockScreen = 0;
        returnNext = 0;
    }
    ~PageTicks() override {
        fakeSleep() = {};
        replaceClock(nullptr);
    }

    // A press that the program is told of, then the page's.
    void touch(int x, int y) {
        waitForTouch(nullptr, nullptr, 0); // the program is there: the press is not stale
        send(1, x, y);
        isDown = true;
        int seenX = 0;
        int seenY = 0;
        ASSERT_TRUE(waitForTouch(&seenX, &seenY, 0));
        ASSERT_EQ(seenX, x);
        ticks = 0;
        page->getTouch(seenX, seenY);
        EXPECT_FALSE(isDown) << "the page did not wait for the pen";
        EXPECT_EQ(ticks, 0);
        waitForTouch(nullptr, nullptr, 1000);
        EXPECT_GT(ticks, 30) << "nor afterwards";
    }

    Screen* page = nullptr;
    static bool called;
};
bool PageTicks::called = false;

} // namespace

TEST_F(PageTicks, AreMadeOnTheThreadThatWaits) {
    std::thread::id waiting;
    std::thread([&] {
        waiting = std::this_thread::get_id();
        EXPECT_FALSE(waitForTouch(nullptr, nullptr, 1000));
    }).join();
    EXPECT_EQ(ticks, 36);
    EXPECT_EQ(tickThread, waiting);
    EXPECT_FALSE(waitForTouch(nullptr, nullptr, 1000));
    EXPECT_EQ(ticks, 72);
    EXPECT_EQ(tickThread, std::this_thread::get_id());
}

TEST_F(PageTicks, AreNotMadeWhileAHeaderButtonIsHeld) {
    touch(28, 23);
    EXPECT_TRUE(called);
}

TEST_F(PageTicks, AreNotMadeWhileAWidgetIsHeld) {
    static Widget button(wType.kind0, 10, 60, 0, 0, 0, 100, 40, 20.0F, 1, L"Button");
    button.record.touchable = 1;
    button.callback = [] { called = true; };
    page->widgets = &button;
    touch(50, 80);
    EXPECT_TRUE(called);
}

TEST_F(PageTicks, AreNotMadeWhileAKeyOfThePinPadIsHeld) {
    draw_screenLock();
    lockScreen = 1;
    touch(117, 116);
    EXPECT_EQ(lockPassCnt, 1);
}

TEST_F(PageTicks, AreNotMadeWhileATouchWakesThePanel) {
    locked = 1;
    touch(50, 80);
    EXPECT_EQ(returnNext, 2);
}

TEST_F(PageTicks, AreNotMadeWhileATouchIsSwallowed) {
    returnNext = 1;
    touch(50, 80);
    EXPECT_EQ(returnNext, 0);
}

TEST_F(PageTicks, AreNotMadeWhileTheKeyboardPollsThePen) {
    wchar_t out[KEYBOARD_TEXT_LENGTH];
    page->keyboard.returnHandler = [] {};
    page->keyboard.keyboardMode(0);
    page->keyboard.drawText("text", out);
    touch(160, 70);
}
