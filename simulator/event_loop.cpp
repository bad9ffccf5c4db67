#include "simulator/event_loop.h"

#include "simulator/clock.h"

#include <algorithm>
#include <cerrno>
#include <poll.h>
#include <vector>

namespace ostrel {

void EventLoop::watch(int fd, short events, Ready ready) {
    watchers[fd] = {events, std::make_shared<Ready>(std::move(ready))};
}

void EventLoop::change(int fd, short events) {
    const auto found = watchers.find(fd);
    if (found != watchers.end())
        found->second.events = events;
}

void EventLoop::unwatch(int fd) {
    watchers.erase(fd);
}

EventLoop::Timer EventLoop::after(int64_t delayMs, Due due) {
    timers[++lastTimer] = {nowMs() + delayMs, std::move(due)};
    return lastTimer;
}

void EventLoop::cancel(Timer timer) {
    timers.erase(timer);
}

void EventLoop::run() {
    constexpr int64_t FOR_EVER_MS = 3'600'000;
    stopped = false;
    while (!stopped)
        runOnce(FOR_EVER_MS);
}

int64_t EventLoop::msToNextTimer(int64_t maxMs) const {
    int64_t ms = maxMs;
    const int64_t now = nowMs();
    for (const auto& [timer, alarm] : timers)
        ms = std::min(ms, std::max<int64_t>(0, alarm.atMs - now));
    return ms;
}

void EventLoop::runDueTimers() {
    const int64_t now = nowMs();
    std::vector<Timer> due;
    for (const auto& [timer, alarm] : timers)
        if (alarm.atMs <= now)
            due.push_back(timer);
    for (const Timer timer : due) {
        const auto found = timers.find(timer);
        if (found == timers.end())
            continue; // cancelled by one that ran before
        const Due call = std::move(found->second.due);
        timers.erase(found);
        call();
    }
}

void EventLoop::runOnce(int64_t maxMs) {
    std::vector<pollfd> fds;
    std::vector<std::shared_ptr<Ready>> handlers;
    for (const auto& [fd, watcher] : watchers) {
        fds.push_back({fd, watcher.events, 0});
        handlers.push_back(watcher.ready);
    }
    const int ready = poll(fds.data(), fds.size(), static_cast<int>(msToNextTimer(maxMs)));
    for (size_t i = 0; ready > 0 && i < fds.size(); ++i) {
        if (fds[i].revents == 0)
            continue;
        // A handler that ran before may have removed this watcher, and its descriptor's number may be in use again.
        const auto found = watchers.find(fds[i].fd);
        if (found != watchers.end() && found->second.ready == handlers[i])
            (*handlers[i])(fds[i].revents);
    }
    runDueTimers();
}

} // namespace ostrel
