// The display library's only time: monotonic milliseconds, compared by difference.
#ifndef OSTREL_DISPLAY_CLOCK_H
#define OSTREL_DISPLAY_CLOCK_H

#include <cstdint>

namespace ostrel {

int64_t nowMs();

// Makes nowMs ask `clock` instead of the system, for tests; null: the system again.
void replaceClock(int64_t (*clock)());

} // namespace ostrel

#endif
