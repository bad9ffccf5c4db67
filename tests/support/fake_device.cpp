#include "tests/support/fake_device.h"

#include "tests/support/call_log.h"
#include "util/api.h"

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <fcntl.h>
#include <sstream>
#include <sys/ioctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#ifndef __O_LARGEFILE
#define __O_LARGEFILE 0
#endif

FakeDevices& fakeDevices() {
    static FakeDevices* const devices = new FakeDevices;
    return *devices;
}

namespace {

// Far above what a test has open for itself.
constexpr int FIRST_DESCRIPTOR = 700;

// Adds the call and how it ended; the call's result, with errno set.
int logged(const std::string& call, int error) {
    callLog().add(error == 0 ? call : call + " = -1 " + strerrorname_np(error));
    errno = error;
    return error == 0 ? 0 : -1;
}

int openFake(const FakeDevice& device, const char* path, int flags) {
    FakeDevices& devices = fakeDevices();
    std::ostringstream call;
    call << "open(" << quotedBytes(path) << ", ";
    if ((flags & ~__O_LARGEFILE) == O_RDONLY)
        call << "O_RDONLY)";
    else
        call << "0x" << std::hex << flags << std::dec << ")";
    const int error = callLog().nextCallFails() ? ENODEV : device.openError;
    devices.lastRefused = error != 0 ? path : "";
    if (error != 0)
        return logged(call.str(), error);
    int descriptor = FIRST_DESCRIPTOR;
    while (devices.openDescriptors.count(descriptor) != 0)
        ++descriptor;
    devices.openDescriptors[descriptor] = path;
    call << " = " << descriptor;
    logged(call.str(), 0);
    return descriptor;
}

int openAny(const char* path, int flags, mode_t mode) {
    const auto found = fakeDevices().byPath.find(path);
    if (found != fakeDevices().byPath.end())
        return openFake(found->second, path, flags);
    return static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}

// The device that a descriptor belongs to; for -1 the one that could not be opened just before, so that a request on
// the failed descriptor is seen too. Null: none of ours.
const FakeDevice* deviceOf(int descriptor) {
    const FakeDevices& devices = fakeDevices();
    const auto open = devices.openDescriptors.find(descriptor);
    if (open == devices.openDescriptors.end() && descriptor != -1)
        return nullptr;
    const auto device = devices.byPath.find(descriptor == -1 ? devices.lastRefused : open->second);
    return device == devices.byPath.end() ? nullptr : &device->second;
}

int ioctlAny(int descriptor, unsigned long request, void* argument) {
    const FakeDevice* const device = deviceOf(descriptor);
    if (device == nullptr)
        return static_cast<int>(syscall(SYS_ioctl, descriptor, request, argument));
    std::ostringstream call;
    call << "ioctl(" << descriptor << ", 0x" << std::hex << request << std::dec << ", ";
    if (device->describe)
        call << device->describe(request, argument) << ')';
    else
        call << reinterpret_cast<uintptr_t>(argument) << ')';
    int error = callLog().nextCallFails() ? EIO : 0;
    if (descriptor == -1)
        error = EBADF;
    else if (error == 0 && device->answer)
        error = device->answer(request, argument);
    return logged(call.str(), error);
}

} // namespace

// The functions of the operating system, under either name that a size of file offsets or of time gives them. Their
// one optional argument travels like a declared one; without O_CREAT it is not looked at.

extern "C" OSTREL_API int openTaken(const char* path, int flags, mode_t mode) __asm__("open");
extern "C" int openTaken(const char* path, int flags, mode_t mode) {
    return openAny(path, flags, mode);
}

extern "C" OSTREL_API int open64Taken(const char* path, int flags, mode_t mode) __asm__("open64");
extern "C" int open64Taken(const char* path, int flags, mode_t mode) {
    return openAny(path, flags | __O_LARGEFILE, mode);
}

extern "C" OSTREL_API int ioctlTaken(int descriptor, unsigned long request, void* argument) __asm__("ioctl");
extern "C" int ioctlTaken(int descriptor, unsigned long request, void* argument) {
    return ioctlAny(descriptor, request, argument);
}

extern "C" OSTREL_API int
ioctlTime64Taken(int descriptor, unsigned long request, void* argument) __asm__("__ioctl_time64");
extern "C" int ioctlTime64Taken(int descriptor, unsigned long request, void* argument) {
    return ioctlAny(descriptor, request, argument);
}

// A close that fails, fails as on Linux: the descriptor is gone all the same.
extern "C" OSTREL_API int closeTaken(int descriptor) __asm__("close");
extern "C" int closeTaken(int descriptor) {
    if (deviceOf(descriptor) == nullptr)
        return static_cast<int>(syscall(SYS_close, descriptor));
    const bool fails = callLog().nextCallFails();
    const bool wasOpen = fakeDevices().openDescriptors.erase(descriptor) != 0;
    const int error = !wasOpen ? EBADF : fails ? EIO : 0;
    return logged("close(" + std::to_string(descriptor) + ")", error);
}
