// Tests wait for a condition, and never for a time: long enough for the slowest machine that does get there.
#ifndef OSTREL_TESTS_E2E_PATIENCE_H
#define OSTREL_TESTS_E2E_PATIENCE_H

#include "simulator/clock.h"

#include <functional>
#include <unistd.h>

constexpr int64_t PATIENCE_S = 120;

// Looks every few milliseconds whether `isSo`.
inline bool soon(const std::function<bool()>& isSo) {
    for (const int64_t end = ostrel::nowMs() + PATIENCE_S * 1000; ostrel::nowMs() < end; usleep(5000))
        if (isSo())
            return true;
    return isSo();
}

#endif
