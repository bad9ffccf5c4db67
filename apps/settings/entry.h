// Editing a text with the keyboard of the page that is showing.
//
//     constexpr Entry NAME{KEYBOARD_LETTERS, 1, 32, isName};
//
//     void keepName(const std::string& text) {
//         batch.set(setting::WIFI_NAME, text);
//         showValues(); // the new text in its widget; the page is drawn behind it
//     }
//
//     void editName() { edit(NAME, batch.get(setting::WIFI_NAME), keepName); }
#ifndef OSTREL_APPS_SETTINGS_ENTRY_H
#define OSTREL_APPS_SETTINGS_ENTRY_H

#include <string>

struct Entry {
    int layout;    // as Keyboard::keyboardMode takes it
    int minLength; // characters; 0: no limit. The keyboard itself says when there are too few or too many.
    int maxLength;
    bool (*isRight)(wchar_t* text); // null: no check; false refuses the text, after saying why with refuse()
};

// Draws the keyboard with `initial` (UTF-8). `accepted` is called with a changed text that passed its checks, and with
// nothing else: cancelled or unchanged, it is not called. It may begin the next entry or show another page; otherwise
// the page that is showing is drawn again, in every case.
void edit(const Entry& entry, const std::string& initial, void (*accepted)(const std::string& text));

// For pages.cpp. The keyboard has left the panel: the return handler of every page.
void endEntry();

#endif
