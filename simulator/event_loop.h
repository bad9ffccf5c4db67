// Everything the simulator does happens in this loop: descriptors that are ready and timers that are due. Handlers may
// add and remove descriptors and timers, their own included.
#ifndef OSTREL_SIMULATOR_EVENT_LOOP_H
#define OSTREL_SIMULATOR_EVENT_LOOP_H

#include <cstdint>
#include <functional>
#include <map>
#include <memory>

namespace ostrel {

class EventLoop {
  public:
    using Ready = std::function<void(short events)>;
    using Due = std::function<void()>;
    using Timer = uint64_t; // 0 is never given out

    // Calls `ready` whenever poll reports one of `events`, an error or a hang-up. One watcher a descriptor.
    void watch(int fd, short events, Ready ready);
    void change(int fd, short events);
    void unwatch(int fd);

    // Calls `due` once, in `delayMs` milliseconds.
    Timer after(int64_t delayMs, Due due);
    void cancel(Timer timer);

    // Runs until stop().
    void run();
    void stop() { stopped = true; }

    // Waits at most `maxMs` for something to do and does it.
    void runOnce(int64_t maxMs);

  private:
    struct Watcher {
        short events;
        std::shared_ptr<Ready> ready;
    };
    struct Alarm {
        int64_t atMs;
        Due due;
    };

    int64_t msToNextTimer(int64_t maxMs) const;
    void runDueTimers();

    std::map<int, Watcher> watchers;
    std::map<Timer, Alarm> timers;
    Timer lastTimer = 0;
    bool stopped = false;
};

} // namespace ostrel

#endif
