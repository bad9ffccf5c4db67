#include "tests/unit/lock_model/world.h"

#include "gui/screen.h"
#include "lang/languages.h"
#include "lock/pin_pad.h"
#include "settings/memory.h"
#include "util/bounded_copy.h"

#include <cstdlib>
#include <dlfcn.h>
#include <unistd.h>

World& world() {
    static World* const instance = new World;
    return *instance;
}

namespace {

constexpr Point UP{-1, -1};
constexpr Point KEYBOARD_BACK{20, 30};
Point current = UP;

template<typename Function>
Function* original(const char* symbol) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, symbol));
}

} // namespace

// The receivers: counted, then passed on to the library's own.
void get_screenLock_touch(int x, int y) {
    ++world().padTouches;
    static auto* const pass = original<void(int, int)>("_Z20get_screenLock_touchii");
    pass(x, y);
}

void Keyboard::getTouch(int x, int y) {
    ++world().keyboardTouches;
    static auto* const pass = original<void(Keyboard*, int, int)>("_ZN8Keyboard8getTouchEii");
    pass(this, x, y);
}

int Widget::checkTouch(int x, int y) {
    ++world().widgetOffers;
    static auto* const pass = original<int(Widget*, int, int)>("_ZN6Widget10checkTouchEii");
    return pass(this, x, y);
}

// Settings without a device.
void Memory::getSetting(char* name, char* value) {
    const std::string key = name;
    const std::string& text = key == "ScreenLock" ? world().screenLock : key == "PIN" ? world().pin : "";
    ostrel::copyText(value, NVRAM_TEXT_LENGTH, text.c_str());
}

char* nvram_get(int, char* name) {
    auto* const value = static_cast<char*>(calloc(1, NVRAM_TEXT_LENGTH));
    ostrel::copyText(value, NVRAM_TEXT_LENGTH, std::string(name) == "ScreenTimeout" ? world().timeout.c_str() : "0");
    return value;
}

void Memory::saveSetting(const char*, const char*) {}
void Memory::commit() {}

extern "C" OSTREL_API unsigned sleepTaken(unsigned) __asm__("sleep");
extern "C" unsigned sleepTaken(unsigned) {
    return 0;
}
extern "C" OSTREL_API int usleepTaken(useconds_t) __asm__("usleep");
extern "C" int usleepTaken(useconds_t) {
    return 0;
}

// Texts without files.
wchar_t* Languages::get(char*, char*) {
    static wchar_t text[] = L"text";
    return text;
}

// The pen.
int readX() {
    World& now = world();
    if (now.penRead < now.pen.size())
        current = now.pen[now.penRead];
    else
        current = (now.penRead - now.pen.size()) % 2 == 0 ? KEYBOARD_BACK : UP;
    ++now.penRead;
    return current.x;
}
int readY() {
    return current.y;
}
void waitForPenUp() {}

// A panel that nobody looks at.
void libOstrelGuiInit() {}
void lcd_clear(int) {}
void fillRect(unsigned short, unsigned short, unsigned short, unsigned short, int) {}
void drawRect(unsigned short, unsigned short, unsigned short, unsigned short, int) {}
void drawRoundedRectangle(int, int, int, int, int, int) {}
void drawText(wchar_t*, int, int, int, int, int, float, int, int) {}
void drawFontBigWhiteString(wchar_t*, int, int) {}
void unDrawTitle(wchar_t*) {}
int textWidth(wchar_t* text, float) {
    return static_cast<int>(wcslen(text)) * 10;
}
int textTouchPosition(wchar_t*, int x, float) {
    return x / 10 * 10000 + x / 10;
}
void drawWidget(WidgetRecord) {}
void unDrawWidget(WidgetRecord) {}
TouchArea getTouchArea(WidgetRecord element) {
    return {element.x, element.x + element.width, element.y, element.y + element.height};
}
void setShowPasswords(bool) {}
void disableTouch(int) {}
void turnOn() {}
void turnOff() {}
void setScreenLockHandler(void (*)()) {}
ImagePNG::ImagePNG() : store(nullptr) {}
ImagePNG::~ImagePNG() = default;
int ImagePNG::loadPNG(char*) {
    return 0;
}
void ImagePNG::drawPNG(int, int, int, int, int) {}
