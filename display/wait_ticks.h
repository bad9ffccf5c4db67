// When the idle handler is due: 36 times a second, from the moment it was registered. A tick that nobody came for is
// not made up.
#ifndef OSTREL_DISPLAY_WAIT_TICKS_H
#define OSTREL_DISPLAY_WAIT_TICKS_H

#include <cstdint>

namespace ostrel {

constexpr int64_t TICKS_PER_SECOND = 36;

class IdleTicks {
  public:
    void start(int64_t nowMs);
    void stop() { running = false; }
    bool isRunning() const { return running; }

    // True when a tick has become due since the last call that returned true.
    bool takeDue(int64_t nowMs);

    // Milliseconds until the next one, 0 when it is due, -1 when none will be.
    int64_t msUntilDue(int64_t nowMs) const;

  private:
    bool running = false;
    int64_t startedAtMs = 0;
    int64_t taken = 0; // number of the latest tick that was taken
};

} // namespace ostrel

#endif
