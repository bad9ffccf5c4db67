// keyboard-tour: edits settings and texts with every layout of the on-screen keyboard, checks them, shows what was
// stored, and opens a message box of every type.
#include "entries.h"
#include "messages.h"

namespace {

Screen* current = nullptr;

void showEntries() {
    current = &entriesPage();
    drawEntries();
}

void showMessages() {
    current = &messagesPage();
    drawMessages();
}

// After the PIN pad. It may have come over an entry that nobody has touched yet: that one is cancelled, which draws the
// page.
void returnFromPinPad() {
    if (current->keyboard.active != 0)
        current->keyboard.keyboardBack_onTouch();
    else if (current == &messagesPage())
        showMessages();
    else
        showEntries();
}

} // namespace

int main() {
    prepareEntries(showMessages);
    prepareMessages(showEntries);
    setLockHandler(returnFromPinPad);
    showEntries();
    cntEn = 1; // the panel goes dark after the seconds that the second row edits
    while (!panelClosed()) {
        int x = 0;
        int y = 0;
        if (waitForTouch(&x, &y))
            current->getTouch(x, y);
    }
    return 0;
}
