#include "simulator/recorder.h"

#include "simulator/clock.h"

#include <algorithm>
#include <utility>

namespace ostrel {
namespace {

constexpr int64_t STALE_AFTER_MS = 250;

// While something is to be given, or has just been; while the program works; while it waits and may go dark.
constexpr int64_t CLOSE_LOOK_MS = 1;
constexpr int64_t CLOSE_LOOKS_FOR_MS = 100;
constexpr int64_t BUSY_LOOK_MS = 10;
constexpr int64_t DARK_LOOK_MS = 100;

} // namespace

Recorder::Recorder(Recording recording, EventLoop& loop, TouchStream& stream, const Panel& panel)
    : recording(std::move(recording)), loop(loop), stream(stream), panel(panel), givenAtMs(nowMs()) {
    look();
}

Recorder::~Recorder() {
    loop.cancel(timer);
}

void Recorder::press(int x, int y) {
    put(isDown ? Kind::Move : Kind::Press, x, y);
    isDown = true;
}

void Recorder::move(int x, int y) {
    if (isDown)
        put(Kind::Move, x, y);
}

void Recorder::release() {
    if (std::exchange(isDown, false))
        put(Kind::Release, 0, 0);
}

void Recorder::put(Kind kind, int x, int y) {
    if (finished)
        return;
    if (dropping) {
        dropping = kind != Kind::Release;
        return;
    }
    if (events.empty()) // whoever looked a while ago may be busy by now
        looksBefore = stream.looks();
    const Event event = {kind, std::clamp(x, 0, PANEL_WIDTH - 1), std::clamp(y, 0, PANEL_HEIGHT - 1), nowMs()};
    if (kind == Kind::Move && !events.empty() && events.back().kind == Kind::Move)
        events.back() = event;
    else
        events.push_back(event);
    loop.cancel(timer);
    look();
}

void Recorder::look() {
    const bool asked = stream.isAwaitedSince(looksBefore);
    notice(asked);
    if (asked && !events.empty()) {
        const Event event = events.front();
        events.pop_front();
        give(event);
    } else if (!events.empty() && events.front().kind == Kind::Press && nowMs() - events.front().atMs >= STALE_AFTER_MS)
        dropFirstStroke();
    timer = loop.after(nextLookMs(), [this] { look(); });
}

void Recorder::notice(bool asked) {
    if (asked && askedAtMs < 0) {
        askedAtMs = nowMs();
        wasDark = panel.isDark();
    }
    if (askedAtMs >= 0 && !wasDark && !wentDark && panel.isDark()) {
        recording.wentDark(pausedUntil(nowMs()));
        wentDark = true;
    }
}

void Recorder::give(const Event& event) {
    // It pauses as long as the person did, however late the program gets it.
    const int64_t pausedMs = pausedUntil(event.atMs);
    if (event.kind == Kind::Press) {
        recording.press(event.x, event.y, pausedMs);
        stream.pressNow(event.x, event.y);
    } else if (event.kind == Kind::Move) {
        recording.move(event.x, event.y, pausedMs);
        stream.moveNow(event.x, event.y);
    } else {
        recording.release(pausedMs);
        stream.releaseNow();
    }
    givenAtMs = nowMs();
    looksBefore = stream.looks();
    askedAtMs = -1;
    wentDark = false;
}

void Recorder::dropFirstStroke() {
    recording.missed(events.front().x, events.front().y);
    const auto release =
        std::find_if(events.begin(), events.end(), [](const Event& event) { return event.kind == Kind::Release; });
    dropping = release == events.end();
    events.erase(events.begin(), dropping ? events.end() : release + 1);
}

// In the dark time stands still.
int64_t Recorder::pausedUntil(int64_t ms) const {
    const bool isPause = !wentDark && askedAtMs >= 0 && ms > askedAtMs;
    return isPause ? ms - askedAtMs : 0;
}

int64_t Recorder::nextLookMs() const {
    if (!events.empty() || (askedAtMs < 0 && nowMs() - givenAtMs < CLOSE_LOOKS_FOR_MS))
        return CLOSE_LOOK_MS;
    return askedAtMs < 0 ? BUSY_LOOK_MS : DARK_LOOK_MS;
}

void Recorder::finish(std::optional<int> status) {
    if (std::exchange(finished, true))
        return;
    loop.cancel(timer);
    if (status)
        recording.programEnded(*status);
    else
        recording.ended(pausedUntil(nowMs()));
}

} // namespace ostrel
