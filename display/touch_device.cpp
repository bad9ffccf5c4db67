#include "display/touch_device.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace ostrel {

namespace {

int systemOpen(const char* path, int flags) {
    return ::open(path, flags);
}

ssize_t systemRead(int descriptor, void* bytes, size_t size) {
    return ::read(descriptor, bytes, size);
}

int systemIoctl(int descriptor, unsigned long request, void* argument) {
    return ::ioctl(descriptor, request, argument);
}

int systemWait(int descriptor, int timeoutMs) {
    pollfd touch = {descriptor, POLLIN, 0};
    return poll(&touch, 1, timeoutMs);
}

// The capabilities of one event type, as EVIOCGBIT tells them.
struct Capabilities {
    unsigned char bits[KEY_MAX / 8 + 1] = {};

    Capabilities(int device, int type) {
        if (touchCalls.ioctl(device, EVIOCGBIT(type, sizeof bits), bits) < 0)
            memset(bits, 0, sizeof bits);
    }
    bool has(unsigned code) const { return (bits[code / 8] >> code % 8 & 1) != 0; }
};

bool askRange(int device, unsigned axis, AxisRange& range) {
    input_absinfo info{};
    if (touchCalls.ioctl(device, EVIOCGABS(axis), &info) < 0)
        return false;
    range = {info.minimum, info.maximum};
    return true;
}

void askAxes(TouchDevice& device) {
    const Capabilities axes(device.descriptor, EV_ABS);
    device.multiTouch = axes.has(ABS_MT_SLOT) && axes.has(ABS_MT_TRACKING_ID) && axes.has(ABS_MT_POSITION_X);
    AxisRange x;
    AxisRange y;
    if (askRange(device.descriptor, device.multiTouch ? ABS_MT_POSITION_X : ABS_X, x) &&
        askRange(device.descriptor, device.multiTouch ? ABS_MT_POSITION_Y : ABS_Y, y)) {
        device.scale.xRange = x;
        device.scale.yRange = y;
    }
}

bool askSlot(int device, uint32_t axis, int32_t& value) {
    struct {
        uint32_t code;
        int32_t firstSlot;
    } request = {axis, 0};
    if (touchCalls.ioctl(device, EVIOCGMTSLOTS(sizeof request), &request) < 0)
        return false;
    value = request.firstSlot;
    return true;
}

bool askAxis(int device, unsigned axis, int32_t& value) {
    input_absinfo info{};
    if (touchCalls.ioctl(device, EVIOCGABS(axis), &info) < 0)
        return false;
    value = info.value;
    return true;
}

} // namespace

TouchCalls touchCalls = {systemOpen, systemRead, systemIoctl, systemWait};

bool openTouchDevice(const char* path, TouchDevice& opened, std::string& why) {
    struct stat file {};
    if (stat(path, &file) != 0) {
        why = strerror(errno);
        return false;
    }
    const bool isStream = S_ISFIFO(file.st_mode);
    if (!isStream && !S_ISCHR(file.st_mode)) {
        why = "it is neither an input device nor a FIFO";
        return false;
    }
    // Being a writer itself keeps a FIFO from ending when its last writer leaves, and poll from returning at once.
    const int access = isStream ? O_RDWR : O_RDONLY;
    TouchDevice device;
    device.descriptor = touchCalls.open(path, access | O_NONBLOCK | O_CLOEXEC);
    if (device.descriptor < 0) {
        why = strerror(errno);
        return false;
    }
    device.path = path;
    device.isStream = isStream;
    askAxes(device);
    AxisRange range;
    if (!isStream && !askRange(device.descriptor, device.multiTouch ? ABS_MT_POSITION_X : ABS_X, range)) {
        why = "it is not a touch screen";
        closeTouchDevice(device);
        return false;
    }
    opened = device;
    return true;
}

bool isTouchScreen(const TouchDevice& device) {
    unsigned char properties[INPUT_PROP_MAX / 8 + 1] = {};
    if (touchCalls.ioctl(device.descriptor, EVIOCGPROP(sizeof properties), properties) < 0)
        memset(properties, 0, sizeof properties);
    const bool isTouchPad = (properties[INPUT_PROP_POINTER / 8] >> INPUT_PROP_POINTER % 8 & 1) != 0;
    const Capabilities axes(device.descriptor, EV_ABS);
    const Capabilities keys(device.descriptor, EV_KEY);
    const bool single = axes.has(ABS_X) && axes.has(ABS_Y) && keys.has(BTN_TOUCH);
    const bool multi = axes.has(ABS_MT_POSITION_X) && axes.has(ABS_MT_POSITION_Y) && axes.has(ABS_MT_TRACKING_ID);
    return !isTouchPad && (single || multi);
}

void closeTouchDevice(TouchDevice& device) {
    if (device.descriptor >= 0)
        close(device.descriptor);
    device.descriptor = -1;
}

TouchRead readTouchEvents(TouchDevice& device, TouchEvent* events, size_t& count) {
    unsigned char bytes[READ_EVENTS * sizeof(input_event)];
    memcpy(bytes, device.rest, device.restBytes);
    count = 0;
    ssize_t got = 0;
    do
        got = touchCalls.read(device.descriptor, bytes + device.restBytes, sizeof bytes - device.restBytes);
    while (got < 0 && errno == EINTR);
    if (got < 0 && errno == EAGAIN)
        return TouchRead::All;
    if (got <= 0)
        return TouchRead::Gone;

    const size_t total = device.restBytes + static_cast<size_t>(got);
    size_t at = 0;
    for (; total - at >= sizeof(input_event); at += sizeof(input_event)) {
        input_event record;
        memcpy(&record, bytes + at, sizeof record);
        events[count++] = {record.type, record.code, record.value};
    }
    device.restBytes = total - at;
    memcpy(device.rest, bytes + at, device.restBytes);
    return total == sizeof bytes ? TouchRead::More : TouchRead::All;
}

bool askTouchState(const TouchDevice& device, TouchState& state) {
    const int from = device.descriptor;
    // What is still unread in a stream comes before any answer about it.
    if (device.isStream)
        return false;
    TouchState answer;
    answer.multiTouch = device.multiTouch;
    bool known = false;
    if (device.multiTouch) {
        known = askSlot(from, ABS_MT_TRACKING_ID, answer.trackingId) && askSlot(from, ABS_MT_POSITION_X, answer.x) &&
                askSlot(from, ABS_MT_POSITION_Y, answer.y) && askAxis(from, ABS_MT_SLOT, answer.slot);
        answer.down = answer.trackingId >= 0;
    } else {
        unsigned char keys[KEY_MAX / 8 + 1] = {};
        known = touchCalls.ioctl(from, EVIOCGKEY(sizeof keys), keys) >= 0 && askAxis(from, ABS_X, answer.x) &&
                askAxis(from, ABS_Y, answer.y);
        answer.down = (keys[BTN_TOUCH / 8] >> BTN_TOUCH % 8 & 1) != 0;
    }
    if (known)
        state = answer;
    return known;
}

} // namespace ostrel
