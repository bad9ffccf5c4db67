// One descriptor for a program's own poll loop. It is readable when the touch device is, or when the program is wanted
// at a certain time.
#ifndef OSTREL_DISPLAY_WAIT_DESCRIPTOR_H
#define OSTREL_DISPLAY_WAIT_DESCRIPTOR_H

#include <cstdint>

namespace ostrel {

class WaitDescriptor {
  public:
    WaitDescriptor() = default;
    ~WaitDescriptor();
    WaitDescriptor(const WaitDescriptor&) = delete;
    WaitDescriptor& operator=(const WaitDescriptor&) = delete;

    // Makes the descriptor, watching `device` too unless that is -1. False when the system has none to give.
    bool open(int device);
    bool isOpen() const { return epoll >= 0; }

    // -1 until opened, then the same for good.
    int descriptor() const { return epoll; }

    void unwatch(int device);

    // Readable once that many milliseconds have passed, 0: at once; in place of an earlier wish.
    void wakeIn(int64_t delayMs);

  private:
    int epoll = -1;
    int timer = -1;
};

} // namespace ostrel

#endif
