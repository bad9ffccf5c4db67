// What the pages share: which one is showing, how one leads to another, and their table.
//
// A page is a file with one Page, named in the list at the end here and in the table PAGES in pages.cpp; one that the
// home page leads to also has a row in home.cpp. Widgets stand in front of their Screen, both in static storage.
#ifndef OSTREL_APPS_SETTINGS_PAGES_H
#define OSTREL_APPS_SETTINGS_PAGES_H

#include <ostrel.h>

#include <vector>

struct Page {
    Screen* screen;

    // Called once, before anything is shown: preparePage, callbacks.
    void (*prepare)();

    // Gives title and widgets their texts; called before the first drawing and after each change of the language. Must
    // not draw.
    void (*retext)();

    // Called each time somebody comes to the page, before it is drawn: reads the settings. Null: nothing to read.
    void (*open)();

    // Draws the page; null: Screen::draw alone.
    void (*draw)();

    // Whether something would be lost by leaving the page. Then back and home ask first. Null: never.
    bool (*isChanged)();

    // Where back leads; null: home.
    const Page* back;
};

// Prepares all pages and gives them their texts. Call it once, before anything else here. closePages is the last call:
// from then on nothing draws.
void preparePages();
void closePages();

// A page below the home page: header buttons, keyboard, widgets. For `prepare`.
void preparePage(Screen& screen, Widget* widgets);

// Comes to a page, with what is stored.
void showPage(const Page& page);
void goHome();

// Comes back to a page that was left for a question, as it was.
void returnTo(const Page& page);

// Draws the page that is showing again, when something else had the panel.
void redrawPage();

const Page& shownPage();

void touchPage(int x, int y);

// All pages, the question included: for tests that walk them.
std::vector<const Page*> allPages();

// After the PIN pad. An open entry is cancelled: whoever knows the PIN need not be the one who typed half a password.
void unlockPage();

// After the language picker.
void changeLanguage();

// Links the widgets of an array in its order, which is also the order in which touches are offered.
template<int COUNT>
Widget* linked(Widget (&widgets)[COUNT]) {
    for (int i = 0; i + 1 < COUNT; ++i) {
        widgets[i].next = &widgets[i + 1];
        widgets[i + 1].prev = &widgets[i];
    }
    return widgets;
}

extern const Page homePage;
extern const Page confirmPage;
extern const Page wifiPage;
extern const Page networkPage;
extern const Page screenPage;
extern const Page pinPage;
extern const Page backupPage;
extern const Page aboutPage;
extern const Page restartPage;

#endif
