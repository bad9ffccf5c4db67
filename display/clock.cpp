#include "display/clock.h"

#include <ctime>

namespace ostrel {

namespace {

int64_t systemMs() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<int64_t>(now.tv_sec) * 1000 + now.tv_nsec / 1'000'000;
}

int64_t (*currentClock)() = systemMs;

} // namespace

int64_t nowMs() {
    return currentClock();
}

void replaceClock(int64_t (*clock)()) {
    currentClock = clock != nullptr ? clock : systemMs;
}

} // namespace ostrel
