// Any bytes as a touch screen's stream, in pieces of any size, with the program's questions in between: the pen stays
// inside the panel, presses and releases are told in turn, and a lifted pen is up.
//
// The input is a list of pieces: what the program does next, how many bytes arrive before that, and these bytes.
#include "display/clock.h"
#include "display/touch_input.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <vector>

using namespace ostrel;

namespace {

std::vector<uint8_t> unread; // what the device holds
size_t delivered = 0;        // bytes read since the stream began
int64_t clockMs = 0;

void require(bool holds) {
    if (!holds)
        std::abort();
}

ssize_t readUnread(int, void* bytes, size_t size) {
    if (unread.empty()) {
        errno = EAGAIN;
        return -1;
    }
    const size_t count = std::min(size, unread.size());
    memcpy(bytes, unread.data(), count);
    unread.erase(unread.begin(), unread.begin() + static_cast<ptrdiff_t>(count));
    delivered += count;
    return static_cast<ssize_t>(count);
}

void append(uint16_t type, uint16_t code, int32_t value) {
    input_event record{};
    record.type = type;
    record.code = code;
    record.value = value;
    const auto* const bytes = reinterpret_cast<const uint8_t*>(&record);
    unread.insert(unread.end(), bytes, bytes + sizeof record);
}

// Ends every stroke, whatever came before: the unfinished record, the unfinished frame, one after lost events.
void liftPen() {
    while ((delivered + unread.size()) % sizeof(input_event) != 0)
        unread.push_back(0);
    append(EV_SYN, SYN_REPORT, 0);
    append(EV_SYN, SYN_REPORT, 0);
    append(EV_ABS, ABS_MT_SLOT, 0);
    append(EV_ABS, ABS_MT_TRACKING_ID, -1);
    append(EV_KEY, BTN_TOUCH, 0);
    append(EV_SYN, SYN_REPORT, 0);
}

int liftWhenWaited(int, int) {
    liftPen();
    return 1;
}

int64_t fuzzClock() {
    return clockMs;
}

bool look(TouchInput& input) {
    const int x = input.readX();
    const int y = input.readY();
    const bool isUp = x == -1 && y == -1;
    require(isUp || (x >= 1 && x <= 319 && y >= 1 && y <= 239));
    return !isUp;
}

void ask(TouchInput& input, uint8_t question, uint8_t number) {
    int x = 1;
    int y = 1;
    switch (question % 8) {
    case 0:
        look(input);
        break;
    case 1:
        if (input.waitForTouch(&x, &y, 0))
            require(input.readY() == y && x >= 1 && x <= 319 && y >= 1 && y <= 239);
        break;
    case 2:
        input.waitForPenUp();
        require(input.readY() == -1);
        break;
    case 3:
        input.disable(true);
        break;
    case 4:
        input.disable(false);
        break;
    case 5:
        clockMs += number;
        break;
    default:
        break; // the next piece arrives before anybody asks
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 1)
        return 0;
    replaceClock(fuzzClock);
    touchCalls.read = readUnread;
    touchCalls.wait = liftWhenWaited;
    unread.clear();
    delivered = 0;
    TouchDevice device;
    device.descriptor = 1'000'000; // never a real one
    device.isStream = true;
    if ((data[0] & 1) != 0)
        device.scale.xRange = device.scale.yRange = {-300, 4095};
    TouchInput input(device);
    for (size_t at = 1; at + 2 <= size;) {
        const uint8_t question = data[at];
        const uint8_t number = data[at + 1];
        const size_t bytes = std::min<size_t>(number, size - at - 2);
        unread.insert(unread.end(), data + at + 2, data + at + 2 + bytes);
        at += 2 + bytes;
        ask(input, question, number);
    }
    liftPen();
    input.disable(false);
    bool isDown = true;
    for (size_t looks = 0; isDown && looks <= 2 * PEN_QUEUE_STROKES + 1; ++looks) {
        isDown = look(input);
        if (!isDown)
            isDown = look(input);
    }
    require(!isDown);
    return 0;
}
