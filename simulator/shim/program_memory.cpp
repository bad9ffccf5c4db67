#include "simulator/shim/program_memory.h"

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace ostrel {
namespace {

// Pages are at least this big everywhere, so a copy that stays between two multiples of it works wholly or not at all.
constexpr size_t PAGE = 4096;

// The kernel tests addresses for us when it moves bytes through a pipe. Works under emulation too, where
// process_vm_readv does not.
class Probe {
  public:
    Probe() : error(syscall(SYS_pipe2, ends, O_CLOEXEC) == 0 ? 0 : -errno) {}
    ~Probe() {
        if (error == 0) {
            syscall(SYS_close, ends[0]);
            syscall(SYS_close, ends[1]);
        }
    }
    Probe(const Probe&) = delete;
    Probe& operator=(const Probe&) = delete;

    // One of the two addresses is the program's; `size` bytes lie in one page of it.
    int move(void* to, const void* from, size_t size) const {
        const auto expected = static_cast<long>(size);
        if (syscall(SYS_write, ends[1], from, size) != expected || syscall(SYS_read, ends[0], to, size) != expected)
            return -EFAULT;
        return 0;
    }

    int ends[2] = {-1, -1};
    int error;
};

size_t bytesInPage(const void* address, size_t atMost) {
    const size_t left = PAGE - reinterpret_cast<uintptr_t>(address) % PAGE;
    return left < atMost ? left : atMost;
}

} // namespace

int copyFromProgram(void* to, const void* programAddress, size_t size) {
    const Probe probe;
    auto* target = static_cast<char*>(to);
    const auto* source = static_cast<const char*>(programAddress);
    int error = probe.error;
    while (error == 0 && size > 0) {
        const size_t part = bytesInPage(source, size);
        error = probe.move(target, source, part);
        if (error != 0)
            break;
        target += part;
        source += part;
        size -= part;
    }
    return error;
}

int copyToProgram(void* programAddress, const void* from, size_t size) {
    const Probe probe;
    auto* target = static_cast<char*>(programAddress);
    const auto* source = static_cast<const char*>(from);
    int error = probe.error;
    while (error == 0 && size > 0) {
        const size_t part = bytesInPage(target, size);
        error = probe.move(target, source, part);
        if (error != 0)
            break;
        target += part;
        source += part;
        size -= part;
    }
    return error;
}

int copyTextFromProgram(char* to, size_t size, const char* programAddress) {
    const Probe probe;
    int error = probe.error;
    while (error == 0 && size > 0) {
        const size_t part = bytesInPage(programAddress, size);
        error = probe.move(to, programAddress, part);
        if (error != 0 || memchr(to, 0, part) != nullptr)
            return error;
        to += part;
        programAddress += part;
        size -= part;
    }
    return error != 0 ? error : -EINVAL;
}

} // namespace ostrel
