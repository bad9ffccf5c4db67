// The page of entries: a row for each kind of text that the keyboard edits, with what is stored now.
#ifndef OSTREL_APPS_KEYBOARD_TOUR_ENTRIES_H
#define OSTREL_APPS_KEYBOARD_TOUR_ENTRIES_H

#include <ostrel.h>

// Links the rows to the page. `onMessages` is called by the row that leads to the messages.
void prepareEntries(void (*onMessages)());

// Reads what the rows show and draws the page.
void drawEntries();

// The page, for its touches.
Screen& entriesPage();

#endif
