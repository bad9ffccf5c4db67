// What a window shows: the panel's picture, zoomed pixel by pixel, within a dark surround.
#ifndef OSTREL_SIMULATOR_WINDOW_WINDOW_PICTURE_H
#define OSTREL_SIMULATOR_WINDOW_WINDOW_PICTURE_H

#include "simulator/panel.h"
#include "simulator/window/placement.h"

#include <cstdint>
#include <vector>

namespace ostrel {

constexpr uint32_t SURROUND = 0x26292E; // lighter than a dark panel, so that its edge is seen

class WindowPicture {
  public:
    // For a window of `size` pixels, both at least 1. The next draw() draws all of it.
    void fit(Extent size);

    // Draws what `picture` shows otherwise than the picture before. Returns what has changed of the image; its width
    // is 0 when that is nothing.
    Area draw(const Picture& picture);

    Extent size() const { return extent; }
    const Area& pictureArea() const { return placement; }

    // 0x00RRGGBB, row by row.
    const std::vector<uint32_t>& pixels() const { return image; }

  private:
    void paint(const Area& area);

    Extent extent;
    Area placement;
    std::vector<uint32_t> image;
    Picture shown;
    bool isWhole = false;
};

} // namespace ostrel

#endif
