// Filling, outlines, boxes and power, as gui/display.h promises them.
#include "display/panel.h"
#include "gui/display.h"

using namespace ostrel;

void libOstrelGuiInit() {
    panelCanvas();
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

void drawRoundedRectangle(int, int, int, int, int, int) {}

void turnOn() {
    setPower(Power::On);
}

void turnOff() {
    setPower(Power::Off);
}
