#include "pages.h"

#include "confirm.h"
#include "entry.h"

#include <iterator>

namespace {

const Page* const PAGES[] = {
    &homePage, &confirmPage, &wifiPage, &networkPage, &screenPage, &pinPage, &backupPage, &aboutPage, &restartPage,
};

const Page* shown = nullptr;
const Page* leavingFor = nullptr;

void leaveForGood() {
    showPage(*leavingFor);
}

// Drafts are worth a question.
void leaveFor(const Page& page) {
    static constexpr Question DISCARD{"common_unsaved",     "common_discard",    2,
                                      "common_discard_yes", "common_discard_no", true};
    leavingFor = &page;
    if (shown->isChanged != nullptr && shown->isChanged())
        ask(DISCARD, leaveForGood);
    else
        leaveForGood();
}

void leaveBack() {
    leaveFor(shown->back != nullptr ? *shown->back : homePage);
}

void leaveHome() {
    leaveFor(homePage);
}

} // namespace

void preparePages() {
    for (const Page* const page : PAGES) {
        page->prepare();
        page->retext();
    }
}

void closePages() {
    for (const Page* const page : PAGES)
        page->screen->keyboard.returnHandler = doNothing;
}

void preparePage(Screen& screen, Widget* widgets) {
    screen.widgets = widgets;
    screen.showExit = 0; // home stands in its place
    screen.showHome = 1;
    screen.onHome = leaveHome;
    screen.onBack = leaveBack;
    screen.keyboard.returnHandler = endEntry;
}

void showPage(const Page& page) {
    if (page.open != nullptr)
        page.open();
    returnTo(page);
}

void goHome() {
    showPage(homePage);
}

void returnTo(const Page& page) {
    shown = &page;
    redrawPage();
}

void redrawPage() {
    if (shown->draw != nullptr)
        shown->draw();
    else
        shown->screen->draw();
}

const Page& shownPage() {
    return *shown;
}

std::vector<const Page*> allPages() {
    return {std::begin(PAGES), std::end(PAGES)};
}

void touchPage(int x, int y) {
    shown->screen->getTouch(x, y);
}

void unlockPage() {
    Keyboard& keyboard = shown->screen->keyboard;
    if (keyboard.active != 0)
        keyboard.keyboardBack_onTouch();
    else
        redrawPage();
}

void changeLanguage() {
    lang.refresh();
    for (const Page* const page : PAGES)
        page->retext();
    redrawPage();
}
