#include "display/pen_queue.h"

namespace ostrel {

void PenQueue::press(PenPoint at) {
    release();
    if (disabled || strokes.size() >= PEN_QUEUE_STROKES)
        return;
    strokes.push_back({at, at, false});
    following = true;
}

void PenQueue::move(PenPoint to) {
    if (following)
        strokes.back().newest = to;
}

void PenQueue::release() {
    if (following)
        strokes.back().ended = true;
    following = false;
}

void PenQueue::drop() {
    strokes.clear();
    firstIsTold = false;
    following = false;
    told = PEN_UP;
}

void PenQueue::disable(bool nowDisabled) {
    disabled = nowDisabled;
}

PenPoint PenQueue::look() {
    if (firstIsTold) {
        told = strokes.front().newest;
        takeRelease();
    } else if (hasPress()) {
        firstIsTold = true;
        told = strokes.front().pressedAt;
    }
    return told;
}

bool PenQueue::takePress(PenPoint& at) {
    if (!hasPress())
        return false;
    takeRelease();
    firstIsTold = true;
    told = at = strokes.front().pressedAt;
    return true;
}

bool PenQueue::hasPress() const {
    return !disabled && strokes.size() > (firstIsTold ? 1U : 0U);
}

void PenQueue::takeRelease() {
    if (!firstIsTold || !strokes.front().ended)
        return;
    strokes.pop_front();
    firstIsTold = false;
    told = PEN_UP;
}

} // namespace ostrel
