// Filling, outlines, boxes and power, as gui/display.h promises them.
#include "display/panel.h"
#include "display/rounded.h"
#include "display/touch_input.h"
#include "gui/display.h"

using namespace ostrel;

namespace {

// From the rim inwards. The dark rim sets the box off from a light page, the bright border from a dark one; white and
// light texts read well on the body.
struct BoxLayer {
    int insetPx;
    int radiusPx;
    uint16_t colour;
};
constexpr BoxLayer BOX_LAYERS[] = {
    {0, 12, 0x0000},
    {1, 11, 0x6C97},
    {3, 9, 0x1947},
};

// Empty where nothing is left, also for edges at the ends of int.
Rect insetBy(const Rect& box, int inset) {
    if (box.isEmpty() || box.left > PANEL_WIDTH || box.top > PANEL_HEIGHT || box.right < 0 || box.bottom < 0)
        return {};
    return {box.left + inset, box.top + inset, box.right - inset, box.bottom - inset};
}

} // namespace

void libOstrelGuiInit() {
    panelCanvas();
    panelTouch();
}

void lcd_clear(int colour) {
    setBackground(colourOf(colour));
    flush(fill(panelCanvas(), rectAt(0, 0, PANEL_WIDTH, PANEL_HEIGHT), colourOf(colour)));
}

void fillRect(unsigned short x1, unsigned short y1, unsigned short x2, unsigned short y2, int colour) {
    flush(fill(panelCanvas(), {x1, y1, x2, y2}, colourOf(colour)));
}

void drawRect(unsigned short x1, unsigned short y1, unsigned short x2, unsigned short y2, int colour) {
    if (x1 > x2 || y1 > y2)
        return;
    const Rect edges[] = {
        {x1, y1, x2 + 1, y1 + 1}, // top
        {x1, y2, x2 + 1, y2 + 1}, // bottom
        {x1, y1, x1 + 1, y2 + 1}, // left
        {x2, y1, x2 + 1, y2 + 1}, // right
    };
    for (const Rect& edge : edges)
        flush(fill(panelCanvas(), edge, colourOf(colour)));
}

void drawRoundedRectangle(int x1, int y1, int x2, int y2, int, int) {
    const Rect box{x1, y1, x2, y2};
    for (const BoxLayer& layer : BOX_LAYERS)
        fillRounded(panelCanvas(), insetBy(box, layer.insetPx), layer.radiusPx, layer.colour);
    flush(box);
}

void turnOn() {
    setPower(Power::On);
}

void turnOff() {
    setPower(Power::Off);
}
