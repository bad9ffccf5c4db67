#include "tests/support/touch_desk.h"

#include "display/clock.h"

#include <cerrno>
#include <fcntl.h>
#include <linux/input.h>
#include <poll.h>
#include <stdexcept>
#include <unistd.h>

using ostrel::TouchEvent;

namespace {

TouchDesk* desk = nullptr;

int64_t deskClock() {
    return desk->nowMs;
}

ostrel::TouchDevice streamOf(int descriptor) {
    ostrel::TouchDevice device;
    device.descriptor = descriptor;
    device.path = "/dev/desk";
    device.isStream = true;
    return device;
}

} // namespace

TouchDesk::TouchDesk() : systemCalls(ostrel::touchCalls) {
    desk = this;
    ostrel::replaceClock(deskClock);
    ostrel::touchCalls.read = readStream;
    ostrel::touchCalls.wait = wait;
    int ends[2];
    if (pipe2(ends, O_NONBLOCK | O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe");
    reader = ends[0];
    writer = ends[1];
    touch = std::make_unique<ostrel::TouchInput>(streamOf(reader));
}

TouchDesk::~TouchDesk() {
    touch.reset();
    close(writer);
    ostrel::touchCalls = systemCalls;
    ostrel::replaceClock(nullptr);
    desk = nullptr;
}

void TouchDesk::press(int x, int y) {
    write({{EV_ABS, ABS_X, x}, {EV_ABS, ABS_Y, y}, {EV_KEY, BTN_TOUCH, 1}, {EV_SYN, SYN_REPORT, 0}});
}

void TouchDesk::move(int x, int y) {
    write({{EV_ABS, ABS_X, x}, {EV_ABS, ABS_Y, y}, {EV_SYN, SYN_REPORT, 0}});
}

void TouchDesk::lift() {
    write({{EV_KEY, BTN_TOUCH, 0}, {EV_SYN, SYN_REPORT, 0}});
}

void TouchDesk::tap(int x, int y) {
    press(x, y);
    lift();
}

void TouchDesk::write(const std::vector<TouchEvent>& events) {
    for (const TouchEvent& event : events) {
        input_event record{};
        record.type = event.type;
        record.code = event.code;
        record.value = event.value;
        writeBytes(&record, sizeof record);
    }
}

void TouchDesk::writeBytes(const void* bytes, size_t size) {
    if (::write(writer, bytes, size) != static_cast<ssize_t>(size))
        throw std::runtime_error("the stream is full");
}

void TouchDesk::unplug() {
    unplugged = true;
}

ostrel::TouchDevice TouchDesk::duplicate() const {
    return streamOf(dup(reader));
}

void TouchDesk::at(int64_t timeMs, std::function<void()> action) {
    script.push_back({timeMs, std::move(action)});
}

std::string TouchDesk::looks(int count) {
    std::string seen;
    for (int i = 0; i < count; ++i) {
        const int x = input().readX();
        const int y = input().readY();
        seen += x < 0 && y < 0 ? "up\n" : std::to_string(x) + "," + std::to_string(y) + "\n";
    }
    return seen;
}

bool TouchDesk::waitForStream() const {
    pollfd stream = {reader, POLLIN, 0};
    return poll(&stream, 1, 10'000) == 1;
}

bool TouchDesk::isReadable(int descriptor) {
    pollfd program = {descriptor, POLLIN, 0};
    return poll(&program, 1, 0) == 1;
}

ssize_t TouchDesk::readStream(int descriptor, void* bytes, size_t size) {
    if (desk->unplugged) {
        errno = ENODEV;
        return -1;
    }
    return ::read(descriptor, bytes, size);
}

int TouchDesk::wait(int descriptor, int timeoutMs) {
    if (++desk->waits > 100'000)
        throw std::runtime_error("it spins");
    if (desk->unplugged || isReadable(descriptor))
        return 1;
    const int64_t untilMs = desk->nowMs + timeoutMs;
    if (!desk->script.empty() && (timeoutMs < 0 || desk->script.front().timeMs <= untilMs)) {
        const Later next = desk->script.front();
        desk->script.erase(desk->script.begin());
        desk->nowMs = std::max(desk->nowMs, next.timeMs);
        next.action();
        return 1;
    }
    if (timeoutMs < 0)
        throw std::runtime_error("it would wait for ever");
    desk->nowMs = untilMs;
    return 0;
}
