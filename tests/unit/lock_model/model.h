// What a person at the router may expect of the lock, written down a second time and without a line of the toolkit:
// who receives a touch, when the panel goes dark, what ends the lock.
#ifndef OSTREL_TESTS_UNIT_LOCK_MODEL_MODEL_H
#define OSTREL_TESTS_UNIT_LOCK_MODEL_MODEL_H

#include <cstring>
#include <string>
#include <vector>

struct Point {
    int x, y;
};

enum class Receiver { Nobody, Pad, Keyboard, Widgets, Header };

class LockModel {
  public:
    // What the user has chosen.
    bool armed = false;
    long timeout = 0; // as stored; the page takes it over when it is drawn
    bool padWanted = false;
    std::string pin;

    // What is so now.
    bool dark = false;
    bool pad = false;
    int toSwallow = 0;
    long idleTicks = 0;
    bool entry = false;
    int unlocks = 0;
    int typed = 0;

    void redraw() {
        pad = false;
        idleTicks = 0;
        timeoutOfPage = timeout;
    }

    void tick() {
        if (!armed)
            return;
        if (!dark && idleTicks >= 36 * timeoutOfPage) {
            dark = true;
            if (padWanted) {
                pad = true;
                typed = 0;
            }
        } else if (!dark && !pad) {
            ++idleTicks;
        }
    }

    Receiver touch(Point at) {
        if (dark) {
            dark = false;
            idleTicks = 0;
            toSwallow = 2;
            return Receiver::Nobody;
        }
        if (toSwallow > 0) {
            --toSwallow;
            return Receiver::Nobody;
        }
        if (pad)
            return Receiver::Pad;
        idleTicks = 0;
        if (entry)
            return Receiver::Keyboard;
        return at.y > 40 ? Receiver::Widgets : Receiver::Header;
    }

    // A stroke on the pad: where it began, then what the pen says until it lifts.
    void strokeOnPad(const std::vector<Point>& stroke) {
        static const struct {
            char label;
            int left, top, right, bottom;
        } keys[] = {{'1', 3, 94, 78, 139},     {'2', 80, 94, 155, 139},   {'3', 157, 94, 232, 139},
                    {'4', 3, 141, 78, 186},    {'5', 80, 141, 155, 186},  {'6', 157, 141, 232, 186},
                    {'7', 3, 188, 78, 233},    {'8', 80, 188, 155, 233},  {'9', 157, 188, 232, 233},
                    {'D', 234, 188, 314, 233}, {'0', 234, 141, 314, 186}, {'x', 234, 94, 314, 139}};
        size_t at = 0;
        for (const auto& key : keys) {
            const size_t began = at;
            while (at < stroke.size() && stroke[at].x > key.left && stroke[at].x < key.right &&
                   stroke[at].y > key.top && stroke[at].y < key.bottom)
                ++at;
            if (at > began)
                press(key.label);
        }
        if (typed == 4 && entered() == pin) {
            unlock();
            memset(digits, 0, 3);
        }
    }

  private:
    void press(char label) {
        if (label == 'D') {
            if (entered() == pin)
                unlock();
        } else if (label == 'x') {
            typed = typed == 0 ? 0 : typed - 1;
            digits[typed] = ' ';
        } else if (typed < 4) {
            digits[typed++] = label;
        }
    }

    // Up to the first empty place: a digit typed in an earlier entry still stands behind those of this one.
    std::string entered() const { return std::string(digits, strnlen(digits, 4)); }

    void unlock() {
        ++unlocks;
        pad = false;
    }

    char digits[4] = {};
    long timeoutOfPage = 0;
};

#endif
