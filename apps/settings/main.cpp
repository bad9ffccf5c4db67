// settings: the router's home program. What its owner sets up, on pages.
#include "idle.h"
#include "pages.h"

int main() {
    preparePages();
    setLockHandler(unlockPage);
    goHome();
    followTimeout();
    while (!panelClosed()) {
        int x = 0;
        int y = 0;
        if (waitForTouch(&x, &y))
            touchPage(x, y);
    }
    closePages();
    return 0;
}
