#include "tests/support/keyboard_desk.h"
#include "tests/support/scale.h"
#include "util/bounded_copy.h"

#include <algorithm>
#include <sstream>

namespace {

class KeysOnThePanel : public KeyboardDesk {
  protected:
    KeysOnThePanel() { fakeSleep().log = false; }
};

constexpr auto LooksAgain = KeyboardDesk::After::LooksAgain;
constexpr auto Returned = KeyboardDesk::After::Returned;

// A part of the panel, its last pixels included, and the first thing that a touch there draws.
struct Zone {
    int left, top, right, bottom;
    const char* firstCall;
    KeyboardDesk::After after;
};

std::vector<Zone> letterZones() {
    return {
        {4, 86, 33, 112, "fillRect(3, 85, 31, 113, 555)", LooksAgain},
        {34, 86, 64, 112, "fillRect(34, 85, 62, 113, 555)", LooksAgain},
        {65, 86, 95, 112, "fillRect(65, 85, 93, 113, 555)", LooksAgain},
        {96, 86, 126, 112, "fillRect(96, 85, 124, 113, 555)", LooksAgain},
        {127, 86, 157, 112, "fillRect(127, 85, 155, 113, 555)", LooksAgain},
        {158, 86, 188, 112, "fillRect(158, 85, 186, 113, 555)", LooksAgain},
        {189, 86, 219, 112, "fillRect(189, 85, 217, 113, 555)", LooksAgain},
        {220, 86, 250, 112, "fillRect(220, 85, 248, 113, 555)", LooksAgain},
        {251, 86, 281, 112, "fillRect(251, 85, 279, 113, 555)", LooksAgain},
        {282, 86, 312, 112, "fillRect(282, 85, 310, 113, 555)", LooksAgain},
        {4, 117, 33, 143, "fillRect(3, 116, 31, 144, 2879)", LooksAgain},
        {34, 117, 64, 143, "fillRect(34, 116, 62, 144, 2879)", LooksAgain},
        {65, 117, 95, 143, "fillRect(65, 116, 93, 144, 2879)", LooksAgain},
        {96, 117, 126, 143, "fillRect(96, 116, 124, 144, 2879)", LooksAgain},
        {127, 117, 157, 143, "fillRect(127, 116, 155, 144, 2879)", LooksAgain},
        {158, 117, 188, 143, "fillRect(158, 116, 186, 144, 2879)", LooksAgain},
        {189, 117, 219, 143, "fillRect(189, 116, 217, 144, 2879)", LooksAgain},
        {220, 117, 250, 143, "fillRect(220, 116, 248, 144, 2879)", LooksAgain},
        {251, 117, 281, 143, "fillRect(251, 116, 279, 144, 2879)", LooksAgain},
        {282, 117, 312, 143, "fillRect(282, 116, 310, 144, 2879)", LooksAgain},
        {18, 148, 47, 174, "fillRect(17, 147, 45, 175, 2879)", LooksAgain},
        {48, 148, 78, 174, "fillRect(48, 147, 76, 175, 2879)", LooksAgain},
        {79, 148, 109, 174, "fillRect(79, 147, 107, 175, 2879)", LooksAgain},
        {110, 148, 140, 174, "fillRect(110, 147, 138, 175, 2879)", LooksAgain},
        {141, 148, 171, 174, "fillRect(141, 147, 169, 175, 2879)", LooksAgain},
        {172, 148, 202, 174, "fillRect(172, 147, 200, 175, 2879)", LooksAgain},
        {203, 148, 233, 174, "fillRect(203, 147, 231, 175, 2879)", LooksAgain},
        {234, 148, 264, 174, "fillRect(234, 147, 262, 175, 2879)", LooksAgain},
        {265, 148, 295, 174, "fillRect(265, 147, 293, 175, 2879)", LooksAgain},
        {4, 179, 30, 205, "", Returned},
        {31, 179, 64, 205, "fillRect(34, 178, 62, 206, 2879)", LooksAgain},
        {65, 179, 95, 205, "fillRect(65, 178, 93, 206, 2879)", LooksAgain},
        {96, 179, 126, 205, "fillRect(96, 178, 124, 206, 2879)", LooksAgain},
        {127, 179, 157, 205, "fillRect(127, 178, 155, 206, 2879)", LooksAgain},
        {158, 179, 188, 205, "fillRect(158, 178, 186, 206, 2879)", LooksAgain},
        {189, 179, 219, 205, "fillRect(189, 178, 217, 206, 2879)", LooksAgain},
        {220, 179, 250, 205, "fillRect(220, 178, 248, 206, 2879)", LooksAgain},
        {251, 179, 281, 205, "fillRect(251, 178, 279, 206, 2879)", LooksAgain},
        {282, 179, 282, 205, "", LooksAgain}, // beyond the last label
        {283, 179, 312, 205, "", Returned},
        {7, 210, 64, 236, "fillRect(6, 209, 65, 237, 15837)", LooksAgain},
        {69, 210, 112, 236, "fillRect(68, 209, 110, 237, 15837)", LooksAgain},
        {114, 210, 205, 236, "fillRect(113, 209, 206, 237, 15837)", LooksAgain},
        {210, 210, 250, 236, "fillRect(209, 209, 251, 237, 15837)", LooksAgain},
        {255, 210, 315, 236, "fillRect(254, 209, 313, 237, 15837)", LooksAgain},
        {6, 16, 39, 49, "fillRect(5, 15, 40, 50, 0)", LooksAgain},
    };
}

// Zones that the symbols have in front of, or instead of, the letters'.
std::vector<Zone> symbolZones() {
    std::vector<Zone> zones = {
        {4, 117, 33, 143, "", Returned},
        {282, 117, 312, 143, "", Returned},
        {18, 148, 47, 174, "", Returned},
        {265, 148, 295, 174, "", Returned},
        {4, 179, 64, 205, "", Returned},
        {251, 179, 312, 205, "", Returned},
        {4, 86, 33, 112, "fillRect(3, 85, 31, 113, 2879)", LooksAgain},
        {34, 86, 64, 112, "fillRect(34, 85, 62, 113, 2879)", LooksAgain},
        {65, 86, 95, 112, "fillRect(65, 85, 93, 113, 2879)", LooksAgain},
        {96, 86, 126, 112, "fillRect(96, 85, 124, 113, 2879)", LooksAgain},
        {127, 86, 157, 112, "fillRect(127, 85, 155, 113, 2879)", LooksAgain},
        {158, 86, 188, 112, "fillRect(158, 85, 186, 113, 2879)", LooksAgain},
        {189, 86, 219, 112, "fillRect(189, 85, 217, 113, 2879)", LooksAgain},
        {220, 86, 250, 112, "fillRect(220, 85, 248, 113, 2879)", LooksAgain},
        {251, 86, 281, 112, "fillRect(251, 85, 279, 113, 2879)", LooksAgain},
        {282, 86, 312, 112, "fillRect(282, 85, 310, 113, 2879)", LooksAgain},
    };
    const std::vector<Zone> letters = letterZones();
    zones.insert(zones.end(), letters.begin(), letters.end());
    return zones;
}

std::vector<Zone> keypadZones(const Zone& point) {
    return {
        {51, 56, 126, 84, "fillRect(50, 55, 120, 85, 2879)", LooksAgain},
        {127, 56, 203, 84, "fillRect(127, 55, 197, 85, 2879)", LooksAgain},
        {204, 56, 273, 84, "fillRect(204, 55, 274, 85, 2879)", LooksAgain},
        {51, 93, 126, 121, "fillRect(50, 92, 120, 122, 2879)", LooksAgain},
        {127, 93, 203, 121, "fillRect(127, 92, 197, 122, 2879)", LooksAgain},
        {204, 93, 273, 121, "fillRect(204, 92, 274, 122, 2879)", LooksAgain},
        {51, 130, 126, 158, "fillRect(50, 129, 120, 159, 2879)", LooksAgain},
        {127, 130, 203, 158, "fillRect(127, 129, 197, 159, 2879)", LooksAgain},
        {204, 130, 273, 158, "fillRect(204, 129, 274, 159, 2879)", LooksAgain},
        {51, 167, 126, 195, "fillRect(50, 166, 120, 196, 2879)", LooksAgain},
        {127, 167, 203, 195, "fillRect(127, 166, 197, 196, 2879)", LooksAgain},
        point,
        {51, 204, 273, 232, "fillRect(50, 203, 274, 233, 2879)", LooksAgain},
        {11, 14, 44, 47, "fillRect(10, 13, 45, 48, 0)", LooksAgain},
    };
}

class WholePanel : public KeysOnThePanel {
  protected:
    // Touches every pixel, each on a fresh keyboard that holds `text`, and compares who answered.
    void expectZones(int mode, const wchar_t* text, const std::vector<Zone>& zones) {
        begin(mode);
        int wrong = 0;
        for (int y = 0; y < 240; ++y)
            for (int x = 0; x < 320; ++x) {
                if (skips(zones, x, y))
                    continue;
                const auto zone = std::find_if(zones.begin(), zones.end(), [&](const Zone& z) {
                    return z.left <= x && x <= z.right && z.top <= y && y <= z.bottom;
                });
                const std::string expected = zone != zones.end() ? zone->firstCall : "";
                const After after = zone != zones.end() ? zone->after : LooksAgain;
                refresh(mode, text);
                const After seen = touch(x, y);
                const std::string first = display().calls.empty() ? "" : display().calls.front();
                if ((first != expected || seen != after) && ++wrong <= 5)
                    ADD_FAILURE() << "at " << x << ',' << y << ": \"" << first << "\" instead of \"" << expected
                                  << (seen == Returned ? "\", and returned" : "\", and looked again");
            }
        EXPECT_EQ(wrong, 0);
    }

  private:
    // Where every step is slow, only the crossings of the zones' borders are touched, on both sides.
    static bool skips(const std::vector<Zone>& zones, int x, int y) {
        if (scaled(20) == 20)
            return false;
        const auto isBorderX = [&](const Zone& z) {
            return x - z.left == 0 || x - z.left == -1 || x - z.right == 0 || x - z.right == 1;
        };
        const auto isBorderY = [&](const Zone& z) {
            return y - z.top == 0 || y - z.top == -1 || y - z.bottom == 0 || y - z.bottom == 1;
        };
        return std::none_of(zones.begin(), zones.end(), isBorderX) ||
               std::none_of(zones.begin(), zones.end(), isBorderY);
    }

    void refresh(int mode, const wchar_t* text) {
        keyboard.keyboardMode(mode);
        isCap = 0;
        keyboard.active = 1;
        keyboard.blinkCounter = 0;
        ostrel::copyText(keyboard.text, text);
        display().calls.clear();
    }
};

TEST_F(WholePanel, ReachesTheLettersKeysOnTheirPixelsOnly) {
    expectZones(1, L"", letterZones());
}

TEST_F(WholePanel, ReachesTheSymbolsKeysOnTheirPixelsOnly) {
    expectZones(3, L"", symbolZones());
}

TEST_F(WholePanel, ReachesTheKeypadsKeysOnTheirPixelsOnly) {
    expectZones(2, L"", keypadZones({204, 167, 273, 195, "", Returned}));
}

TEST_F(WholePanel, ReachesThePointOfTheAddressKeypadToo) {
    const Zone point = {204, 167, 273, 195, "fillRect(204, 166, 274, 196, 2879)", LooksAgain};
    expectZones(7, L"1.2.3.4", keypadZones(point)); // an address that Done accepts
}

// A key's left edge, its row's top, and what it types.
struct Key {
    int left, top;
    char character;
};

std::string pressOf(const Key& key, int face, int pressed) {
    std::ostringstream calls;
    const int bottom = key.top + 28;
    const int right = key.left + 28;
    const auto onKey = [&](int y, int colour) {
        calls << "drawText(\"" << key.character << "\", " << key.left << ", " << y << ", 28, 1, 0, 20, " << colour
              << ", 1)\n";
    };
    calls << "fillRect(" << key.left << ", " << key.top << ", " << right << ", " << bottom << ", " << pressed << ")\n"
          << "fillRect(" << key.left << ", 55, " << right << ", 83, 36509)\n";
    onKey(key.top + 5, 65535);
    onKey(59, 0);
    calls << "waitForPenUp()\n"
          << "fillRect(" << key.left << ", 55, " << right << ", 83, 0)\n"
          << "fillRect(" << key.left << ", " << key.top << ", " << right << ", " << bottom << ", " << face << ")\n";
    onKey(key.top + 5, 65535);
    calls << "fillRect(50, 22, 52, 42, 65535)\n"
          << "drawText(\"" << key.character << "\", 50, 24, 10, 1, 0, 20, 0, 0)\n"
          << "fillRect(60, 22, 62, 42, 1405)\n";
    return calls.str();
}

class PressedCharacters : public KeysOnThePanel {
  protected:
    void expectPresses(const std::vector<Key>& keys, int face, int pressed) {
        for (const Key& key : keys) {
            keyboard.text[0] = 0;
            keyboard.cursorX = 50;
            display().calls.clear();
            EXPECT_EQ(touch(key.left + 14, key.top + 14), LooksAgain);
            EXPECT_EQ(display().take(), pressOf(key, face, pressed));
            EXPECT_EQ(shown(), std::string(1, key.character));
            EXPECT_EQ(keyboard.keyRect.left, key.left);
            EXPECT_EQ(keyboard.keyRect.top, key.top);
            EXPECT_EQ(keyboard.keyRect.right, key.left + 28);
            EXPECT_EQ(keyboard.keyRect.bottom, key.top + 28);
            EXPECT_EQ(keyboard.blinkCounter, -25);
        }
    }
};

const std::vector<Key> DIGITS = {{3, 85, '1'},   {34, 85, '2'},  {65, 85, '3'},  {96, 85, '4'},  {127, 85, '5'},
                                 {158, 85, '6'}, {189, 85, '7'}, {220, 85, '8'}, {251, 85, '9'}, {282, 85, '0'}};

TEST_F(PressedCharacters, OfTheLettersShowAPreviewUntilThePenLiftsAndAreTypedThen) {
    begin(1);
    expectPresses(DIGITS, 784, 555);
    expectPresses(
        {{3, 116, 'q'},   {34, 116, 'w'},  {65, 116, 'e'},  {96, 116, 'r'},  {127, 116, 't'}, {158, 116, 'y'},
         {189, 116, 'u'}, {220, 116, 'i'}, {251, 116, 'o'}, {282, 116, 'p'}, {17, 147, 'a'},  {48, 147, 's'},
         {79, 147, 'd'},  {110, 147, 'f'}, {141, 147, 'g'}, {172, 147, 'h'}, {203, 147, 'j'}, {234, 147, 'k'},
         {265, 147, 'l'}, {34, 178, 'z'},  {65, 178, 'x'},  {96, 178, 'c'},  {127, 178, 'v'}, {158, 178, 'b'},
         {189, 178, 'n'}, {220, 178, 'm'}, {251, 178, '.'}},
        1405, 2879);
}

TEST_F(PressedCharacters, OfTheCapitalsStayCapitals) {
    begin(1);
    isCap = 1;
    expectPresses(DIGITS, 784, 555);
    expectPresses(
        {{3, 116, 'Q'},   {34, 116, 'W'},  {65, 116, 'E'},  {96, 116, 'R'},  {127, 116, 'T'}, {158, 116, 'Y'},
         {189, 116, 'U'}, {220, 116, 'I'}, {251, 116, 'O'}, {282, 116, 'P'}, {17, 147, 'A'},  {48, 147, 'S'},
         {79, 147, 'D'},  {110, 147, 'F'}, {141, 147, 'G'}, {172, 147, 'H'}, {203, 147, 'J'}, {234, 147, 'K'},
         {265, 147, 'L'}, {34, 178, 'Z'},  {65, 178, 'X'},  {96, 178, 'C'},  {127, 178, 'V'}, {158, 178, 'B'},
         {189, 178, 'N'}, {220, 178, 'M'}, {251, 178, '.'}},
        1405, 2879);
    EXPECT_EQ(isCap, 1);
}

TEST_F(PressedCharacters, OfTheSymbolsAreTheSameInEitherCase) {
    begin(3);
    for (const bool upper : {false, true}) {
        isCap = upper ? 1 : 0;
        expectPresses(
            {{3, 85, '`'},    {34, 85, '~'},   {65, 85, '!'},   {96, 85, '@'},    {127, 85, '#'},   {158, 85, '$'},
             {189, 85, '%'},  {220, 85, '^'},  {251, 85, '&'},  {282, 85, '*'},   {34, 116, '('},   {65, 116, ')'},
             {96, 116, '+'},  {127, 116, '='}, {158, 116, '-'}, {189, 116, '_'},  {220, 116, '\\'}, {251, 116, '/'},
             {48, 147, '{'},  {79, 147, '}'},  {110, 147, '['}, {141, 147, ']'},  {172, 147, ';'},  {203, 147, ':'},
             {234, 147, '?'}, {65, 178, '<'},  {96, 178, '>'},  {127, 178, '\''}, {158, 178, '|'},  {189, 178, '"'},
             {220, 178, ','}},
            1405, 2879);
    }
}

TEST_F(PressedCharacters, OfTheKeypadShowNoPreview) {
    begin(7);
    const Key keys[] = {{50, 55, '1'},   {127, 55, '2'},  {204, 55, '3'}, {50, 92, '4'},
                        {127, 92, '5'},  {204, 92, '6'},  {50, 129, '7'}, {127, 129, '8'},
                        {204, 129, '9'}, {127, 166, '0'}, {204, 166, '.'}};
    for (const Key& key : keys) {
        keyboard.text[0] = 0;
        keyboard.cursorX = 55;
        touch(key.left + 35, key.top + 15);
        std::ostringstream expected;
        const auto draw = [&](int face) {
            expected << "fillRect(" << key.left << ", " << key.top << ", " << key.left + 70 << ", " << key.top + 30
                     << ", " << face << ")\n"
                     << "drawText(\"" << key.character << "\", " << key.left << ", " << key.top + 6
                     << ", 70, 1, 0, 20, 65535, 1)\n";
        };
        draw(2879);
        expected << "waitForPenUp()\n";
        draw(1405);
        expected << "fillRect(55, 19, 57, 39, 65535)\n"
                 << "drawText(\"" << key.character << "\", 55, 22, 10, 1, 0, 20, 0, 0)\n"
                 << "fillRect(65, 19, 67, 39, 1405)\n";
        EXPECT_EQ(display().take(), expected.str());
        EXPECT_EQ(shown(), std::string(1, key.character));
    }
}

} // namespace
