// A million random touches on a keyboard, beside a model that is a string with append and delete. After each touch the
// texts agree, nothing is written outside the texts' buffers, and the text box shows the pixels that the model draws
// freshly.
#include "keyboard/keyboard.h"

#include "gui/modal.h"
#include "lang/languages.h"
#include "tests/support/fake_sleep.h"
#include "tests/support/scale.h"
#include "util/bounded_copy.h"

#include <algorithm>
#include <arpa/inet.h>
#include <array>
#include <cstring>
#include <gtest/gtest.h>
#include <memory>
#include <new>
#include <random>
#include <string>

namespace {

// The upper rows of the panel, a column as one bit a row: enough for the text box, in black, white and blue.
struct Strip {
    struct Column {
        uint64_t white = 0;
        uint64_t blue = 0;
    };
    std::array<Column, 320> columns = {};

    static uint64_t rows(int top, int bottom) {
        const auto below = [](int y) { return (uint64_t{1} << std::clamp(y, 0, 52)) - 1; };
        return bottom > top ? below(bottom) & ~below(top) : 0;
    }

    void fill(int left, int top, int right, int bottom, int colour) {
        const uint64_t mask = rows(top, bottom);
        for (int x = std::max(left, 0); x < std::min(right, 320); ++x) {
            Column& column = columns[static_cast<size_t>(x)];
            column.white = (column.white & ~mask) | (colour == 65535 ? mask : 0);
            column.blue = (column.blue & ~mask) | (colour == 1405 ? mask : 0);
        }
    }

    // Glyphs are columns of black dots, different for each character.
    void write(const wchar_t* text, int x, int y);
};

// 3 to 19 pixels.
int advanceOf(wchar_t character) {
    return 3 + static_cast<int>(static_cast<uint32_t>(character) * 7 % 17);
}

int widthOf(const std::wstring& text) {
    int width = 0;
    for (const wchar_t character : text)
        width += advanceOf(character);
    return width;
}

void Strip::write(const wchar_t* text, int x, int y) {
    for (; *text != 0; ++text)
        for (int i = 0; i < advanceOf(*text); ++i, ++x) {
            if (x < 0 || x >= 320)
                continue;
            const uint64_t dots =
                (static_cast<uint32_t>(*text) * 2654435761U + static_cast<uint32_t>(i) * 40503U) & 0xFFFFF;
            Column& column = columns[static_cast<size_t>(x)];
            column.white &= ~(dots << y);
            column.blue &= ~(dots << y);
        }
}

// A key's columns of touches, and what it types in each look.
struct Row {
    int top, bottom;            // the touches' first and last line
    std::array<int, 11> starts; // first column of each key; then the column behind the last key
    const wchar_t* lower;
    const wchar_t* upper;
    const wchar_t* symbols; // a blank: dead, getTouch returns
};
const Row ROWS[] = {
    {86, 112, {4, 34, 65, 96, 127, 158, 189, 220, 251, 282, 313}, L"1234567890", L"1234567890", L"`~!@#$%^&*"},
    {117, 143, {4, 34, 65, 96, 127, 158, 189, 220, 251, 282, 313}, L"qwertyuiop", L"QWERTYUIOP", L" ()+=-_\\/ "},
    {148, 174, {18, 48, 79, 110, 141, 172, 203, 234, 265, 296, 296}, L"asdfghjkl", L"ASDFGHJKL", L" {}[];:? "},
    {179, 205, {31, 65, 96, 127, 158, 189, 220, 251, 282, 282, 282}, L"zxcvbnm.", L"ZXCVBNM.", L" <>'|\", "},
};

struct Model {
    std::wstring text;
    std::wstring initial;
    size_t prefix = 0;
    int mode = 1; // layout code, with symbols and letters changed by the switch
    bool capitals = false;
    bool ended = false;
    std::wstring result;
    int cursorTop = 22;
    Strip strip;
    bool stripIsKnown = false; // after a message the box shows what an earlier width says, until the next edit

    bool isKeypad() const { return mode != 1 && mode != 3; }
    int left() const { return isKeypad() ? 50 : 45; }
    int right() const { return isKeypad() ? 274 : 313; }
    int top() const { return isKeypad() ? 13 : 15; }
    int bottom() const { return isKeypad() ? 48 : 50; }

    // Draws the box with the visible part of the text.
    void draw(int decidingWidth) {
        const int limit = isKeypad() ? 199 : 243;
        const std::wstring typed = text.substr(std::min(prefix, text.size()));
        const int width = widthOf(typed);
        size_t first = 0;
        int hidden = 0;
        if (decidingWidth > limit)
            while (hidden + advanceOf(typed[first]) <= width - limit)
                hidden += advanceOf(typed[first++]);
        strip.fill(left(), top(), right(), bottom(), 65535);
        const int x = isKeypad() ? 55 : 50;
        const int y = isKeypad() ? 22 : 24;
        const int cursor = x + width - hidden;
        strip.write(typed.c_str() + first, x, y);
        strip.fill(cursor, cursorTop, cursor + 2, cursorTop + 20, 1405);
        stripIsKnown = true;
    }

    int typedWidth() const { return widthOf(text.substr(std::min(prefix, text.size()))); }

    void append(wchar_t character) {
        if (text.size() == 179) {
            stripIsKnown = false;
            cursorTop = 22; // the letters come back over the keypad, and its cursor stays at their height
            return;
        }
        const int before = typedWidth();
        text += character;
        draw(isKeypad() ? before : typedWidth());
    }

    void removeLast() {
        if (text.size() <= prefix)
            return;
        text.pop_back();
        draw(typedWidth());
    }

    void end(const std::wstring& delivered) {
        ended = true;
        result = delivered;
    }

    void done() {
        in_addr address;
        const std::string bytes(text.begin(), text.end());
        if (mode != 7 || inet_pton(AF_INET, bytes.c_str(), &address) == 1)
            end(text);
        else
            redrawKeypad();
    }

    void redrawKeypad() {
        stripIsKnown = false;
        cursorTop = 19;
    }

    void touch(int x, int y) {
        if (isKeypad())
            touchKeypad(x, y);
        else
            touchLetters(x, y);
    }

    void touchLetters(int x, int y) {
        for (const Row& row : ROWS) {
            if (y < row.top || y > row.bottom)
                continue;
            const wchar_t* const characters = mode == 3 ? row.symbols : capitals ? row.upper : row.lower;
            for (size_t key = 0; characters[key] != 0; ++key)
                if (row.starts[key] <= x && x < row.starts[key + 1] && characters[key] != L' ')
                    append(characters[key]);
            return;
        }
        if (y >= 210 && y <= 236) {
            if (x >= 7 && x <= 64)
                mode = mode == 1 ? 3 : 1;
            else if (x >= 69 && x <= 112)
                capitals = !capitals;
            else if (x >= 114 && x <= 205)
                append(L' ');
            else if (x >= 210 && x <= 250)
                removeLast();
            else if (x >= 255 && x <= 315)
                end(text);
        } else if (x >= 6 && x <= 39 && y >= 16 && y <= 49) {
            end(initial);
        }
    }

    void touchKeypad(int x, int y) {
        const int tops[] = {56, 93, 130, 167, 204};
        const wchar_t* const keys[] = {L"123", L"456", L"789", L"-0."};
        if (x >= 51 && x <= 273) {
            const size_t column = x <= 126 ? 0 : x <= 203 ? 1 : 2;
            for (int row = 0; row < 5; ++row) {
                if (y < tops[row] || y > tops[row] + 28)
                    continue;
                if (row == 4)
                    done();
                else if (row == 3 && column == 0)
                    removeLast();
                else if (keys[row][column] != L'.' || mode == 7)
                    append(keys[row][column]);
                return;
            }
        }
        if (x >= 11 && x <= 44 && y >= 14 && y <= 47)
            end(initial);
    }
};

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
