#include "gui/display.h"

void drawText(wchar_t*, int, int, int, int, int, float, int, int) {}
void drawFontBigWhiteString(wchar_t*, int, int) {}
void unDrawTitle(wchar_t*) {}
int textWidth(wchar_t*, float) {
    return 0;
}
int textTouchPosition(wchar_t*, int, float) {
    return -1;
}
