// Preloaded in front of a program in the simulator: stops it for good at its first commit of settings, in front of the
// request or, when OSTREL_POWER_CUT is "behind", after the driver has answered it. Who waits for that finds a byte in
// the file OSTREL_POWER_CUT_MARK, which stays locked until the program is dead.
#include "util/api.h"

#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace {

constexpr unsigned long COMMIT = 0x1004;

using Ioctl = int (*)(int, unsigned long, void*);

[[noreturn]] void standStill() {
    const int mark = open(getenv("OSTREL_POWER_CUT_MARK"), O_WRONLY | O_CLOEXEC);
    if (mark < 0 || flock(mark, LOCK_EX) != 0 || write(mark, "!", 1) != 1)
        _exit(3);
    for (;;)
        pause();
}

} // namespace

extern "C" OSTREL_API int ioctlTaken(int fd, unsigned long request, ...) __asm__("ioctl");
extern "C" int ioctlTaken(int fd, unsigned long request, ...) { // NOLINT(cert-dcl50-cpp): ioctl is variadic
    va_list arguments;
    va_start(arguments, request);
    void* const argument = va_arg(arguments, void*);
    va_end(arguments);
    const char* const when = getenv("OSTREL_POWER_CUT");
    const bool isBehind = when != nullptr && strcmp(when, "behind") == 0;
    if (request == COMMIT && !isBehind)
        standStill();
    const auto next = reinterpret_cast<Ioctl>(dlsym(RTLD_NEXT, "ioctl"));
    const int result = next(fd, request, argument);
    if (request == COMMIT)
        standStill();
    return result;
}
