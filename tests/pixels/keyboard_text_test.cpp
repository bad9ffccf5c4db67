// The text box after every edit, to the pixel.
#include "tests/support/keyboard_panel.h"
#include "tests/support/scale.h"

#include <cwchar>
#include <random>

using namespace ostrel;

namespace {

// Where the two kinds of layouts have their text, and how wide it may be.
struct Box {
    Rect area;
    int textX, textY, textWidth;
    int cursorTop;
    int visibleWidth;
    bool decidesByNewWidth;
};
constexpr Box LETTER_BOX = {{45, 15, 313, 50}, 50, 24, 248, 22, 243, true};
constexpr Box KEYPAD_BOX = {{50, 13, 274, 48}, 55, 22, 204, 19, 199, false};

constexpr float SIZE = 20;
constexpr int CURSOR = 1405;

class KeyboardText : public KeyboardPanel {
  protected:
    void start(int mode, const char* initial, int prefix = 0) {
        keyboard.prefixLength = prefix;
        box = mode == 0 || mode == 7 ? KEYPAD_BOX : LETTER_BOX;
        begin(mode, initial);
    }

    int width() { return textWidth(keyboard.text + keyboard.prefixLength, SIZE); }

    // Whether the box shows what it must after an edit of a text that was `widthBefore` wide.
    testing::AssertionResult isAsAfterAnEditOf(int widthBefore) {
        const bool scrolls = (box.decidesByNewWidth ? width() : widthBefore) > box.visibleWidth;
        wchar_t* visible = keyboard.text + keyboard.prefixLength;
        if (scrolls) {
            const int position = textTouchPosition(visible, width() - box.visibleWidth, SIZE);
            visible += position < 0 ? 0 : position % 1000;
        }
        return shows(visible);
    }

    testing::AssertionResult shows(wchar_t* visible) {
        const Picture actual = shown(box.area);
        fillBox(box.area, 65535);
        drawText(visible, box.textX, box.textY, box.textWidth, 1, 0, SIZE, 0, 0);
        const int cursorX = box.textX + textWidth(visible, SIZE);
        fillBox({cursorX, box.cursorTop, cursorX + 2, box.cursorTop + 20}, CURSOR);
        return matchesPicture(actual, shown(box.area), "keyboard-text");
    }

    static void fillBox(const Rect& area, int colour) {
        const auto corner = [](int coordinate) { return static_cast<unsigned short>(coordinate); };
        fillRect(corner(area.left), corner(area.top), corner(area.right), corner(area.bottom), colour);
    }

    Box box = LETTER_BOX;
};

// Every character key of a layout, by a point on it, and the key that deletes.
struct Point {
    int x, y;
};
std::vector<Point> characterKeys(int mode) {
    std::vector<Point> keys;
    if (mode == 0 || mode == 7) {
        for (const int y : {70, 107, 144})
            for (const int x : {85, 162, 239})
                keys.push_back({x, y});
        keys.push_back({162, 181});
        if (mode == 7)
            keys.push_back({239, 181});
        return keys;
    }
    const bool symbols = mode == 3;
    for (int i = 0; i < 10; ++i)
        keys.push_back({17 + 31 * i, 99});
    for (int i = symbols ? 1 : 0; i < (symbols ? 9 : 10); ++i)
        keys.push_back({17 + 31 * i, 130});
    for (int i = symbols ? 1 : 0; i < (symbols ? 8 : 9); ++i)
        keys.push_back({31 + 31 * i, 161});
    for (int i = symbols ? 1 : 0; i < (symbols ? 7 : 8); ++i)
        keys.push_back({48 + 31 * i, 192});
    keys.push_back({160, 225}); // the space bar
    return keys;
}

TEST_F(KeyboardText, ComesBackToThePixelWhenACharacterIsTypedAndDeleted) {
    struct Layout {
        int mode;
        bool capitals;
        size_t keys;
        Point deletes;
    };
    for (const Layout& layout :
         {Layout{1, false, 38, {230, 225}}, Layout{1, true, 38, {230, 225}}, Layout{3, false, 32, {230, 225}},
          Layout{0, false, 10, {85, 181}}, Layout{7, false, 11, {85, 181}}}) {
        const std::vector<Point> keys = characterKeys(layout.mode);
        ASSERT_EQ(keys.size(), layout.keys);
        for (const char* text : {"", "i", "W", "192.168.", "fjord \"Quay\"", "jjjjjjjjjjjjjjjjj"}) {
            start(layout.mode, text);
            if (layout.capitals)
                tap(90, 225);
            for (const Point& key : keys) {
                const Picture before = shown(box.area);
                tap(key.x, key.y);
                EXPECT_EQ(wcslen(keyboard.text), std::string(text).size() + 1);
                EXPECT_FALSE(shown(box.area) == before) << key.x << ", " << key.y;
                tap(layout.deletes.x, layout.deletes.y);
                EXPECT_TRUE(matchesPicture(shown(box.area), before, "keyboard-typed-and-deleted"))
                    << text << " in layout " << layout.mode << ", key at " << key.x << ", " << key.y;
            }
        }
    }
}

TEST_F(KeyboardText, ShowsThePixelsOfItsVisiblePartAfterEveryEdit) {
    constexpr char TYPED[] = "`~!@#$%^&*()+=-_\\/{}[];:?<>'|\",. 0123456789"
                             "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
    constexpr int MODES[] = {1, 3, 0, 7};
    constexpr unsigned SEED = 20240521;
    SCOPED_TRACE("seed " + std::to_string(SEED));
    std::mt19937 random(SEED);
    const auto below = [&](size_t end) { return static_cast<int>(random() % end); };

    for (int entry = 0; entry < scaled(200); ++entry) {
        const int prefix = below(3) == 0 ? below(5) : 0;
        start(MODES[entry % 4], "http", prefix);
        bool grows = true;
        for (int edit = 0; edit < 100; ++edit) {
            if (below(30) == 0)
                grows = !grows;
            const int widthBefore = width();
            const size_t length = wcslen(keyboard.text);
            if (below(4) == 0 ? !grows : grows) {
                keyboard.appendChar(static_cast<wchar_t>(TYPED[below(sizeof TYPED - 1)]));
                ASSERT_TRUE(isAsAfterAnEditOf(widthBefore)) << "entry " << entry << ", edit " << edit;
            } else {
                keyboard.deleteChar();
                if (wcslen(keyboard.text) < length) {
                    ASSERT_TRUE(isAsAfterAnEditOf(width())) << "entry " << entry << ", edit " << edit;
                }
            }
        }
    }
}

// Each width from the empty text to beyond the box, in steps of the narrowest characters.
TEST_F(KeyboardText, ShowsThePixelsOfItsVisiblePartAroundTheWidthWhereItScrolls) {
    for (const int mode : {1, 0}) {
        for (const char* step : {"i", "l", "1", "W", "\xC5\x9A", "\xD0\xA9"}) {
            start(mode, "");
            wchar_t characters[2] = {};
            start(mode, step);
            characters[0] = keyboard.text[0];
            start(mode, "");
            while (width() <= box.visibleWidth + 25) {
                const int widthBefore = width();
                keyboard.appendChar(characters[0]);
                ASSERT_TRUE(isAsAfterAnEditOf(widthBefore)) << step << " at " << widthBefore;
            }
            while (width() > 0) {
                keyboard.deleteChar();
                ASSERT_TRUE(isAsAfterAnEditOf(width())) << step << " at " << width();
            }
        }
    }
}

TEST_F(KeyboardText, ShowsItsEndWhenAnEntryBegins) {
    std::string text;
    for (const int mode : {1, 0}) {
        for (text = ""; text.size() < 170; text += static_cast<char>('0' + text.size() % 10)) {
            start(mode, text.c_str());
            wchar_t* visible = keyboard.text;
            if (width() >= box.visibleWidth)
                visible += textTouchPosition(visible, width() - box.visibleWidth, SIZE) % 1000;
            ASSERT_TRUE(shows(visible)) << text << " in layout " << mode;
        }
    }
}

} // namespace
