// The page of message boxes: a button for each type, and one for each with a progress bar.
#ifndef OSTREL_APPS_KEYBOARD_TOUR_MESSAGES_H
#define OSTREL_APPS_KEYBOARD_TOUR_MESSAGES_H

#include <ostrel.h>

// Links the buttons to the page. `onBack` is called by the page's back button.
void prepareMessages(void (*onBack)());

void drawMessages();

// The page, for its touches.
Screen& messagesPage();

#endif
