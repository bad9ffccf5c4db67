#include "tests/support/fake_framebuffer.h"

#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <set>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

constexpr const char* BACKLIGHT_DEVICE = "/dev/ostrel_backlight";
constexpr const char* BACKLIGHT_CLASS = "/sys/class/backlight";

struct OpenDevices {
    std::set<int> framebuffers;
    std::set<int> backlights;
};

OpenDevices& openDevices() {
    static OpenDevices* const instance = new OpenDevices;
    return *instance;
}

int openSystem(const char* path, int flags, mode_t mode) {
    return static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}

int openFake(std::set<int>& devices) {
    const int descriptor = openSystem("/dev/null", O_RDWR | O_CLOEXEC, 0);
    devices.insert(descriptor);
    ++fakeDevices().openCount;
    return descriptor;
}

void log(const std::string& line) {
    if (fakeDevices().beforeLog)
        fakeDevices().beforeLog();
    fakeDevices().log.push_back(line);
}

int failWith(int error) {
    errno = error;
    return -1;
}

int framebufferRequest(unsigned long request, void* argument) {
    FakeDevices& fake = fakeDevices();
    switch (request) {
    case FBIOGET_VSCREENINFO:
        memcpy(argument, &fake.screen, sizeof fake.screen);
        return 0;
    case FBIOGET_FSCREENINFO:
        if (!fake.tellsLayout)
            return failWith(EIO);
        memcpy(argument, &fake.layout, sizeof fake.layout);
        return 0;
    case FBIOBLANK:
        log("blank " + std::to_string(reinterpret_cast<uintptr_t>(argument)));
        return 0;
    default:
        return failWith(EINVAL);
    }
}

} // namespace

FakeDevices& fakeDevices() {
    static FakeDevices* const instance = new FakeDevices;
    return *instance;
}

void FakeDevices::setScreen(
    uint32_t width, uint32_t height, uint32_t bitsPerPixel, uint32_t strideBytes, uint8_t filler) {
    screen.xres = screen.xres_virtual = width;
    screen.yres = screen.yres_virtual = height;
    screen.bits_per_pixel = bitsPerPixel;
    layout.line_length = strideBytes;
    layout.smem_len = strideBytes * height;
    memory.assign(layout.smem_len, filler);
}

void FakeDevices::setChannels(fb_bitfield red, fb_bitfield green, fb_bitfield blue) {
    screen.red = red;
    screen.green = green;
    screen.blue = blue;
}

// The functions of the operating system, by their symbols alone: what the headers declare differs from system to
// system. An optional argument travels like a declared one.

// Also under the name that it has for wide file offsets.
extern "C" int openTaken(const char* path, int flags, mode_t mode) __asm__("open");
extern "C" int open64Taken(const char* path, int flags, mode_t mode) __asm__("open64");
extern "C" int open64Taken(const char* path, int flags, mode_t mode) {
    return openTaken(path, flags, mode);
}
extern "C" int openTaken(const char* path, int flags, mode_t mode) {
    if (strcmp(path, FAKE_FRAMEBUFFER) == 0)
        return openFake(openDevices().framebuffers);
    if (strcmp(path, BACKLIGHT_DEVICE) == 0)
        return fakeDevices().hasBacklightDevice ? openFake(openDevices().backlights) : failWith(ENOENT);
    if (strncmp(path, BACKLIGHT_CLASS, strlen(BACKLIGHT_CLASS)) == 0) {
        log("open " + std::string(path));
        const std::string redirected = fakeDevices().backlightClass + (path + strlen(BACKLIGHT_CLASS));
        return openSystem(redirected.c_str(), flags, mode);
    }
    return openSystem(path, flags, mode);
}

extern "C" int closeTaken(int descriptor) __asm__("close");
extern "C" int closeTaken(int descriptor) {
    if (openDevices().framebuffers.erase(descriptor) + openDevices().backlights.erase(descriptor) > 0)
        --fakeDevices().openCount;
    return static_cast<int>(syscall(SYS_close, descriptor));
}

extern "C" int ioctlTaken(int descriptor, unsigned long request, void* argument) __asm__("ioctl");
extern "C" int ioctlTaken(int descriptor, unsigned long request, void* argument) {
    if (openDevices().framebuffers.count(descriptor) > 0)
        return framebufferRequest(request, argument);
    if (openDevices().backlights.count(descriptor) > 0) {
        log("backlight " + std::to_string(request) + ' ' + std::to_string(reinterpret_cast<uintptr_t>(argument)));
        return 0;
    }
    return static_cast<int>(syscall(SYS_ioctl, descriptor, request, argument));
}

extern "C" void* mmapTaken(void* address, size_t length, int protection, int flags, int file, off_t offset) //
    __asm__("mmap");
extern "C" void* mmapTaken(void* address, size_t length, int protection, int flags, int file, off_t offset) {
    FakeDevices& fake = fakeDevices();
    if (openDevices().framebuffers.count(file) > 0) {
        if (fake.canBeMapped && length <= fake.memory.size())
            return fake.memory.data();
        errno = ENOMEM;
        return MAP_FAILED;
    }
    const auto next = reinterpret_cast<decltype(&mmapTaken)>(dlsym(RTLD_NEXT, "mmap"));
    return next(address, length, protection, flags, file, offset);
}

extern "C" int munmapTaken(void* address, size_t length) __asm__("munmap");
extern "C" int munmapTaken(void* address, size_t length) {
    if (address == fakeDevices().memory.data())
        return 0;
    return static_cast<int>(syscall(SYS_munmap, address, length));
}

extern "C" DIR* opendirTaken(const char* path) __asm__("opendir");
extern "C" DIR* opendirTaken(const char* path) {
    const auto next = reinterpret_cast<decltype(&opendirTaken)>(dlsym(RTLD_NEXT, "opendir"));
    if (strcmp(path, BACKLIGHT_CLASS) != 0)
        return next(path);
    if (!fakeDevices().backlightClass.empty())
        return next(fakeDevices().backlightClass.c_str());
    errno = ENOENT;
    return nullptr;
}
