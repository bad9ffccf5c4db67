// A keyboard on the desk: every character is 10 pixels wide unless a test says otherwise, the pen follows a script, and
// the language file's texts are their keys in brackets.
#ifndef OSTREL_TESTS_SUPPORT_KEYBOARD_DESK_H
#define OSTREL_TESTS_SUPPORT_KEYBOARD_DESK_H

#include "keyboard/keyboard.h"
#include "tests/support/desk.h"

#include <string>
#include <utility>
#include <vector>

class KeyboardDesk : public Desk {
  public:
    // Whether getTouch went on to look at the pen again, or returned without.
    enum class After { LooksAgain, Returned };

  protected:
    KeyboardDesk();
    ~KeyboardDesk() override;

    // Starts a free text on a layout and forgets the calls that drew it. The result is in `out`.
    void begin(int mode, const char* initial = "");

    // One touch, handled to its end. The keyboard's next look at the pen is cut off.
    After touch(int x, int y);

    // The touch and then the script of the pen; cut off when the script is over.
    After play(std::vector<std::pair<int, int>> points);

    // Types characters as their keys would, without drawing into the log.
    void type(const wchar_t* characters);

    std::string shown() const { return narrow(keyboard.text); }

    Keyboard& keyboard;
    wchar_t out[180] = {};
    int returns = 0; // calls of returnHandler so far

  private:
    alignas(Keyboard) unsigned char storage[sizeof(Keyboard)];
};

#endif
