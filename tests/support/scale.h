// How often random and model-based tests repeat: in full natively, a twentieth where every step is slow (sanitizers,
// emulated armhf) unless OSTREL_TEST_LONG is set, which ./check --long does.
#ifndef OSTREL_TESTS_SUPPORT_SCALE_H
#define OSTREL_TESTS_SUPPORT_SCALE_H

#include <cstdlib>

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define OSTREL_SLOW_RUN 1
#endif
#endif
#if defined(__SANITIZE_ADDRESS__) || defined(__arm__)
#define OSTREL_SLOW_RUN 1
#endif

inline long scaled(long fullCount) {
#ifdef OSTREL_SLOW_RUN
    if (std::getenv("OSTREL_TEST_LONG") == nullptr)
        return fullCount / 20;
#endif
    return fullCount;
}

#endif
