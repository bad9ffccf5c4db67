// sleep and usleep, taken over: they return at once and are logged as `sleep(1)` and `usleep(20000)`.
#ifndef OSTREL_TESTS_SUPPORT_FAKE_SLEEP_H
#define OSTREL_TESTS_SUPPORT_FAKE_SLEEP_H

#include <cstdint>
#include <functional>

struct FakeSleep {
    // Whether sleeps are logged; a test of long polling loops may only want to count them.
    bool log = true;

    // How long the program believes to have slept, microseconds.
    uint64_t sleptUs = 0;

    // Called in each sleep with its length, after it is logged; may throw.
    std::function<void(uint64_t us)> duringSleep;
};

// `fakeSleep() = {}` is a fresh start.
FakeSleep& fakeSleep();

#endif
