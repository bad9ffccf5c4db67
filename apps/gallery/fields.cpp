// A field and a masked one, both edited as free texts with the page's keyboard, and a switch that shows the password.
#include "pages.h"

#include <cwchar>

namespace {

enum { NAME_CAPTION, NAME, PASSWORD_CAPTION, PASSWORD, SHOW, RESULT };
Widget widgets[] = {
    {wType.kind7, 8, 48, 0, 0, 0, 96, 44, 20, 1, L"Name"},
    {wType.kind2, 108, 48, 0, 0, 0, 204, 44, 20, 1, L"Living room"},
    {wType.kind7, 8, 100, 0, 0, 0, 96, 44, 20, 1, L"Password"},
    {wType.kind2, 108, 100, 0, 0, 0, 204, 44, 20, 1, L"correct horse"},
    {wType.kind4, 8, 152, 0, 0, 0, 304, 44, 20, 1, L"Show the password"},
    {wType.kind7, 8, 206, 0, 0, 0, 304, 26, 17, 1, L"Touch a field to change it."},
};
Screen page(L"Fields");

Widget* edited = nullptr;
wchar_t result[KEYBOARD_TEXT_LENGTH];

// Opens the keyboard on what the field shows. The keyboard's texts are UTF-8 on the way in, wide on the way out.
void edit(Widget& field, int minLength, int maxLength) {
    char initial[KEYBOARD_TEXT_LENGTH] = "";
    wchar_to_utf8(field.record.text, wcslen(field.record.text), initial, sizeof initial - 1, UTF8_DROP_INVALID);
    edited = &field;
    page.keyboard.keyboardMode(KEYBOARD_LETTERS);
    page.keyboard.minLength = minLength;
    page.keyboard.maxLength = maxLength;
    page.keyboard.drawText(initial, result);
}

void editName() {
    edit(widgets[NAME], 1, 16);
}

void editPassword() {
    edit(widgets[PASSWORD], 8, 20);
}

// Shows or hides the password as the switch says.
bool showAsSwitched() {
    const bool shows = widgets[SHOW].record.selected != 0;
    setShowPasswords(shows);
    widgets[PASSWORD].draw();
    return shows;
}

// The keyboard has left the panel: with the result of an entry, or without one when the process ends.
void takeResult() {
    if (edited == nullptr)
        return;
    edited->setText(result);
    edited = nullptr;
    showFields();
}

void toggleShow() {
    const bool shows = showAsSwitched();
    widgets[RESULT].setText(shows ? L"The password is shown." : L"The password is hidden.");
}

} // namespace

void prepareFields() {
    preparePage(page, linked(widgets));
    page.keyboard.returnHandler = takeResult;
    widgets[NAME].callback = editName;
    widgets[PASSWORD].callback = editPassword;
    widgets[PASSWORD].isPassword(1);
    widgets[SHOW].callback = toggleShow;
}

// A page's draw() goes by the user's setting "ShowPass"; the switch counts here.
void showFields() {
    showPage(page);
    showAsSwitched();
}
