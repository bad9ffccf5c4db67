// What the gallery's pages share: which one is showing, and how widgets become a page's list.
#ifndef OSTREL_APPS_GALLERY_PAGES_H
#define OSTREL_APPS_GALLERY_PAGES_H

#include <ostrel.h>

// Prepares all pages. Call it once, before anything else here.
void preparePages();

// Draws a page and hands it all touches from now on.
void showPage(Screen& page);

// Draws the page that is showing again, when something else had the panel.
void redrawPage();

void goHome();
void touchPage(int x, int y);

// A page below the home page: back and home both lead there.
void preparePage(Screen& page, Widget* widgets);

// Links the widgets of an array in its order, which is also the order in which touches are offered.
template<int COUNT>
Widget* linked(Widget (&widgets)[COUNT]) {
    for (int i = 0; i + 1 < COUNT; ++i) {
        widgets[i].next = &widgets[i + 1];
        widgets[i + 1].prev = &widgets[i];
    }
    return widgets;
}

// One pair a page: its preparation, called by preparePages, and how to come to it.
void prepareHome();
void showHome();
void prepareButtons();
void showButtons();
void prepareChoices();
void showChoices();
void prepareFields();
void showFields();
void prepareTexts();
void showTexts();
void prepareMessages();
void showMessages();

#endif
