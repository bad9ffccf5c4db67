#include "pages.h"

namespace {

Screen* current = nullptr;

} // namespace

void preparePages() {
    prepareHome();
    prepareButtons();
    prepareChoices();
    prepareFields();
    prepareTexts();
    prepareMessages();
}

void preparePage(Screen& page, Widget* widgets) {
    page.widgets = widgets;
    page.showExit = 0; // home stands in its place
    page.showHome = 1;
    page.onHome = goHome;
    page.onBack = goHome;
    page.keyboard.returnHandler = doNothing; // called at the process's end, also where no entry is ever made
}

void showPage(Screen& page) {
    current = &page;
    page.draw();
}

void redrawPage() {
    if (current != nullptr)
        current->draw();
}

void goHome() {
    showHome();
}

void touchPage(int x, int y) {
    if (current != nullptr)
        current->getTouch(x, y);
}
