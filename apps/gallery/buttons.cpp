// Push buttons, a disabled one, a list row and a prominent button.
#include "pages.h"

namespace {

enum { COUNT, DISABLED, ROW, RESET, RESULT };
Widget widgets[] = {
    {wType.kind0, 8, 48, 0, 0, 0, 149, 44, 20, 1, L"Count"},
    {wType.kind0, 163, 48, 0, 0, 0, 149, 44, 20, 1, L"Disabled"},
    {wType.kind1, 8, 100, 0, 0, 0, 304, 44, 20, 1, L"About this panel"},
    {wType.kind9, 8, 152, 0, 0, 0, 304, 44, 20, 1, L"Reset the counter"},
    {wType.kind7, 8, 206, 0, 0, 0, 304, 26, 17, 1, L"Touch a button."},
};
Screen page(L"Buttons");
int counted = 0;

void count() {
    wchar_t text[WIDGET_TEXT_LENGTH];
    aswprintf(text, WIDGET_TEXT_LENGTH - 1, L"Counted to %d.", ++counted);
    widgets[RESULT].setText(text);
}

void resetCounter() {
    counted = 0;
    widgets[RESULT].setText(L"The counter starts again.");
}

void tellOfPanel() {
    widgets[RESULT].setText(L"320 × 240 pixels, 65,536 colours.");
}

} // namespace

void prepareButtons() {
    preparePage(page, linked(widgets));
    widgets[COUNT].callback = count;
    widgets[DISABLED].record.touchable = -1;
    widgets[ROW].callback = tellOfPanel;
    widgets[RESET].callback = resetCounter;
}

void showButtons() {
    showPage(page);
}
