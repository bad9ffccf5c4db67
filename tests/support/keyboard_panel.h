// A keyboard on a panel that can be looked at: the real display library, fonts and icons, a pen that the test holds,
// and sleeps that are over at once.
#ifndef OSTREL_TESTS_SUPPORT_KEYBOARD_PANEL_H
#define OSTREL_TESTS_SUPPORT_KEYBOARD_PANEL_H

#include "keyboard/keyboard.h"
#include "tests/support/panel_file.h"
#include "tests/support/staged_fonts.h"

#include <memory>
#include <string>

// The panel itself is one for the whole process, so that the display library opens its pen only once.
class KeyboardPanel : public ::testing::Test {
  protected:
    KeyboardPanel();
    ~KeyboardPanel() override;

    // Starts a free text on a layout.
    void begin(int mode, const char* initial = "");

    // The whole panel, or a part of it, as it shows now.
    Picture shown() const;
    Picture shown(const ostrel::Rect& area) const;

    // Touches the keyboard and lifts the pen again.
    void tap(int x, int y);

    // The same; gives what the panel shows while the pen is down.
    Picture held(int x, int y);

    // The texts of assets/languages/NAME.xml from now on.
    static void speak(const std::string& language);

    static PanelFile& panel();

    Keyboard keyboard;
    wchar_t out[KEYBOARD_TEXT_LENGTH] = {};
};

#endif
