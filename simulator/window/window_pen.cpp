#include "simulator/window/window_pen.h"

namespace ostrel {

bool WindowPen::press(Pointer pointer, const Area& picture, Position position) {
    if (holder || !contains(picture, position))
        return false;
    holder = pointer;
    last = panelPixelAt(picture, position);
    stream.press(last.x, last.y);
    return true;
}

bool WindowPen::move(Pointer pointer, const Area& picture, Position position) {
    if (holder != pointer)
        return false;
    const Position now = panelPixelAt(picture, position);
    if (now.x == last.x && now.y == last.y)
        return false;
    last = now;
    stream.move(now.x, now.y);
    return true;
}

bool WindowPen::release(Pointer pointer) {
    if (holder != pointer)
        return false;
    holder.reset();
    stream.release();
    return true;
}

} // namespace ostrel
