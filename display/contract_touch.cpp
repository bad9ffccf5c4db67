// The pen, the application's loop and the idle tick, as gui/display.h promises them.
#include "display/touch_input.h"
#include "gui/display.h"

using namespace ostrel;

int readX() {
    return panelTouch().readX();
}

int readY() {
    return panelTouch().readY();
}

void waitForPenUp() {
    panelTouch().waitForPenUp();
}

void disableTouch(int disabled) {
    panelTouch().disable(disabled != 0);
}

void setScreenLockHandler(void (*handler)()) {
    panelTouch().setTickHandler(handler);
}

bool waitForTouch(int* x, int* y, int timeoutMs) {
    return panelTouch().waitForTouch(x, y, timeoutMs);
}

int touchDescriptor() {
    return panelTouch().descriptor();
}

bool panelClosed() {
    return panelTouch().isClosed();
}
