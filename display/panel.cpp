#include "display/panel.h"

#include "display/framebuffer.h"

#include <cstdio>
#include <cstdlib>

namespace ostrel {

namespace {

constexpr Rect WHOLE_PANEL{0, 0, PANEL_WIDTH, PANEL_HEIGHT};

struct Panel {
    uint16_t shadow[PANEL_WIDTH * PANEL_HEIGHT] = {};
    Canvas canvas = canvasOver(shadow, PANEL_WIDTH, PANEL_HEIGHT, PANEL_WIDTH);
    Framebuffer framebuffer;
    uint16_t background = 0;
    unsigned pageNumber = 0;
    bool isDark = false;
};

void openPanel(Panel& panel) {
    const char* const named = getenv("OSTREL_FRAMEBUFFER");
    const char* const path = named != nullptr && *named != 0 ? named : "/dev/fb0";
    Reason why;
    if (openFramebuffer(path, panel.framebuffer, why))
        readBack(panel.framebuffer, panel.canvas);
    else
        fprintf(
            stderr,
            "ostrel: no panel at %s: %s. Drawing goes to memory; run the program with 'ostrel-sim PROGRAM', or name "
            "a framebuffer in OSTREL_FRAMEBUFFER.\n",
            path, why.text);
}

Panel& panel() {
    static Panel* const instance = [] {
        auto* const made = new Panel;
        openPanel(*made);
        return made;
    }();
    return *instance;
}

} // namespace

Canvas& panelCanvas() {
    return panel().canvas;
}

void flush(const Rect& area) {
    show(panel().framebuffer, panel().canvas, area);
}

uint16_t background() {
    return panel().background;
}

void setBackground(uint16_t colour) {
    panel().background = colour;
    ++panel().pageNumber;
}

unsigned pageNumber() {
    return panel().pageNumber;
}

void setPower(Power power) {
    Panel& switched = panel();
    if (power == Power::Off) {
        switchBacklight(Power::Off);
        switchScreen(switched.framebuffer.device, Power::Off);
        switched.isDark = true;
        return;
    }
    switchScreen(switched.framebuffer.device, Power::On);
    // Some screens forget their picture without power: it is put back before the light shows it. Not when this program
    // left the panel lit: another one may have drawn there since.
    if (switched.isDark)
        flush(WHOLE_PANEL);
    switched.isDark = false;
    switchBacklight(Power::On);
}

void reopenPanel() {
    Panel& reopened = panel();
    closeFramebuffer(reopened.framebuffer);
    reopened.canvas.clip = WHOLE_PANEL;
    fill(reopened.canvas, WHOLE_PANEL, 0);
    reopened.background = 0;
    ++reopened.pageNumber;
    reopened.isDark = false;
    openPanel(reopened);
}

} // namespace ostrel
