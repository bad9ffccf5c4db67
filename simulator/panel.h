// What the panel shows: the framebuffer file, or black while the backlight is off.
#ifndef OSTREL_SIMULATOR_PANEL_H
#define OSTREL_SIMULATOR_PANEL_H

#include "simulator/descriptor.h"
#include "simulator/shared_page.h"

#include <cstdint>
#include <string>
#include <vector>

namespace ostrel {

constexpr int PANEL_WIDTH = 320;
constexpr int PANEL_HEIGHT = 240;
constexpr int PANEL_PIXELS = PANEL_WIDTH * PANEL_HEIGHT;
constexpr int PANEL_BYTES = PANEL_PIXELS * 2;

// A picture of the panel: RGB565, row by row.
using Picture = std::vector<uint16_t>;

class Panel {
  public:
    // `file` is the framebuffer file. Throws Failure.
    Panel(const std::string& file, const SharedPage& page);

    // Looks at the panel; true when it shows something else than at the last look.
    bool look();

    // Counts the looks that saw something else, whoever looked.
    uint64_t changes() const { return changeCount; }

    // What the last look saw.
    const Picture& picture() const { return seen; }
    bool isDark() const;

    // Nothing has been drawn yet, or everything is black.
    bool isBlank();

  private:
    void readFramebuffer(Picture& picture) const;

    Descriptor framebuffer;
    const SharedPage& page;
    Picture seen;
    Picture next;
    uint64_t changeCount = 0;
};

// The same colour with 8 bits a channel, so that 0 stays 0 and the largest becomes 255: 0x00RRGGBB.
constexpr uint32_t toRgb888(uint16_t colour) {
    const uint32_t red = colour >> 11 & 31U;
    const uint32_t green = colour >> 5 & 63U;
    const uint32_t blue = colour & 31U;
    return (red << 3 | red >> 2) << 16 | (green << 2 | green >> 4) << 8 | (blue << 3 | blue >> 2);
}

} // namespace ostrel

#endif
