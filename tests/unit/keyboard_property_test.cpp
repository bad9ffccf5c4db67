// A million random touches on a keyboard, beside a model that is a string with append and delete. After each touch the
// texts agree, nothing is written outside the texts' buffers, and the text box shows the pixels that the model draws
// freshly.
#include "keyboard/keyboard.h"

#include "gui/modal.h"
#include "lang/languages.h"
#include "tests/support/fake_sleep.h"
#include "tests/support/keyboard_model.h"
#include "tests/support/scale.h"
#include "util/bounded_copy.h"

#include <algorithm>
#include <cstring>
#include <gtest/gtest.h>
#include <memory>
#include <new>
#include <random>
#include <string>

using namespace keyboard_model;

namespace {

constexpr unsigned SEED = 20261120;
constexpr wchar_t GUARD = 0x5A5A;

struct Guarded {
    wchar_t before[64];
    wchar_t text[180];
    wchar_t behind[64];
};

struct Desk {
    std::mt19937 random{SEED};
    Strip shown;
    Model model;
    Guarded out = {};
    long touchesLeft = 0;
    long touches = 0;
    long edits = 0;
    long refused = 0;
    long entries = 0;
    long wrong = 0;
    int tapReads = 0; // of a message that waits for a tap
    int x = -1, y = -1;
    alignas(Keyboard) unsigned char storage[64 + sizeof(Keyboard) + 64] = {};
    Keyboard* keyboard = nullptr;

    int below(int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); }
    void nextTouch();
    void check();
    void start();
    void run();
    bool guardsHold() const;
};

// Made once, and never destroyed: modalImages outlives it.
Desk& desk() {
    static Desk* const instance = new Desk;
    return *instance;
}

// Mostly keys that type, sometimes anything, also beside the panel.
void Desk::nextTouch() {
    ++touches;
    --touchesLeft;
    const int kind = below(100);
    if (kind < 5) {
        x = below(330) - 5;
        y = below(250) - 5;
    } else if (kind < 10) {
        x = -1;
        y = -1;
    } else if (model.isKeypad()) {
        x = 45 + below(235);
        y = kind < 98 ? 50 + below(150) : 50 + below(190);
    } else {
        x = 1 + below(318);
        y = kind < 90 ? 86 + below(120) : kind < 97 ? 1 + below(239) : 212;
    }
    // Now and then a lot is deleted, so that texts of all lengths are seen.
    const bool deletes = touchesLeft % 2000 < 700 ? below(3) != 0 : model.text.size() > 176 && below(4) == 0;
    if (deletes) {
        x = model.isKeypad() ? 80 : 230;
        y = model.isKeypad() ? 180 : 220;
    }
    const bool penDown = x >= 1 && y >= 1;
    const std::wstring before = model.text;
    const bool full = before.size() == 179;
    if (penDown)
        model.touch(x, y);
    if (model.text != before)
        ++edits;
    else if (penDown && full && !model.stripIsKnown && !model.ended)
        ++refused;
}

bool Desk::guardsHold() const {
    const auto isGuard = [](wchar_t c) { return c == GUARD; };
    return std::all_of(out.before, out.before + 64, isGuard) && std::all_of(out.behind, out.behind + 64, isGuard) &&
           std::all_of(storage, storage + 64, [](unsigned char c) { return c == 0x5A; }) &&
           std::all_of(storage + 64 + sizeof(Keyboard), std::end(storage), [](unsigned char c) { return c == 0x5A; });
}

// After a touch was handled: the keyboard is as the model says.
void Desk::check() {
    if (model.ended || wrong > 5)
        return;
    const auto expect = [&](bool holds, const char* what) {
        if (!holds && ++wrong <= 5)
            ADD_FAILURE() << what << " after touch " << touches << " at " << x << ',' << y << " of seed " << SEED
                          << ", layout " << model.mode << ", " << model.text.size() << " characters";
    };
    expect(model.text == keyboard->text, "another text");
    expect(model.initial == keyboard->initialText, "another initial text");
    expect(keyboard->text[179] == 0 && keyboard->initialText[179] == 0, "no terminator");
    expect(guardsHold(), "bytes outside the buffers changed");
    if (!model.stripIsKnown)
        return;
    if (keyboard->cursorOn == 0) // it blinks; the model's is always on
        shown.fill(keyboard->cursorX, keyboard->cursorY, keyboard->cursorX + 2, keyboard->cursorY + 20, 1405);
    const uint64_t rows = Strip::rows(model.top(), model.bottom());
    bool same = true;
    for (int column = model.left(); column < model.right(); ++column) {
        const Strip::Column& a = shown.columns[static_cast<size_t>(column)];
        const Strip::Column& b = model.strip.columns[static_cast<size_t>(column)];
        same = same && ((a.white ^ b.white) & rows) == 0 && ((a.blue ^ b.blue) & rows) == 0;
    }
    if (keyboard->cursorOn == 0)
        shown.fill(keyboard->cursorX, keyboard->cursorY, keyboard->cursorX + 2, keyboard->cursorY + 20, 65535);
    expect(same, "another picture");
}

void Desk::start() {
    ++entries;
    const int modes[] = {1, 1, 1, 3, 2, 7};
    model = {};
    model.mode = modes[below(6)];
    model.prefix = below(3) == 0 ? static_cast<size_t>(below(12)) : 0;
    const int lengths[] = {0, 5, 30, 179};
    const int length = below(lengths[below(4)] + 1);
    for (int i = 0; i < length; ++i)
        model.initial +=
            model.isKeypad() ? static_cast<wchar_t>(L'0' + below(10)) : static_cast<wchar_t>(L'!' + below(90));
    model.text = model.initial;
    keyboard->prefixLength = static_cast<int>(model.prefix);
    keyboard->keyboardMode(model.mode);
    keyboard->drawText(std::string(model.initial.begin(), model.initial.end()).c_str(), out.text);
    model.cursorTop = model.isKeypad() ? 19 : 22;
    // Scrolls a text that fills the box exactly; an edit does so with the next pixel.
    model.draw(model.typedWidth() + 1);
    check();
}

void Desk::run() {
    std::memset(storage, 0x5A, sizeof storage);
    std::fill_n(out.before, 64, GUARD);
    std::fill_n(out.behind, 64, GUARD);
    std::memset(storage + 64, 0, sizeof(Keyboard));
    unsigned char* place = storage + 64;
    asm volatile("" : "+r"(place) : : "memory"); // the bytes count
    keyboard = new (place) Keyboard;
    keyboard->returnHandler = [] {};
    ostrel::copyText(lang.file, "/dev/null");
    fakeSleep().log = false;
    touchesLeft = scaled(1000000);
    while (touchesLeft > 0 && wrong == 0) {
        start();
        while (keyboard->active != 0 && touchesLeft > 0 && wrong == 0) {
            nextTouch();
            keyboard->getTouch(x, y); // ends with the entry, or in a dead zone
            check();
        }
        if (!model.ended)
            continue;
        ASSERT_EQ(keyboard->active, 0);
        ASSERT_EQ(out.text, model.result) << "after touch " << touches << " of seed " << SEED;
    }
    keyboard->~Keyboard();
}

TEST(RandomTouches, NeverPartTheKeyboardFromAStringWithAppendAndDelete) {
    desk().run();
    std::printf(
        "seed %u: %ld touches, %ld edits, %ld refused by the full buffer, %ld entries\n", SEED, desk().touches,
        desk().edits, desk().refused, desk().entries);
    EXPECT_GT(desk().edits, desk().touches / 4);
    EXPECT_GT(desk().refused, scaled(1000));
    EXPECT_GT(desk().entries, scaled(1000));
}

TEST(EachCharacter, TypedAndDeletedRestoresTheTextBoxExactly) {
    alignas(Keyboard) static unsigned char storage[sizeof(Keyboard)];
    Keyboard& keyboard = *new (storage) Keyboard;
    keyboard.returnHandler = [] {};
    wchar_t out[180];
    const struct {
        int mode;
        const wchar_t* characters;
    } layouts[] = {
        {1, L"1234567890qwertyuiopasdfghjklzxcvbnm.QWERTYUIOPASDFGHJKLZXCVBNM "},
        {3, L"`~!@#$%^&*()+=-_\\/{}[];:?<>'|\", "},
        {2, L"1234567890"},
        {7, L"1234567890."},
    };
    for (const auto& layout : layouts)
        for (const char* text : {"", "x", "seventeen letters"})
            for (const wchar_t* character = layout.characters; *character != 0; ++character) {
                keyboard.keyboardMode(layout.mode);
                keyboard.drawText(text, out);
                const Strip before = desk().shown;
                keyboard.appendChar(*character);
                EXPECT_NE(std::memcmp(&before, &desk().shown, sizeof before), 0) << "something was drawn";
                keyboard.deleteChar();
                EXPECT_EQ(std::memcmp(&before, &desk().shown, sizeof before), 0)
                    << "character " << *character << " behind \"" << text << "\" in layout " << layout.mode;
            }
    keyboard.~Keyboard();
}

} // namespace

// The display: the strip, and a pen that follows the dice.

void lcd_clear(int colour) {
    desk().shown.fill(0, 0, 320, 52, colour);
}

void fillRect(unsigned short x1, unsigned short y1, unsigned short x2, unsigned short y2, int colour) {
    desk().shown.fill(x1, y1, x2, y2, colour);
}

void drawText(wchar_t* text, int x, int y, int, int, int, float, int, int c) {
    if (c == 0)
        desk().shown.write(text, x, y);
}

int textWidth(wchar_t* text, float) {
    int width = 0;
    for (; *text != 0; ++text)
        width += advanceOf(*text);
    return width;
}

int textTouchPosition(wchar_t* text, int x, float) {
    int left = 0;
    for (int index = 0; x >= left && text[index] != 0; left += advanceOf(text[index]), ++index)
        if (x < left + advanceOf(text[index]))
            return 1000 * left + index;
    return -1;
}

// Only a message draws a box: it then looks at the pen until it has been tapped.
void drawRoundedRectangle(int, int, int, int, int, int) {
    desk().tapReads = 2;
}

int readX() {
    Desk& all = desk();
    if (all.tapReads > 0)
        return --all.tapReads == 1 ? 160 : -1;
    all.check();
    if (all.model.ended || all.touchesLeft <= 0 || all.wrong != 0) {
        all.keyboard->active = 0;
        return all.x = -1;
    }
    all.nextTouch();
    return all.x;
}

int readY() {
    return desk().tapReads == 1 ? 120 : desk().x == -1 ? -1 : desk().y;
}

void waitForPenUp() {}
void drawWidget(WidgetRecord) {}
void unDrawWidget(WidgetRecord) {}
TouchArea getTouchArea(WidgetRecord) {
    return {};
}
void libOstrelGuiInit() {}
void drawRect(unsigned short, unsigned short, unsigned short, unsigned short, int) {}
void disableTouch(int) {}
ImagePNG::ImagePNG() : store(nullptr) {}
ImagePNG::~ImagePNG() = default;
int ImagePNG::loadPNG(char*) {
    return 0;
}
void ImagePNG::drawPNG(int, int, int, int, int) {}
