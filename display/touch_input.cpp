#include "display/touch_input.h"

#include "display/clock.h"
#include "display/touch_search.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>
#include <sys/ioctl.h>
#include <utility>

namespace ostrel {

namespace {

// More than the largest pipe holds; a writer that never stops must not keep a program from its work.
constexpr int MAX_READS = 1024;

} // namespace

TouchInput::TouchInput(TouchDevice opened) : device(std::move(opened)), askedAtMs(nowMs()) {
    if (isClosed())
        return;
    TouchState state;
    if (askTouchState(device, state))
        apply(decoder.resume(state));
    drain();
    pen.drop();
}

TouchInput::~TouchInput() {
    closeTouchDevice(device);
}

int TouchInput::readX() {
    ask();
    return pen.look().x;
}

int TouchInput::readY() const {
    return pen.latest().y;
}

void TouchInput::waitForPenUp() {
    ask();
    while (pen.isHeld()) {
        waitForDevice(-1);
        ask();
    }
    pen.takeRelease();
}

void TouchInput::disable(bool disabled) {
    // What the pen did so far belongs to the time before. Reading an empty stream would be a question for the pen.
    int unread = 0;
    if (!isClosed() && (touchCalls.ioctl(device.descriptor, FIONREAD, &unread) < 0 || unread > 0))
        drain();
    pen.disable(disabled);
    scheduleWake();
}

void TouchInput::setTickHandler(void (*handler)()) {
    tickHandler = handler;
    if (handler == nullptr)
        ticks.stop();
    else if (!ticks.isRunning())
        ticks.start(nowMs());
    scheduleWake();
}

bool TouchInput::waitForTouch(int* x, int* y, int timeoutMs) {
    const int64_t startedAtMs = nowMs();
    const bool wasClosed = isClosed();
    if (wasClosed && timeoutMs < 0)
        timeoutMs = CLOSED_WAIT_MS;
    PenPoint pressedAt = PEN_UP;
    bool pressed = false;
    for (;;) {
        ask();
        pressed = pen.takePress(pressedAt);
        if (pressed)
            break;
        const bool ticked = runDueTick();
        const int64_t leftMs = timeoutMs < 0 ? -1 : std::max<int64_t>(startedAtMs + timeoutMs - nowMs(), 0);
        if (leftMs == 0 || isClosed() != wasClosed)
            break;
        if (!ticked) // after a tick the first question is what came while the handler ran
            waitForDevice(untilTickMs(leftMs));
    }
    scheduleWake();
    if (pressed && x != nullptr)
        *x = pressedAt.x;
    if (pressed && y != nullptr)
        *y = pressedAt.y;
    return pressed;
}

int TouchInput::descriptor() {
    if (!programsWait.isOpen() && programsWait.open(device.descriptor))
        scheduleWake();
    return programsWait.descriptor();
}

void TouchInput::ask() {
    const int64_t now = nowMs();
    drain();
    if (now - askedAtMs >= device.staleAfterMs)
        pen.drop();
    askedAtMs = now;
    if (pen.hasPress())
        scheduleWake();
}

void TouchInput::drain() {
    TouchEvent events[READ_EVENTS];
    TouchRead read = TouchRead::More;
    for (int reads = 0; !isClosed() && read == TouchRead::More && reads < MAX_READS; ++reads) {
        size_t count = 0;
        errno = 0;
        read = readTouchEvents(device, events, count);
        if (read == TouchRead::Gone)
            loseDevice(errno != 0 ? strerror(errno) : "it has ended");
        for (size_t i = 0; i < count; ++i)
            take(events[i]);
    }
}

void TouchInput::take(const TouchEvent& event) {
    apply(decoder.decode(event));
    TouchState state;
    if (decoder.lostEvents() && askTouchState(device, state))
        apply(decoder.resume(state));
}

void TouchInput::apply(const PenSteps& steps) {
    for (int i = 0; i < steps.count; ++i) {
        if (steps.step[i] == PenStep::Press)
            pen.press(device.scale.toPanel(steps.x, steps.y));
        else if (steps.step[i] == PenStep::Move)
            pen.move(device.scale.toPanel(steps.x, steps.y));
        else
            pen.release();
    }
}

void TouchInput::loseDevice(const char* reason) {
    fprintf(stderr, "ostrel: the touch screen %s is gone: %s. The pen stays up.\n", device.path.c_str(), reason);
    programsWait.unwatch(device.descriptor);
    closeTouchDevice(device);
    pen.release();
}

void TouchInput::waitForDevice(int64_t atMostMs) {
    touchCalls.wait(device.descriptor, static_cast<int>(std::min<int64_t>(atMostMs, INT_MAX)));
    askedAtMs = nowMs(); // waiting was asking all the time
}

int64_t TouchInput::untilTickMs(int64_t atMostMs) const {
    const int64_t tickMs = inTick ? -1 : ticks.msUntilDue(nowMs());
    return tickMs >= 0 && (atMostMs < 0 || tickMs < atMostMs) ? tickMs : atMostMs;
}

bool TouchInput::runDueTick() {
    if (inTick || !ticks.takeDue(nowMs()))
        return false;
    // The handler may wait for a touch itself, without ticks, and may throw.
    struct Running {
        bool& flag;
        explicit Running(bool& raised) : flag(raised) { flag = true; }
        ~Running() { flag = false; }
    } const running(inTick);
    tickHandler();
    return true;
}

void TouchInput::scheduleWake() {
    if (!programsWait.isOpen())
        return;
    int64_t delayMs = BEAT_MS;
    if (ticks.isRunning())
        delayMs = std::min(delayMs, ticks.msUntilDue(nowMs()));
    programsWait.wakeIn(pen.hasPress() ? 0 : delayMs);
}

TouchInput& panelTouch() {
    static TouchInput* const instance = new TouchInput(openPanelTouch("/dev/input"));
    return *instance;
}

} // namespace ostrel
