// The toolkit's surroundings for millions of steps: a display library that only counts, a pen that follows the step's
// stroke, settings that are variables, sleeps that pass at once. The dispatcher's receivers are counted on their way.
#ifndef OSTREL_TESTS_UNIT_LOCK_MODEL_WORLD_H
#define OSTREL_TESTS_UNIT_LOCK_MODEL_WORLD_H

#include "tests/unit/lock_model/model.h"

struct World {
    // What the pen says next; then it taps the keyboard's back button and lifts, over and over, so that nothing that
    // waits for a tap, for its end or for the end of an entry waits for ever.
    std::vector<Point> pen;
    size_t penRead = 0;

    // Settings.
    std::string screenLock;
    std::string pin;
    std::string timeout;

    // How often each was offered a touch since the last step.
    int padTouches = 0;
    int keyboardTouches = 0;
    int widgetOffers = 0;
};

World& world();

#endif
