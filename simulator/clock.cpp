#include "simulator/clock.h"

#include <chrono>

namespace ostrel {

int64_t nowMs() {
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

} // namespace ostrel
