#include "display/wait_ticks.h"

#include <algorithm>

namespace ostrel {

void IdleTicks::start(int64_t nowMs) {
    running = true;
    startedAtMs = nowMs;
    taken = 0;
}

bool IdleTicks::takeDue(int64_t nowMs) {
    const int64_t latest = (nowMs - startedAtMs) * TICKS_PER_SECOND / 1000;
    if (!running || latest <= taken)
        return false;
    taken = latest;
    return true;
}

int64_t IdleTicks::msUntilDue(int64_t nowMs) const {
    if (!running)
        return -1;
    const int64_t dueAtMs = startedAtMs + ((taken + 1) * 1000 + TICKS_PER_SECOND - 1) / TICKS_PER_SECOND;
    return std::max<int64_t>(dueAtMs - nowMs, 0);
}

} // namespace ostrel
