#include "display/panel.h"

namespace ostrel {

namespace {

struct Panel {
    uint16_t shadow[PANEL_WIDTH * PANEL_HEIGHT] = {};
    Canvas canvas = canvasOver(shadow, PANEL_WIDTH, PANEL_HEIGHT, PANEL_WIDTH);
    uint16_t background = 0;
};

Panel& panel() {
    static Panel* const instance = new Panel;
    return *instance;
}

} // namespace

Canvas& panelCanvas() {
    return panel().canvas;
}

void flush(const Rect&) {}

uint16_t background() {
    return panel().background;
}

void setBackground(uint16_t colour) {
    panel().background = colour;
}

} // namespace ostrel
