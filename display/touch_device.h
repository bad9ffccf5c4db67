// A touch screen that is open: an evdev device, or a FIFO with the same records that the simulator or a test writes.
// Reads and asks; what the events mean is the decoder's business.
#ifndef OSTREL_DISPLAY_TOUCH_DEVICE_H
#define OSTREL_DISPLAY_TOUCH_DEVICE_H

#include "display/touch_decoder.h"
#include "display/touch_scale.h"

#include <cstddef>
#include <cstdint>
#include <linux/input.h>
#include <string>
#include <sys/types.h>

namespace ostrel {

// What is asked of the system. Tests put devices of their own behind it.
struct TouchCalls {
    int (*open)(const char* path, int flags);
    ssize_t (*read)(int descriptor, void* bytes, size_t size);
    int (*ioctl)(int descriptor, unsigned long request, void* argument);
    int (*wait)(int descriptor, int timeoutMs); // until readable; -1: for ever
};
extern TouchCalls touchCalls;

constexpr int64_t STALE_AFTER_MS = 250;

struct TouchDevice {
    int descriptor = -1; // -1: none is open
    std::string path;
    bool isStream = false; // a FIFO: knows nothing but what comes out of it
    bool multiTouch = false;
    TouchScale scale;
    int64_t staleAfterMs = STALE_AFTER_MS;        // see touch_input.h
    unsigned char rest[sizeof(input_event)] = {}; // the beginning of a record whose end has not come yet
    size_t restBytes = 0;
};

// Opens the device at `path`. A FIFO need not have a writer, and waits for the next when one leaves: it never counts
// as unplugged. One that does not tell its ranges is in panel pixels. False leaves `opened` alone and says why.
bool openTouchDevice(const char* path, TouchDevice& opened, std::string& why);

// Whether it says that it has absolute axes and touch, and that it lies over a screen.
bool isTouchScreen(const TouchDevice& device);

void closeTouchDevice(TouchDevice& device);

enum class TouchRead { All, More, Gone };

// Reads at most `capacity` events, up to READ_EVENTS, without waiting. More: ask again, there may be others.
constexpr size_t READ_EVENTS = 64;
TouchRead readTouchEvents(TouchDevice& device, TouchEvent* events, size_t& count);

// Asks where the pen is now. False where the device cannot say.
bool askTouchState(const TouchDevice& device, TouchState& state);

} // namespace ostrel

#endif
