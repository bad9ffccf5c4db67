#include "tests/support/keyboard_panel.h"

#include "display/clock.h"
#include "display/touch_device.h"
#include "lang/languages.h"
#include "tests/support/fake_sleep.h"
#include "tests/support/panel_pen.h"
#include "util/bounded_copy.h"

#include <stdexcept>

using namespace ostrel;

namespace {

// For the next touch: thrown out of the keyboard's loop.
struct KeyboardWaits {};

// The pen, and what happens when the toolkit waits for it to lift.
struct Pen {
    PanelPen stream;
    int x = 0;
    int y = 0;
    Picture whileDown;
    bool looks = false; // at the panel before the pen lifts
};

Pen& pen() {
    static Pen* const instance = new Pen;
    return *instance;
}

PanelFile* panelOfAll = nullptr;

int lift(int, int) {
    if (pen().looks)
        pen().whileDown = panelOfAll->picture();
    pen().stream.send(0, pen().x, pen().y);
    return 1;
}

int64_t standingClock() {
    return 1'000'000;
}

} // namespace

PanelFile& KeyboardPanel::panel() {
    static PanelFile instance;
    panelOfAll = &instance;
    return instance;
}

KeyboardPanel::KeyboardPanel() {
    panel();
    replaceClock(standingClock);
    touchCalls.wait = lift;
    pen();
    isIPAddrMode = 0;
    keyboard.oldWidth = 0;
    keyboard.returnHandler = [] {};
    fakeSleep() = {};
    fakeSleep().log = false;
    speak("english");
}

KeyboardPanel::~KeyboardPanel() {
    fakeSleep() = {};
}

void KeyboardPanel::begin(int mode, const char* initial) {
    keyboard.keyboardMode(mode);
    keyboard.drawText(initial, out);
}

Picture KeyboardPanel::shown() const {
    return panel().picture();
}

Picture KeyboardPanel::shown(const Rect& area) const {
    return panel().picture(area);
}

void KeyboardPanel::tap(int x, int y) {
    pen().x = x;
    pen().y = y;
    pen().stream.send(1, x, y);
    fakeSleep().duringSleep = [](uint64_t us) {
        if (us == 20000)
            throw KeyboardWaits{};
        if (fakeSleep().sleptUs > 60'000'000)
            throw std::runtime_error("a message waits to be tapped away");
    };
    fakeSleep().sleptUs = 0;
    const int seenX = readX();
    const int seenY = readY();
    if (seenX != x || seenY != y)
        throw std::runtime_error("the pen was not seen");
    try {
        keyboard.getTouch(x, y);
    } catch (const KeyboardWaits&) {
    }
    fakeSleep().duringSleep = nullptr;
}

Picture KeyboardPanel::held(int x, int y) {
    pen().looks = true;
    tap(x, y);
    pen().looks = false;
    return pen().whileDown;
}

void KeyboardPanel::speak(const std::string& language) {
    copyText(lang.file, (std::string(OSTREL_LANGUAGES) + "/" + language + ".xml").c_str());
}
