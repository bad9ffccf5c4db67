// The two names under which programs call ioctl. Requests to the simulated devices are answered here, all others go
// to the kernel unchanged.
#include "simulator/shim/device.h"
#include "simulator/shim/requests.h"

#include <cerrno>
#include <cstdarg>
#include <sys/ioctl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace ostrel {
namespace {

int answer(Device device, unsigned long request, void* argument) {
    switch (device) {
    case Device::Framebuffer:
        return requestFramebuffer(request, argument);
    case Device::Touch:
        return requestTouch(request, argument);
    case Device::Backlight:
        return requestBacklight(request, argument);
    case Device::Nvram:
        return requestSettings(request, argument);
    case Device::None:
        break;
    }
    return -ENOTTY;
}

int ioctlOf(int fd, unsigned long request, void* argument) {
    const int before = errno;
    const Device device = deviceOf(fd);
    errno = before;
    if (device == Device::None)
        return static_cast<int>(syscall(SYS_ioctl, fd, request, argument));
    // Request numbers have 32 bits; a program that kept one in an int has its sign in the bits above.
    const int result = answer(device, static_cast<unsigned>(request), argument);
    errno = result < 0 ? -result : before;
    return result < 0 ? -1 : result;
}

} // namespace
} // namespace ostrel

extern "C" {

__attribute__((visibility("default"))) int ioctl(int fd, unsigned long request, ...) noexcept {
    va_list arguments;
    va_start(arguments, request);
    void* const argument = va_arg(arguments, void*);
    va_end(arguments);
    return ostrel::ioctlOf(fd, request, argument);
}

// What 32-bit programs call that were built with a 64-bit time_t.
__attribute__((visibility("default"))) int __ioctl_time64(int fd, unsigned long request, ...) noexcept {
    va_list arguments;
    va_start(arguments, request);
    void* const argument = va_arg(arguments, void*);
    va_end(arguments);
    return ostrel::ioctlOf(fd, request, argument);
}
}
