// The simulator's only time.
#ifndef OSTREL_SIMULATOR_CLOCK_H
#define OSTREL_SIMULATOR_CLOCK_H

#include <cstdint>

namespace ostrel {

// Milliseconds from some fixed point; never goes back.
int64_t nowMs();

} // namespace ostrel

#endif
