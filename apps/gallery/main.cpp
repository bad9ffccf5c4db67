// Every kind of widget, message and entry on pages of their own. Reads from here to home.cpp as a first example.
#include "pages.h"

#include <ostrel.h>

int main() {
    preparePages();
    goHome();
    while (!panelClosed()) {
        int x = 0;
        int y = 0;
        if (waitForTouch(&x, &y))
            touchPage(x, y);
    }
    return 0;
}
