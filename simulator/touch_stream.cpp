#include "simulator/touch_stream.h"

#include "simulator/clock.h"
#include "simulator/failure.h"
#include "simulator/panel.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <linux/input-event-codes.h>
#include <poll.h>
#include <sys/ioctl.h>

namespace ostrel {
namespace {

constexpr size_t MAX_RECORD_BYTES = 24;
constexpr size_t MAX_FRAME_RECORDS = 6;

template<typename Time>
size_t encode(int64_t seconds, int64_t microseconds, const PenEvent& event, unsigned char* record) {
    const Time time[2] = {static_cast<Time>(seconds), static_cast<Time>(microseconds)};
    memcpy(record, time, sizeof time);
    memcpy(record + sizeof time, &event.type, sizeof event.type);
    memcpy(record + sizeof time + 2, &event.code, sizeof event.code);
    memcpy(record + sizeof time + 4, &event.value, sizeof event.value);
    return sizeof time + 8;
}

} // namespace

size_t encodeRecord(Bits bits, int64_t seconds, int64_t microseconds, const PenEvent& event, unsigned char* record) {
    const bool narrow = bits == Bits::ThirtyTwo || (bits == Bits::Unknown && sizeof(long) == 4);
    return narrow ? encode<int32_t>(seconds, microseconds, event, record)
                  : encode<int64_t>(seconds, microseconds, event, record);
}

TouchStream::TouchStream(const std::string& fifo, Bits bits, EventLoop& loop, SharedPage& page)
    : loop(loop), page(page), bits(bits), pipe(open(fifo.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC)), putAtMs(nowMs()) {
    if (!pipe.isOpen())
        throw systemFailure("cannot open " + fifo);
}

TouchStream::~TouchStream() {
    loop.unwatch(pipe.get());
}

void TouchStream::place(int x, int y) {
    page.penX = std::clamp(x, 0, PANEL_WIDTH - 1);
    page.penY = std::clamp(y, 0, PANEL_HEIGHT - 1);
}

void TouchStream::press(int x, int y) {
    if (diversion != nullptr)
        diversion->press(x, y);
    else
        pressNow(x, y);
}

void TouchStream::pressNow(int x, int y) {
    if (isDown()) {
        moveNow(x, y);
        return;
    }
    place(x, y);
    page.penDown = 1;
    put({{EV_ABS, ABS_X, page.penX}, {EV_ABS, ABS_Y, page.penY}, {EV_KEY, BTN_TOUCH, 1}, {EV_SYN, SYN_REPORT, 0}});
}

void TouchStream::move(int x, int y) {
    if (diversion != nullptr)
        diversion->move(x, y);
    else
        moveNow(x, y);
}

void TouchStream::moveNow(int x, int y) {
    if (!isDown())
        return;
    place(x, y);
    put({{EV_ABS, ABS_X, page.penX}, {EV_ABS, ABS_Y, page.penY}, {EV_SYN, SYN_REPORT, 0}});
}

void TouchStream::release() {
    if (diversion != nullptr)
        diversion->release();
    else
        releaseNow();
}

void TouchStream::releaseNow() {
    if (!isDown())
        return;
    page.penDown = 0;
    put({{EV_KEY, BTN_TOUCH, 0}, {EV_SYN, SYN_REPORT, 0}});
}

void TouchStream::empty() {
    std::array<unsigned char, PIPE_BUF> unread = {};
    releaseNow();
    while (read(pipe.get(), unread.data(), unread.size()) > 0) {
    }
    loop.unwatch(pipe.get());
    dropped = false;
    page.programs = 0;
    page.glances = 0;
    page.waiting = 0;
    putAtMs = nowMs();
    wasUsed = false;
}

void TouchStream::put(Events events) {
    putAtMs = nowMs();
    wasUsed = true;
    page.glances = 0;
    page.waiting = 0;
    if (dropped || write(events))
        return;
    dropped = true;
    loop.watch(pipe.get(), POLLOUT, [this](short /*events*/) { catchUp(); });
}

// A reader skips what follows SYN_DROPPED up to the next report, and takes the state from the one behind it.
void TouchStream::catchUp() {
    if (!write(
            {{EV_SYN, SYN_DROPPED, 0},
             {EV_SYN, SYN_REPORT, 0},
             {EV_ABS, ABS_X, page.penX},
             {EV_ABS, ABS_Y, page.penY},
             {EV_KEY, BTN_TOUCH, static_cast<int32_t>(page.penDown)},
             {EV_SYN, SYN_REPORT, 0}}))
        return;
    dropped = false;
    putAtMs = nowMs();
    loop.unwatch(pipe.get());
}

// All or nothing: less than PIPE_BUF bytes are written whole.
bool TouchStream::write(Events events) {
    std::array<unsigned char, MAX_RECORD_BYTES* MAX_FRAME_RECORDS> bytes = {};
    size_t size = 0;
    timespec now = {};
    clock_gettime(CLOCK_REALTIME, &now);
    for (const PenEvent& event : events)
        size += encodeRecord(bits, now.tv_sec, now.tv_nsec / 1000, event, bytes.data() + size);
    return ::write(pipe.get(), bytes.data(), size) == static_cast<ssize_t>(size);
}

bool TouchStream::isEmpty() const {
    int bytes = 0;
    return !dropped && ioctl(pipe.get(), FIONREAD, &bytes) == 0 && bytes == 0;
}

bool TouchStream::isAwaited() {
    constexpr uint32_t LOOKS_IN_VAIN = 4;
    constexpr int64_t SETTLED_MS = 100;
    constexpr int64_t STARTED_MS = 10000;
    if (!isEmpty())
        return false;
    if (page.programs == 0)
        return nowMs() - putAtMs >= (wasUsed ? SETTLED_MS : STARTED_MS);
    return page.waiting != 0 || page.glances >= LOOKS_IN_VAIN;
}

} // namespace ostrel
