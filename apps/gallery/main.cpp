// Every kind of widget on plain Widgets, with a touch loop of its own. Reads from top to bottom as a first example.
#include "pages.h"

#include <ostrel.h>

int main() {
    libOstrelGuiInit();
    preparePages();
    drawPage();
    while (!panelClosed()) {
        int x = 0;
        int y = 0;
        if (waitForTouch(&x, &y))
            touchPage(x, y);
    }
    return 0;
}
