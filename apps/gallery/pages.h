// The gallery's pages. Each is a list of widgets, and a line at the bottom says what the last touch did.
#ifndef OSTREL_APPS_GALLERY_PAGES_H
#define OSTREL_APPS_GALLERY_PAGES_H

// Links the widgets and gives them their callbacks. Call it once, before anything else here.
void preparePages();

// Clears the panel and draws the page that was shown last, the first one at the start.
void drawPage();

// Offers a touch to the tabs and to the page's widgets.
void touchPage(int x, int y);

#endif
