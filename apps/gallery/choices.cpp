// An exclusive choice, two switches and a check mark row.
#include "pages.h"

namespace {

enum { SLOW, NORMAL, FAST, WIFI, GUESTS, REMEMBER, RESULT };
Widget widgets[] = {
    {wType.kind3, 8, 48, 0, 0, 0, 149, 44, 20, 1, L"Slow"},
    {wType.kind3, 8, 100, 0, 0, 1, 149, 44, 20, 1, L"Normal"},
    {wType.kind3, 8, 152, 0, 0, 0, 149, 44, 20, 1, L"Fast"},
    {wType.kind4, 163, 48, 0, 0, 1, 149, 44, 20, 1, L"Wi-Fi"},
    {wType.kind4, 163, 100, 0, 0, 0, 149, 44, 20, 1, L"Guests"},
    {wType.kind5, 163, 152, 0, 0, 1, 149, 44, 20, 1, L"Remember"},
    {wType.kind7, 8, 206, 0, 0, 0, 304, 26, 17, 1, L"One speed, any number of switches."},
};
Screen page(L"Choices");

void say(const wchar_t* text) {
    widgets[RESULT].setText(text);
}

void tellSpeed() {
    for (int choice = SLOW; choice <= FAST; ++choice) {
        if (widgets[choice].record.selected != 0) {
            wchar_t text[WIDGET_TEXT_LENGTH];
            aswprintf(text, WIDGET_TEXT_LENGTH - 1, L"Speed: %ls", widgets[choice].record.text);
            say(text);
        }
    }
}

void tellWifi() {
    say(widgets[WIFI].record.selected != 0 ? L"Wi-Fi is on." : L"Wi-Fi is off.");
}

void tellGuests() {
    say(widgets[GUESTS].record.selected != 0 ? L"Guests may come in." : L"Guests stay outside.");
}

// A check mark row is a button to a touch: whether it is checked is the program's to keep.
void toggleRemember() {
    static bool remembers = true;
    remembers = !remembers;
    widgets[REMEMBER].setSelected(remembers ? 1 : 0);
    widgets[REMEMBER].draw();
    say(remembers ? L"The choice is remembered." : L"The choice is forgotten.");
}

} // namespace

void prepareChoices() {
    preparePage(page, linked(widgets));
    for (int choice = SLOW; choice <= FAST; ++choice)
        widgets[choice].callback = tellSpeed;
    widgets[WIFI].callback = tellWifi;
    widgets[GUESTS].callback = tellGuests;
    widgets[REMEMBER].callback = toggleRemember;
}

void showChoices() {
    showPage(page);
}
