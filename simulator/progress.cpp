#include "simulator/progress.h"

#include "simulator/clock.h"

#include <utility>

namespace ostrel {

Progress::Progress(EventLoop& loop, Stage stage, Tell tell)
    : loop(loop), stage(std::move(stage)), tell(std::move(tell)) {}

Progress::~Progress() {
    loop.cancel(timer);
}

void Progress::watch() {
    loop.cancel(timer);
    current.clear();
    look();
}

void Progress::look() {
    constexpr int64_t LOOK_EVERY_MS = 200;
    constexpr int64_t LONG_MS = 1000;
    std::string now = stage();
    if (now.empty())
        return;
    if (now != current) {
        current = std::move(now);
        sinceMs = nowMs();
        told = false;
    } else if (!told && nowMs() - sinceMs >= LONG_MS) {
        told = true;
        tell(current);
    }
    timer = loop.after(LOOK_EVERY_MS, [this] { look(); });
}

} // namespace ostrel
