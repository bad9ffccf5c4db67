// Owns a file descriptor.
#ifndef OSTREL_SIMULATOR_DESCRIPTOR_H
#define OSTREL_SIMULATOR_DESCRIPTOR_H

#include <unistd.h>
#include <utility>

namespace ostrel {

class Descriptor {
  public:
    Descriptor() = default;
    explicit Descriptor(int fd) : fd(fd) {}
    Descriptor(Descriptor&& other) noexcept : fd(std::exchange(other.fd, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        if (this != &other) {
            reset();
            fd = std::exchange(other.fd, -1);
        }
        return *this;
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { reset(); }

    int get() const { return fd; }
    bool isOpen() const { return fd >= 0; }
    int release() { return std::exchange(fd, -1); }
    void reset() {
        if (fd >= 0)
            close(std::exchange(fd, -1));
    }

  private:
    int fd = -1;
};

} // namespace ostrel

#endif
