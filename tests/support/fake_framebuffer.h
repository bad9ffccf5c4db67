// A framebuffer device, backlights and their files that exist only in the test: open, ioctl, mmap and opendir are
// taken over for them by the executable's own definitions, and go to the system for everything else.
#ifndef OSTREL_TESTS_SUPPORT_FAKE_FRAMEBUFFER_H
#define OSTREL_TESTS_SUPPORT_FAKE_FRAMEBUFFER_H

#include <cstdint>
#include <functional>
#include <linux/fb.h>
#include <string>
#include <vector>

struct FakeDevices {
    // What /dev/fake-fb answers. Its memory is `memory`.
    fb_var_screeninfo screen{};
    fb_fix_screeninfo layout{};
    std::vector<uint8_t> memory;
    bool tellsLayout = true;
    bool canBeMapped = true;

    // Whether /dev/ostrel_backlight is there, and a directory that stands for /sys/class/backlight ("": none).
    bool hasBacklightDevice = false;
    std::string backlightClass;

    // What was asked for, in order: "blank 4", "backlight 10 1".
    std::vector<std::string> log;

    // Called before each line is logged.
    std::function<void()> beforeLog;

    // Descriptors of the fake devices that are open.
    int openCount = 0;

    // A screen of this size and format, its lines `strideBytes` apart, filled with `filler`.
    void setScreen(uint32_t width, uint32_t height, uint32_t bitsPerPixel, uint32_t strideBytes, uint8_t filler);
    void setChannels(fb_bitfield red, fb_bitfield green, fb_bitfield blue);
};

// `fakeDevices() = {}` is a fresh start.
FakeDevices& fakeDevices();

constexpr const char* FAKE_FRAMEBUFFER = "/dev/fake-fb";

#endif
