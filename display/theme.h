// The colours and measures that elements have when a program names none: light text on dark surfaces, one accent.
#ifndef OSTREL_DISPLAY_THEME_H
#define OSTREL_DISPLAY_THEME_H

#include <cstdint>

namespace ostrel {

constexpr uint16_t rgb(int red, int green, int blue) {
    return static_cast<uint16_t>(red >> 3 << 11 | green >> 2 << 5 | blue >> 3);
}

// What one state of an element is painted in.
struct Tones {
    uint16_t face = 0; // its surface
    uint16_t text = 0;
    uint16_t mark = 0; // ring, tick, switch, chevron, underline, and the value beside a label
    uint16_t edge = 0; // border and unticked outlines
};

namespace theme {

constexpr uint16_t WHITE = 0xFFFF;
constexpr uint16_t BLACK = 0;
constexpr uint16_t ACCENT = 0x057D;
constexpr uint16_t BUTTON = 0x0310;
constexpr uint16_t DANGER = rgb(196, 32, 40);
constexpr uint16_t DANGER_PRESSED = 0xFA6A;
constexpr uint16_t SURFACE = rgb(24, 36, 44);
constexpr uint16_t SURFACE_CHOSEN = rgb(8, 52, 72);
constexpr uint16_t SUNKEN = rgb(8, 12, 16);
constexpr uint16_t SUNKEN_CHOSEN = rgb(8, 36, 48);
constexpr uint16_t FLAT = rgb(16, 20, 24);
constexpr uint16_t OUTLINE = rgb(104, 124, 136);
constexpr uint16_t OUTLINE_DISABLED = rgb(48, 60, 64);
constexpr uint16_t TEXT_QUIET = rgb(176, 192, 200);
constexpr uint16_t TEXT_DISABLED = rgb(128, 140, 144);

constexpr Tones DISABLED{FLAT, TEXT_DISABLED, TEXT_DISABLED, OUTLINE_DISABLED};

} // namespace theme

} // namespace ostrel

#endif
