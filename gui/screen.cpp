#include "gui/screen.h"

#include "lock/inactivity.h"
#include "lock/pin_pad.h"
#include "settings/nvram.h"
#include "util/bounded_copy.h"

#include <cstdio>
#include <cstdlib>
#include <unistd.h>

unsigned char notLoaded = 1;
unsigned char passUnset = 1;
int32_t backImagePng;
int32_t backImagePressedPng;
int32_t exitImagePng;
int32_t exitImagePressedPng;

namespace {

constexpr int BUTTON_TOP = 5;
constexpr int BUTTON_SIZE = 36;
constexpr int BACK_X = 10;
constexpr int EXIT_X = 50; // and home
constexpr int LANGUAGE_X = 283;
constexpr int HEADER_BOTTOM = 41;
constexpr int TITLE_X = 90;
constexpr int TITLE_Y = 10;

// Places in the order of loading; the last four images are known by what loadPNG returned.
constexpr int32_t BACK_GRAYED = 0;
constexpr int32_t HOME = 1;
constexpr int32_t HOME_GRAYED = 2;
constexpr int32_t HOME_PRESSED = 3;
constexpr int32_t LANGUAGE = 4;
constexpr int32_t LANGUAGE_PRESSED = 5;

void loadHeaderImages() {
    notLoaded = 0;
    baseImages.loadPNG("/ostrel/back_grayed_35.png");
    baseImages.loadPNG("/ostrel/home_35.png");
    baseImages.loadPNG("/ostrel/home_grayed_35.png");
    baseImages.loadPNG("/ostrel/homepressed_35.png");
    baseImages.loadPNG("/ostrel/language_35.png");
    baseImages.loadPNG("/ostrel/languagepressed_35.png");
    backImagePng = baseImages.loadPNG("/ostrel/back_35.png");
    backImagePressedPng = baseImages.loadPNG("/ostrel/backimagePressed_35.png");
    exitImagePng = baseImages.loadPNG("/ostrel/cross_35.png");
    exitImagePressedPng = baseImages.loadPNG("/ostrel/exitimagePressed_35.png");
}

void drawHeaderImage(int x, int32_t index) {
    baseImages.drawPNG(x, BUTTON_TOP, 0, 0, index);
}

void pressBack(Screen& page) {
    page.onBack();
}

void pressExit(Screen& page) {
    if (page.onExit != nullptr)
        page.onExit();
    lcd_clear(0);
    exit(0);
}

void pressLanguage(Screen& page) {
    // NOLINTNEXTLINE(cert-env33-c): the language picker is a program of its own
    [[maybe_unused]] const int status = system("./ostrel/language");
    lcd_clear(0);
    if (page.onLanguage != nullptr)
        page.onLanguage();
    else
        page.draw();
}

void pressHome(Screen& page) {
    if (page.onHome != nullptr)
        page.onHome();
}

struct HeaderButton {
    int x;
    unsigned char Screen::*shown;
    const int32_t* pressedImage;
    const int32_t* normalImage;
    void (*act)(Screen& page);
};

// In the order of the tests: on a page with both, exit is in front of home.
constexpr HeaderButton HEADER_BUTTONS[] = {
    // x         shown                 pressed               normal         action
    {BACK_X, &Screen::showBack, &backImagePressedPng, &backImagePng, pressBack},
    {EXIT_X, &Screen::showExit, &exitImagePressedPng, &exitImagePng, pressExit},
    {LANGUAGE_X, &Screen::showLanguage, &LANGUAGE_PRESSED, &LANGUAGE, pressLanguage},
    {EXIT_X, &Screen::showHome, &HOME_PRESSED, &HOME, pressHome},
};

bool contains(const HeaderButton& button, int x, int y) {
    return button.x <= x && x < button.x + BUTTON_SIZE && BUTTON_TOP <= y && y < BUTTON_TOP + BUTTON_SIZE;
}

// The value of a setting that pages read, as the caller's to free; the first section's number 0 is the second's name
// here, see nvram_get.
struct PageSetting {
    explicit PageSetting(const char* name) : value(nvram_get(0, name)) {}
    PageSetting(const PageSetting&) = delete;
    PageSetting& operator=(const PageSetting&) = delete;
    ~PageSetting() { free(value); }

    const char* text() const { return value != nullptr ? value : ""; }

  private:
    char* value;
};

void rewind(Widget*& widget) {
    while (widget->prev != nullptr)
        widget = widget->prev;
}

// Switches the panel on and waits for the touch that woke it to end.
void wake() {
    turnOn();
    locked = 0;
    blCnt = 0;
    int x = readX();
    int y = readY();
    while (x > 0 && y > 0 && x < 320 && y < 240) {
        x = readX();
        y = readY();
        usleep(1000);
    }
    returnNext = 2;
    sleep(1);
}

} // namespace

Screen::Screen() {
    libOstrelGuiInit();
}

Screen::Screen(wchar_t* title) {
    ostrel::copyText(this->title, title);
    libOstrelGuiInit();
    widgets = nullptr;
    onExit = nullptr;
    onLanguage = nullptr;
    showHome = 0;
    showHomeGrayed = 0;
    onHome = nullptr;
    clearOnDraw = 1;
    setScreenLockHandler(slkHandle);
    showBack = 1;
    showExit = 1;
    showLanguage = 0;
    if (notLoaded != 0)
        loadHeaderImages();
}

Screen::Screen(const Screen&) {}

Screen::~Screen() {
    undraw();
}

void Screen::setTitle(wchar_t* title) {
    ostrel::copyText(this->title, title);
    unDrawTitle(L"xxxxxxxxxxxxx");
    drawFontBigWhiteString(this->title, TITLE_X, TITLE_Y);
}

void Screen::draw() {
    try {
        setShowPasswords(PageSetting("ShowPass").text()[0] == '1');
        {
            const PageSetting timeout("ScreenTimeout");
            lockScreen = 0;
            ScreenTime = static_cast<int32_t>(strtol(timeout.text(), nullptr, 10));
        }
        passUnset = 0;
        blCnt = 0;
        if (clearOnDraw != 0)
            lcd_clear(0);
        drawFontBigWhiteString(this->title, TITLE_X, TITLE_Y);
        drawBaseScreen(1);
        if (widgets == nullptr)
            return;
        rewind(widgets);
        widgets->draw();
        while (widgets->next != nullptr) {
            widgets = widgets->next;
            widgets->draw();
        }
    } catch (int thrown) {
        printf("Exception at %d", thrown);
    }
}

void Screen::undraw() {
    rewind(widgets);
    widgets->unDraw();
    while (widgets->next != nullptr) {
        widgets = widgets->next;
        widgets->unDraw();
    }
}

void Screen::drawBaseScreen(int) {
    drawHeaderImage(BACK_X, showBack != 0 ? backImagePng : BACK_GRAYED);
    if (showHome != 0)
        drawHeaderImage(EXIT_X, HOME);
    if (showHomeGrayed != 0)
        drawHeaderImage(EXIT_X, HOME_GRAYED);
    if (showLanguage != 0)
        drawHeaderImage(LANGUAGE_X, LANGUAGE);
    if (showExit != 0)
        drawHeaderImage(EXIT_X, exitImagePng);
}

void Screen::getTouch(int x, int y) {
    if (locked != 0) {
        wake();
        return;
    }
    if (returnNext != 0) {
        --returnNext;
        waitForPenUp();
        return;
    }
    if (lockScreen != 0) {
        get_screenLock_touch(x, y);
        return;
    }
    blCnt = 0;
    if (keyboard.active != 0) {
        keyboard.getTouch(x, y);
        return;
    }
    if (y >= HEADER_BOTTOM) {
        if (widgets == nullptr)
            return;
        rewind(widgets);
        while (widgets->checkTouch(x, y) == 0 && widgets->next != nullptr)
            widgets = widgets->next;
        return;
    }
    for (const HeaderButton& button : HEADER_BUTTONS) {
        if (!contains(button, x, y) || this->*button.shown == 0)
            continue;
        drawHeaderImage(button.x, *button.pressedImage);
        waitForPenUp();
        drawHeaderImage(button.x, *button.normalImage);
        button.act(*this);
    }
}
