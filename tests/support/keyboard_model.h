// What a keyboard is to its user: a string with append and delete, keys at their places, and a text box that is drawn
// afresh after each edit. Shares nothing with the toolkit.
#ifndef OSTREL_TESTS_SUPPORT_KEYBOARD_MODEL_H
#define OSTREL_TESTS_SUPPORT_KEYBOARD_MODEL_H

#include <algorithm>
#include <arpa/inet.h>
#include <array>
#include <cstdint>
#include <string>

namespace keyboard_model {

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
inline int advanceOf(wchar_t character) {
    return 3 + static_cast<int>(static_cast<uint32_t>(character) * 7 % 17);
}

inline int widthOf(const std::wstring& text) {
    int width = 0;
    for (const wchar_t character : text)
        width += advanceOf(character);
    return width;
}

inline void Strip::write(const wchar_t* text, int x, int y) {
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
inline const Row ROWS[] = {
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

} // namespace keyboard_model

#endif
