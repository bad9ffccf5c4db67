// A touch screen on a desk: a stream of events that the test writes, a clock that stands still until the test or a
// wait moves it, and a wait that plays the test's script instead of sleeping.
#ifndef OSTREL_TESTS_SUPPORT_TOUCH_DESK_H
#define OSTREL_TESTS_SUPPORT_TOUCH_DESK_H

#include "display/touch_input.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

// One test holds one desk at a time. It replaces the display library's clock and calls while it lives.
class TouchDesk {
  public:
    TouchDesk();
    ~TouchDesk();
    TouchDesk(const TouchDesk&) = delete;
    TouchDesk& operator=(const TouchDesk&) = delete;

    ostrel::TouchInput& input() { return *touch; }

    // What the pen does, written to the stream at once, each as a frame of its own.
    void press(int x, int y);
    void move(int x, int y);
    void lift();
    void tap(int x, int y);
    void write(const std::vector<ostrel::TouchEvent>& events);
    void writeBytes(const void* bytes, size_t size);

    // The next reading finds the device unplugged.
    void unplug();

    // The stream once more, as another program opens it.
    ostrel::TouchDevice duplicate() const;

    // Later: `action` happens when a wait reaches that time.
    void at(int64_t timeMs, std::function<void()> action);
    void advanceMs(int64_t ms) { nowMs += ms; }

    // The next looks of a program that polls, as "x,y" or "up", one a line.
    std::string looks(int count);

    // Waits, in real time, for a writer on another thread. False when none has written within ten seconds.
    bool waitForStream() const;

    int64_t nowMs = 1'000'000;
    int waits = 0; // how often something waited

    // Whether the program's own poll would wake now.
    static bool isReadable(int descriptor);

  private:
    struct Later {
        int64_t timeMs;
        std::function<void()> action;
    };

    static ssize_t readStream(int descriptor, void* bytes, size_t size);
    static int wait(int descriptor, int timeoutMs);

    int reader = -1; // the input's, which closes it
    int writer = -1;
    bool unplugged = false;
    std::vector<Later> script;
    ostrel::TouchCalls systemCalls;
    std::unique_ptr<ostrel::TouchInput> touch;
};

#endif
