// An entry of the keyboard on the desk: what its start asks, what Done draws, and how a message is tapped away.
#ifndef OSTREL_TESTS_SUPPORT_KEYBOARD_ENTRY_DESK_H
#define OSTREL_TESTS_SUPPORT_KEYBOARD_ENTRY_DESK_H

#include "tests/support/keyboard_desk.h"

class KeyboardEntryDesk : public KeyboardDesk {
  protected:
    // The calls of an entry's start, without what it draws.
    std::string requestsOf(const std::string& log) { return log.substr(0, log.find("lcd_clear")); }

    // What drawing the layout again draws.
    std::string redrawn() {
        std::vector<std::string> kept;
        kept.swap(display().calls);
        const int oldWidth = keyboard.oldWidth;
        if (isNumericMode == 1) {
            keyboard.drawNumKeyboard();
        } else {
            keyboard.drawBase();
            keyboard.drawKeyboard();
        }
        keyboard.oldWidth = oldWidth;
        std::string calls = display().take();
        display().calls.swap(kept);
        return calls;
    }

    std::string done() {
        display().calls.clear();
        keyboard.doneOnTouch();
        return display().take();
    }

    // The next message is tapped away.
    void tapOnce() {
        display().pen = {{160, 120}, {-1, -1}};
        display().penRead = 0;
        fakeSleep().log = false;
    }
};

// What every end of an entry calls last.
inline const char* const END = "lcd_clear(0)\nreturnHandler()\n";

inline std::string request(const std::string& what) {
    return "open(\"/dev/apsoc_nvram\", O_RDONLY) = 700\nioctl(700, " + what + ")\nclose(700)\n";
}

#endif
