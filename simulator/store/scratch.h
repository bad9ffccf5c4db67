// Working memory for one request, straight from the kernel: the store also works inside programs whose malloc is their
// own, or fails.
#ifndef OSTREL_SIMULATOR_STORE_SCRATCH_H
#define OSTREL_SIMULATOR_STORE_SCRATCH_H

#include <sys/mman.h>

namespace ostrel {

template<typename Content>
class Scratch {
  public:
    Scratch() : memory(mmap(nullptr, sizeof(Content), PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0)) {}
    ~Scratch() {
        if (*this)
            munmap(memory, sizeof(Content));
    }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;

    explicit operator bool() const { return memory != MAP_FAILED; }
    Content* operator->() const { return static_cast<Content*>(memory); }
    Content& operator*() const { return *static_cast<Content*>(memory); }

  private:
    void* memory;
};

} // namespace ostrel

#endif
