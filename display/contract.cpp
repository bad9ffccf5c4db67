#include "gui/display.h"

struct ImagePNG::Store {
    int loaded = 0;
};

void libOstrelGuiInit() {}
void lcd_clear(int) {}
void fillRect(unsigned short, unsigned short, unsigned short, unsigned short, int) {}
void drawRect(unsigned short, unsigned short, unsigned short, unsigned short, int) {}
void drawRoundedRectangle(int, int, int, int, int, int) {}
void drawText(wchar_t*, int, int, int, int, int, float, int, int) {}
void drawFontBigWhiteString(wchar_t*, int, int) {}
void unDrawTitle(wchar_t*) {}
int textWidth(wchar_t*, float) {
    return 0;
}
int textTouchPosition(wchar_t*, int, float) {
    return -1;
}
void drawWidget(WidgetRecord) {}
void unDrawWidget(WidgetRecord) {}
TouchArea getTouchArea(WidgetRecord) {
    return {};
}
void setShowPasswords(bool) {}
int readX() {
    return -1;
}
int readY() {
    return -1;
}
void waitForPenUp() {}
void disableTouch(int) {}
void turnOn() {}
void turnOff() {}
void setScreenLockHandler(void (*)()) {}
bool waitForTouch(int*, int*, int) {
    return false;
}
int touchDescriptor() {
    return -1;
}
bool panelClosed() {
    return true;
}
ImagePNG::ImagePNG() : store(new Store) {}
ImagePNG::~ImagePNG() {
    delete store;
}
int ImagePNG::loadPNG(char*) {
    return store->loaded++;
}
void ImagePNG::drawPNG(int, int, int, int, int) {}
