// Text items on three pages that share a row of tabs: each page has tabs of its own, with its own one selected.
#include "pages.h"

namespace {

constexpr int WHITE = 0xFFFF;
constexpr int LIGHT_BLUE = 0x8E9D;
constexpr int RED = 0xFA6A;
constexpr int YELLOW = 0xFF0C;

enum { TABS = 3 };

// Tabs, then text items, which take no touches: x, y, colour, two numbers that change nothing, font size, centred,
// width, text.
Widget sizes[] = {
    {wType.kind6, 8, 48, 0, 0, 1, 101, 36, 18, 1, L"Sizes"},
    {wType.kind6, 109, 48, 0, 0, 0, 102, 36, 18, 1, L"Scripts"},
    {wType.kind6, 211, 48, 0, 0, 0, 101, 36, 18, 1, L"Colours"},
    {10, 98, WHITE, 1, 0, 14, 0, 300, L"14 pixels: the smallest that labels shrink to"},
    {10, 126, WHITE, 1, 0, 17, 0, 300, L"17 pixels: messages"},
    {10, 157, WHITE, 1, 0, 20, 0, 300, L"20 pixels: labels"},
    {10, 192, WHITE, 1, 0, 28, 0, 300, L"28 pixels"},
};
Screen sizesPage(L"Texts");

Widget scripts[] = {
    {wType.kind6, 8, 48, 0, 0, 0, 101, 36, 18, 1, L"Sizes"},
    {wType.kind6, 109, 48, 0, 0, 1, 102, 36, 18, 1, L"Scripts"},
    {wType.kind6, 211, 48, 0, 0, 0, 101, 36, 18, 1, L"Colours"},
    {10, 100, WHITE, 1, 0, 20, 1, 300, L"Grüße, señor Łukasz"},
    {10, 134, WHITE, 1, 0, 20, 1, 300, L"Καλημέρα κόσμε"},
    {10, 168, WHITE, 1, 0, 20, 1, 300, L"Добрий день"},
    {10, 202, WHITE, 1, 0, 20, 1, 300, L"12,50 € · 21 °C · 4 × 4"},
};
Screen scriptsPage(L"Texts");

Widget colours[] = {
    {wType.kind6, 8, 48, 0, 0, 0, 101, 36, 18, 1, L"Sizes"},
    {wType.kind6, 109, 48, 0, 0, 0, 102, 36, 18, 1, L"Scripts"},
    {wType.kind6, 211, 48, 0, 0, 1, 101, 36, 18, 1, L"Colours"},
    {10, 104, LIGHT_BLUE, 1, 0, 24, 1, 300, L"Light blue"},
    {10, 146, RED, 1, 0, 24, 1, 300, L"Red"},
    {10, 188, YELLOW, 1, 0, 24, 1, 300, L"Yellow"},
};
Screen coloursPage(L"Texts");

// A touch leaves a tab unselected, as it does a button.
void showTab(Screen& page, Widget& tab) {
    tab.setSelected(1);
    showPage(page);
}

void showScripts() {
    showTab(scriptsPage, scripts[1]);
}

void showColours() {
    showTab(coloursPage, colours[2]);
}

template<int COUNT>
void prepare(Screen& page, Widget (&widgets)[COUNT]) {
    preparePage(page, linked(widgets));
    void (*const shows[TABS])() = {showTexts, showScripts, showColours};
    for (int tab = 0; tab < TABS; ++tab)
        widgets[tab].callback = shows[tab];
}

} // namespace

void prepareTexts() {
    prepare(sizesPage, sizes);
    prepare(scriptsPage, scripts);
    prepare(coloursPage, colours);
}

void showTexts() {
    showTab(sizesPage, sizes[0]);
}
