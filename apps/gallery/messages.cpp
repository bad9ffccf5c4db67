// A message box of every kind, and the progress bar. A message draws over the page, so closing it draws the page again.
#include "pages.h"

namespace {

enum { NOTE, WARNING, BIG_NOTE, BIG_WARNING, PROGRESS, HINT };
Widget widgets[] = {
    {wType.kind0, 8, 48, 0, 0, 0, 149, 44, 20, 1, L"Note"},
    {wType.kind0, 163, 48, 0, 0, 0, 149, 44, 20, 1, L"Warning"},
    {wType.kind0, 8, 100, 0, 0, 0, 149, 44, 20, 1, L"Large note"},
    {wType.kind0, 163, 100, 0, 0, 0, 149, 44, 20, 1, L"Large warning"},
    {wType.kind9, 8, 152, 0, 0, 0, 304, 44, 20, 1, L"Restart, with progress"},
    {wType.kind7, 8, 206, 0, 0, 0, 304, 26, 17, 1, L"A tap anywhere closes a message."},
};
Screen page(L"Messages");

enum { BOXED_NOTE = 1, BOXED_WARNING = 2, FULL_NOTE = 3, FULL_WARNING = 4, UNTIL_TAPPED = -1, PROGRESS_SECONDS = 5 };

void showNote() {
    Modal message;
    message.setLine1(L"Your settings");
    message.setLine2(L"are saved");
    message.setLine3(L"and in use.");
    message.onClose = redrawPage;
    message.draw(BOXED_NOTE, UNTIL_TAPPED);
}

void showWarning() {
    Modal message;
    message.setLine1(L"No cable in");
    message.setLine2(L"the network");
    message.setLine3(L"socket.");
    message.onClose = redrawPage;
    message.draw(BOXED_WARNING, UNTIL_TAPPED);
}

void showLargeNote() {
    Modal message;
    message.setLine1(L"There is a new version.");
    message.setLine3(L"It is installed tonight at three.");
    message.setLine4(L"Nothing needs to be done.");
    message.onClose = redrawPage;
    message.draw(FULL_NOTE, UNTIL_TAPPED);
}

void showLargeWarning() {
    Modal message;
    message.setLine1(L"The router is too hot.");
    message.setLine3(L"Move it out of the sun,");
    message.setLine4(L"or switch it off for a while.");
    message.onClose = redrawPage;
    message.draw(FULL_WARNING, UNTIL_TAPPED);
}

void showProgress() {
    Modal message;
    message.setLine1(L"Restarting");
    message.setLine2(L"This takes some seconds.");
    message.drawTimed(FULL_NOTE);
    message.time(PROGRESS_SECONDS);
    redrawPage();
}

} // namespace

void prepareMessages() {
    preparePage(page, linked(widgets));
    widgets[NOTE].callback = showNote;
    widgets[WARNING].callback = showWarning;
    widgets[BIG_NOTE].callback = showLargeNote;
    widgets[BIG_WARNING].callback = showLargeWarning;
    widgets[PROGRESS].callback = showProgress;
}

void showMessages() {
    showPage(page);
}
