// A program as its writer would begin: one page, one button, no knowledge of the source tree.
#include <ostrel.h>

static void save() {}

int main() {
    libOstrelGuiInit();
    lcd_clear(0xFFFF);
    Widget button(wType.kind0, 60, 100, 0, 0, 0, 200, 50, 20.0F, 0, L"Save");
    button.callback = save;
    button.draw();
    return button.getType() == wType.kind0 ? 0 : 1;
}
