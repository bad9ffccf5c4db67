// The one pen of the panel, held by the mouse or by a finger on the window.
#ifndef OSTREL_SIMULATOR_WINDOW_WINDOW_PEN_H
#define OSTREL_SIMULATOR_WINDOW_WINDOW_PEN_H

#include "simulator/touch_stream.h"
#include "simulator/window/placement.h"

#include <cstdint>
#include <optional>

namespace ostrel {

class WindowPen {
  public:
    using Pointer = int64_t; // a finger's number
    static constexpr Pointer MOUSE = INT64_MIN;

    explicit WindowPen(TouchStream& stream) : stream(stream) {}

    // Positions are pixels of the window, with the panel's picture at `picture`. A press beside the picture touches
    // nothing; a drag that leaves it goes on along its edge. While one pointer holds the pen the others only watch.
    // True when the pen was pressed, moved or lifted.
    bool press(Pointer pointer, const Area& picture, Position position);
    bool move(Pointer pointer, const Area& picture, Position position);
    bool release(Pointer pointer);

  private:
    TouchStream& stream;
    std::optional<Pointer> holder;
    Position last; // of the panel
};

} // namespace ostrel

#endif
