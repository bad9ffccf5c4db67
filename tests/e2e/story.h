// Touch scripts as they grow, and where the keys of the on-screen keyboard are touched.
#ifndef OSTREL_TESTS_E2E_STORY_H
#define OSTREL_TESTS_E2E_STORY_H

#include <cstring>
#include <string>

struct Point {
    int x, y;
};

// Middles of keys. The first five belong to the letters, those named after it to the keypad.
constexpr Point SWITCH = {35, 223};
constexpr Point CASE = {89, 223};
constexpr Point SPACE = {160, 223};
constexpr Point DELETE = {230, 223};
constexpr Point DONE = {283, 223};
constexpr Point BACK = {22, 32};
constexpr Point KEYPAD_DELETE = {85, 181};
constexpr Point KEYPAD_DONE = {162, 218};
constexpr Point KEYPAD_BACK = {27, 30};
constexpr Point ANYWHERE = {300, 230}; // of a message

inline Point letterKey(char letter) {
    struct Row {
        const char* letters;
        int x, y;
    };
    for (const Row& row :
         {Row{"1234567890", 17, 99}, Row{"qwertyuiop", 17, 130}, Row{"asdfghjkl", 31, 161}, Row{"zxcvbnm.", 48, 192}}) {
        const char* const at = strchr(row.letters, letter);
        if (at != nullptr)
            return {row.x + 31 * static_cast<int>(at - row.letters), row.y};
    }
    return SPACE;
}

inline Point keypadKey(char digit) {
    const char* const at = strchr("123456789-0.", digit);
    const int place = static_cast<int>(at - "123456789-0.");
    return {85 + 77 * (place % 3), 70 + 37 * (place / 3)};
}

class Story {
  public:
    Story& tap(const Point& at, int times = 1) {
        for (int i = 0; i < times; ++i)
            say("tap " + std::to_string(at.x) + " " + std::to_string(at.y));
        return *this;
    }
    Story& type(const std::string& letters) {
        for (const char letter : letters)
            tap(letterKey(letter));
        return *this;
    }
    Story& dial(const std::string& digits) {
        for (const char digit : digits)
            tap(keypadKey(digit));
        return *this;
    }
    // A finger on the glass: 30 ms down, 30 ms up.
    Story& touch(const Point& at) {
        say("press " + std::to_string(at.x) + " " + std::to_string(at.y));
        say("wait 30");
        say("release");
        say("wait 30");
        return *this;
    }
    Story& shot(const std::string& name) { return say("shot " + name + ".png"); }
    Story& say(const std::string& command) {
        text += command + "\n";
        return *this;
    }

    std::string text;
};

#endif
