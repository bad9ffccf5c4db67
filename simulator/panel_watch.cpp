#include "simulator/panel_watch.h"

#include "simulator/clock.h"

#include <algorithm>
#include <utility>

namespace ostrel {
namespace {

constexpr int64_t SEEN_LOOK_MS = 16;
constexpr int64_t UNSEEN_LOOK_MS = 500;

// While something is going on. No screen shows more than 250 pictures a second.
constexpr int64_t CLOSE_LOOK_MS = 1;
constexpr int64_t CLOSE_LOOKS_FOR_MS = 60;
constexpr int64_t BETWEEN_CHANGES_MS = 4;

} // namespace

PanelWatch::PanelWatch(EventLoop& loop, Panel& panel, Looked looked)
    : loop(loop), panel(panel), looked(std::move(looked)) {
    lookIn(0);
}

PanelWatch::~PanelWatch() {
    loop.cancel(timer);
}

void PanelWatch::lookIn(int64_t delayMs) {
    loop.cancel(timer);
    lookAtMs = nowMs() + delayMs;
    timer = loop.after(delayMs, [this] { look(); });
}

void PanelWatch::lookClosely() {
    const int64_t now = nowMs();
    closelyUntilMs = now + CLOSE_LOOKS_FOR_MS;
    const int64_t nextMs = std::max(now + CLOSE_LOOK_MS, changedAtMs + BETWEEN_CHANGES_MS);
    if (nextMs < lookAtMs)
        lookIn(nextMs - now);
}

void PanelWatch::setSeen(bool isSeen) {
    if (seen == isSeen)
        return;
    seen = isSeen;
    if (seen)
        lookIn(0);
}

void PanelWatch::look() {
    panel.look();
    const bool changed = std::exchange(toldChanges, panel.changes()) != panel.changes();
    if (changed) {
        changedAtMs = nowMs();
        closelyUntilMs = changedAtMs + CLOSE_LOOKS_FOR_MS;
    }
    const bool isClose = nowMs() < closelyUntilMs;
    lookIn(!seen ? UNSEEN_LOOK_MS : !isClose ? SEEN_LOOK_MS : changed ? BETWEEN_CHANGES_MS : CLOSE_LOOK_MS);
    looked(changed);
}

} // namespace ostrel
