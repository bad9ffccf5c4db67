// The messages that an entry shows, in the language that the user chose.
#ifndef OSTREL_KEYBOARD_MESSAGES_H
#define OSTREL_KEYBOARD_MESSAGES_H

#include "gui/modal.h"
#include "keyboard/keyboard.h"

namespace ostrel {

// Keys of the three lines in the language file's section "modal". Their names tell of limits that were once fixed; the
// number shown is the keyboard's own.
struct Message {
    const char* line1;
    const char* line2;
    const char* line3;
};
constexpr Message TOO_LONG = {"less_than_6_l1", "less_than_6_l2", "less_than_6_l3"};
constexpr Message TOO_SHORT = {"more_than_2_l1", "more_than_2_l2", "more_than_2_l3"};
constexpr Message NO_ADDRESS = {"valid_ip_l1", "valid_ip_l2", "valid_ip_l3"};
constexpr Message SAVING = {"savingl1", "savingl2", "savingl3"};

// Give `modal` the lines of `message`, the second one with a number behind it in the form that has one, and nothing to
// do when it closes. A text that the language file does not have is shown as its lookup gives it; without a file the
// lines are empty.
void setLines(Modal& modal, const Message& message);
void setLines(Keyboard& keyboard, Modal& modal, const Message& message, int number);

} // namespace ostrel

#endif
