// A small program of one page for whole runs in the simulator; says on standard output which of its callbacks ran.
// "pages home" has a language button and a button that arms the lock; "pages picker" stands in for the language picker.
#include <ostrel.h>

#include <cstdio>
#include <cstring>

namespace {

// On the heap for good: a page that is destroyed when the process exits would draw once more.
Screen* page = nullptr;
bool isOver = false;
const char* role = "";
int counted = 0;

void tell(const char* what) {
    printf("%s: %s\n", role, what);
    fflush(stdout);
}

void count() {
    printf("%s: counted %d\n", role, ++counted);
    fflush(stdout);
}

void leave() {
    tell("back");
    isOver = true;
}

void arm() {
    Memory settings;
    settings.saveSetting("ScreenLock", "1");
    settings.saveSetting("PIN", "2580");
    settings.saveSettingRtdev("ScreenTimeout", "1");
    page->draw(); // which reads the time-out
    cntEn = 1;
    tell("armed");
}

void greet() {
    cntEn = 0;
    page->draw();
    tell("unlocked");
}

Widget* button(int y, const wchar_t* text, void (*callback)()) {
    auto* const widget = new Widget(wType.kind0, 10, y, 0, 0, 0, 300, 42, 20.0F, 1, text);
    widget->record.password = 0;
    widget->record.touchable = 1;
    widget->callback = callback;
    return widget;
}

void preparePage(bool isHome) {
    page = new Screen(isHome ? L"Home" : L"Language");
    page->onBack = leave;
    page->showExit = 0;
    page->showLanguage = isHome ? 1 : 0;
    Widget* const first = button(50, isHome ? L"Count" : L"English", count);
    Widget* const second = button(100, isHome ? L"Lock soon" : L"Ελληνικά", isHome ? arm : count);
    first->prev = nullptr;
    first->next = second;
    second->prev = first;
    second->next = nullptr;
    page->widgets = first;
}

} // namespace

int main(int argc, char** argv) {
    role = argc > 1 ? argv[1] : "home";
    setLockHandler(greet);
    preparePage(strcmp(role, "home") == 0);
    page->draw();
    while (!isOver && !panelClosed()) {
        int x = 0;
        int y = 0;
        if (waitForTouch(&x, &y))
            page->getTouch(x, y);
    }
    lcd_clear(0);
    return 0;
}
