// The first page: a row for each of the others, and the exit button.
#include "pages.h"

namespace {

// The constructor's order: kind, x, y, two colours (0, 0: the theme's), selected, width, height, font size, scale,
// text. What follows a tab stands at the right end. Widgets stand in static storage, whose zeros are the right start
// for what a constructor leaves alone, and in front of their page, so that they last longer.
Widget rows[] = {
    {wType.kind1, 8, 48, 0, 0, 0, 304, 34, 20, 1, L"Buttons"},
    {wType.kind1, 8, 86, 0, 0, 0, 304, 34, 20, 1, L"Choices and switches"},
    {wType.kind1, 8, 124, 0, 0, 0, 304, 34, 20, 1, L"Fields and keyboard"},
    {wType.kind1, 8, 162, 0, 0, 0, 304, 34, 20, 1, L"Texts"},
    {wType.kind1, 8, 200, 0, 0, 0, 304, 34, 20, 1, L"Messages"},
};
Screen page(L"Gallery");

} // namespace

void prepareHome() {
    page.widgets = linked(rows);
    page.showBack = 0;
    page.keyboard.returnHandler = doNothing; // the exit button ends the process, and that ends every page's keyboard
    rows[0].callback = showButtons;
    rows[1].callback = showChoices;
    rows[2].callback = showFields;
    rows[3].callback = showTexts;
    rows[4].callback = showMessages;
}

void showHome() {
    showPage(page);
}
