#include "entry.h"

#include "pages.h"
#include "texts.h"

#include <cwchar>

namespace {

wchar_t result[KEYBOARD_TEXT_LENGTH];
void (*whenAccepted)(const std::string& text) = nullptr; // null: no entry

} // namespace

void edit(const Entry& entry, const std::string& initial, void (*accepted)(const std::string& text)) {
    Keyboard& keyboard = shownPage().screen->keyboard;
    keyboard.keyboardMode(entry.layout);
    keyboard.minLength = entry.minLength;
    keyboard.maxLength = entry.maxLength;
    keyboard.prefixLength = 0;
    setKeyboardValidationFunction(entry.isRight);
    whenAccepted = accepted;
    keyboard.drawText(initial.c_str(), result);
}

void endEntry() {
    if (whenAccepted == nullptr)
        return; // the process ends, and with it every page's keyboard
    const auto accepted = whenAccepted;
    whenAccepted = nullptr;
    if (std::wcscmp(result, shownPage().screen->keyboard.initialText) != 0)
        accepted(utf8Of(result));
    if (whenAccepted == nullptr)
        redrawPage();
}
