#include "pages.h"

#include <ostrel.h>

namespace {

constexpr int BLACK = 0x0000;
constexpr int WHITE = 0xFFFF;
constexpr int LIGHT_BLUE = 0x8E9D;
constexpr int RED = 0xFA6A;

// The constructor's order: kind, x, y, two colours (0, 0: the theme's), selected, width, height, font size, scale,
// text. Everything stands in static storage: programs may end at any touch, and zeros are the right start for what a
// constructor leaves alone.
Widget tabs[] = {
    {wType.kind6, 8, 40, 0, 0, 1, 76, 36, 18, 1, L"Buttons"},
    {wType.kind6, 84, 40, 0, 0, 0, 76, 36, 18, 1, L"Choices"},
    {wType.kind6, 160, 40, 0, 0, 0, 76, 36, 18, 1, L"Fields"},
    {wType.kind6, 236, 40, 0, 0, 0, 76, 36, 18, 1, L"Texts"},
};

enum { COUNT, LOCKED, ROW, RESET };
Widget buttons[] = {
    {wType.kind0, 8, 84, 0, 0, 0, 149, 37, 20, 1, L"Count"},
    {wType.kind0, 163, 84, 0, 0, 0, 149, 37, 20, 1, L"Disabled"},
    {wType.kind1, 8, 127, 0, 0, 0, 304, 37, 20, 1, L"More about this panel"},
    {wType.kind9, 8, 170, 0, 0, 0, 304, 37, 20, 1, L"Reset the counter"},
};

enum { SLOW, NORMAL, FAST, WIFI, GUESTS, REMEMBER };
Widget choices[] = {
    {wType.kind3, 8, 84, 0, 0, 0, 149, 37, 20, 1, L"Slow"},
    {wType.kind3, 8, 127, 0, 0, 1, 149, 37, 20, 1, L"Normal"},
    {wType.kind3, 8, 170, 0, 0, 0, 149, 37, 20, 1, L"Fast"},
    {wType.kind4, 163, 84, 0, 0, 1, 149, 37, 20, 1, L"Wi-Fi"},
    {wType.kind4, 163, 127, 0, 0, 0, 149, 37, 20, 1, L"Guests"},
    {wType.kind5, 163, 170, 0, 0, 1, 149, 37, 20, 1, L"Remember"},
};

enum { NAME_CAPTION, NAME, PASSWORD_CAPTION, PASSWORD, SHOW };
Widget fields[] = {
    {wType.kind7, 8, 84, 0, 0, 0, 96, 37, 20, 1, L"Name"},
    {wType.kind2, 108, 84, 0, 0, 0, 204, 37, 20, 1, L"Living room"},
    {wType.kind7, 8, 127, 0, 0, 0, 96, 37, 20, 1, L"Password"},
    {wType.kind2, 108, 127, 0, 0, 0, 204, 37, 20, 1, L"correct horse"},
    {wType.kind4, 8, 170, 0, 0, 0, 304, 37, 20, 1, L"Show the password"},
};

// Text items: x, y, colour, two numbers that change nothing, font size, centred, width, text.
Widget texts[] = {
    {10, 86, WHITE, 1, 0, 17, 0, 300, L"Size 17, from the left"},
    {10, 115, LIGHT_BLUE, 1, 0, 20, 1, 300, L"Size 20, centred"},
    {10, 145, WHITE, 1, 0, 20, 1, 300, L"åäö ß ñ ç · Ελληνικά · Русский"},
    {10, 175, RED, 1, 0, 24, 1, 300, L"Size 24 in another colour"},
};

// What the last touch did.
Widget result(wType.kind7, 8, 212, 0, 0, 0, 304, 26, 17, 1, L"");

template<int COUNT_OF_WIDGETS>
Widget* linked(Widget (&widgets)[COUNT_OF_WIDGETS]) {
    for (int i = 0; i + 1 < COUNT_OF_WIDGETS; ++i) {
        widgets[i].next = &widgets[i + 1];
        widgets[i + 1].prev = &widgets[i];
    }
    return &widgets[0];
}

struct Page {
    Widget* widgets;
    const wchar_t* greeting; // what the bottom line says first
};
enum { PAGES = 4 };
Page pages[PAGES];
int current = 0;
int counted = 0;

void say(const wchar_t* text) {
    result.setText(text);
}

template<int PAGE>
void showPage() {
    current = PAGE;
    drawPage();
}

void count() {
    wchar_t text[WIDGET_TEXT_LENGTH];
    aswprintf(text, WIDGET_TEXT_LENGTH - 1, L"Counted to %d.", ++counted);
    say(text);
}

void resetCounter() {
    counted = 0;
    say(L"The counter starts again.");
}

void tellOfPanel() {
    say(L"320 × 240 pixels, 65,536 colours.");
}

void tellSpeed() {
    for (int choice = SLOW; choice <= FAST; ++choice) {
        if (choices[choice].record.selected != 0) {
            wchar_t text[WIDGET_TEXT_LENGTH];
            aswprintf(text, WIDGET_TEXT_LENGTH - 1, L"Speed: %ls", choices[choice].record.text);
            say(text);
        }
    }
}

void tellWifi() {
    say(choices[WIFI].record.selected != 0 ? L"Wi-Fi is on." : L"Wi-Fi is off.");
}

void tellGuests() {
    say(choices[GUESTS].record.selected != 0 ? L"Guests may come in." : L"Guests stay outside.");
}

// A check mark row is a button to a touch: whether it is checked is the program's to keep.
void toggleRemember() {
    static bool remembers = true;
    remembers = !remembers;
    choices[REMEMBER].setSelected(remembers ? 1 : 0);
    choices[REMEMBER].draw();
    say(remembers ? L"The choice is remembered." : L"The choice is forgotten.");
}

void tellField() {
    say(L"A touch would open the keyboard here.");
}

void toggleShow() {
    const bool shows = fields[SHOW].record.selected != 0;
    setShowPasswords(shows);
    fields[PASSWORD].draw();
    say(shows ? L"The password is shown." : L"The password is hidden.");
}

void nothing() {}

bool offer(Widget* widget, int x, int y) {
    while (widget != nullptr && widget->checkTouch(x, y) == 0)
        widget = widget->next;
    return widget != nullptr;
}

} // namespace

void preparePages() {
    pages[0] = {linked(buttons), L"Touch a button."};
    pages[1] = {linked(choices), L"One speed, and as many switches as you like."};
    pages[2] = {linked(fields), L"The switch shows what the dots stand for."};
    pages[3] = {linked(texts), L"Texts take no touches."};
    linked(tabs);

    tabs[0].callback = showPage<0>;
    tabs[1].callback = showPage<1>;
    tabs[2].callback = showPage<2>;
    tabs[3].callback = showPage<3>;

    buttons[COUNT].callback = count;
    buttons[LOCKED].callback = nothing;
    buttons[LOCKED].record.touchable = -1;
    buttons[ROW].callback = tellOfPanel;
    buttons[RESET].callback = resetCounter;

    for (int choice = SLOW; choice <= FAST; ++choice)
        choices[choice].callback = tellSpeed;
    choices[WIFI].callback = tellWifi;
    choices[GUESTS].callback = tellGuests;
    choices[REMEMBER].callback = toggleRemember;

    fields[NAME].callback = tellField;
    fields[PASSWORD].callback = tellField;
    fields[PASSWORD].isPassword(1);
    fields[SHOW].callback = toggleShow;

    for (Widget& text : texts)
        text.callback = nothing;
    result.callback = nothing;
}

void drawPage() {
    lcd_clear(BLACK);
    drawFontBigWhiteString(L"Gallery", 10, 8);
    for (int i = 0; i < PAGES; ++i) {
        tabs[i].setSelected(i == current ? 1 : 0);
        tabs[i].draw();
    }
    for (Widget* widget = pages[current].widgets; widget != nullptr; widget = widget->next)
        widget->draw();
    say(pages[current].greeting);
}

void touchPage(int x, int y) {
    if (!offer(tabs, x, y))
        offer(pages[current].widgets, x, y);
}
