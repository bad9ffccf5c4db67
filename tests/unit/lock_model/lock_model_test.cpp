// Millions of random steps of a person, the clock and a program, each compared with the model: who received the touch,
// and every flag of the lock.
#include "gui/modal.h"
#include "gui/screen.h"
#include "lock/inactivity.h"
#include "lock/pin_pad.h"
#include "tests/support/scale.h"
#include "tests/unit/lock_model/world.h"

#include <gtest/gtest.h>
#include <iostream>
#include <random>

namespace {

int widgetCallbacks = 0;
int headerCallbacks = 0;
int entriesEnded = 0;
int unlockCallbacks = 0;
Screen* shown = nullptr;

void redrawShown() {
    shown->draw();
}

class Router {
  public:
    explicit Router(unsigned seed) : random(seed) {
        world() = {};
        widgetCallbacks = headerCallbacks = entriesEnded = unlockCallbacks = 0;
        ScreenTime = blCnt = returnNext = lockPassCnt = 0;
        locked = lockScreen = cntEn = 0;
        memset(lockPass, 0, sizeof lockPass);
        draw_screenLock(); // its keys have a place from the first touch on

        Widget* const list[] = {&button, &toggle, &choice};
        for (int n = 0; n < 3; ++n) {
            list[n]->callback = [] { ++widgetCallbacks; };
            list[n]->record.touchable = 1;
            list[n]->prev = n == 0 ? nullptr : list[n - 1];
            list[n]->next = n == 2 ? nullptr : list[n + 1];
        }
        page.widgets = &button;
        page.showExit = 0;
        page.showHome = 1;
        page.onBack = page.onHome = [] { ++headerCallbacks; };
        page.keyboard.returnHandler = [] {
            ++entriesEnded;
            redrawShown();
        };
        setLockHandler([] {
            ++unlockCallbacks;
            redrawShown();
        });
        shown = &page;
        choosePin();
        chooseTimeout();
        redraw();
    }
    ~Router() {
        page.keyboard.returnHandler = [] {};
    }
    Router(const Router&) = delete;
    Router& operator=(const Router&) = delete;

    // One random step; false when router and model disagree, with what happened.
    bool step() {
        const int chance = below(1000);
        if (chance < 500)
            touch();
        else if (chance < 900)
            ticks();
        else if (chance < 930)
            redraw();
        else if (chance < 950)
            openEntry();
        else if (chance < 960)
            showModal();
        else if (chance < 970)
            cntEn = static_cast<unsigned char>(model.armed = below(4) != 0);
        else if (chance < 980)
            world().screenLock = (model.padWanted = below(4) != 0) ? "1" : "0";
        else if (chance < 990)
            chooseTimeout();
        else
            choosePin();
        return agree();
    }

    std::string last;
    LockModel model;

  private:
    int below(int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); }

    void choosePin() {
        static const char* const pins[] = {"1234", "0000", "1", "", "12", "99999", "12 4"};
        last = "pin";
        world().pin = model.pin = pins[below(7)];
    }

    void chooseTimeout() {
        last = "timeout";
        model.timeout = below(8) - 1;
        world().timeout = std::to_string(model.timeout);
    }

    void redraw() {
        last = "redraw";
        page.draw();
        model.redraw();
    }

    void openEntry() {
        last = "entry";
        page.keyboard.keyboardMode(below(10));
        page.keyboard.drawText("text", result);
        model.entry = true;
    }

    void showModal() {
        last = "modal";
        world().pen.clear();
        world().penRead = 0;
        Modal message;
        message.onClose = doNothing;
        message.draw(below(5), below(3) - 1);
    }

    void ticks() {
        last = "ticks";
        for (int n = 1 + below(60); n > 0; --n) {
            slkHandle();
            model.tick();
        }
    }

    // Often a key of the pad, since four right ones are a long way; often the PIN's next digit.
    Point somewhere() {
        static const Point digits[] = {{270, 160}, {40, 110},  {120, 110}, {190, 110}, {40, 160},
                                       {120, 160}, {190, 160}, {40, 210},  {120, 210}, {190, 210}};
        const auto next = static_cast<size_t>(model.typed);
        const int chance = below(10);
        if (chance < 4 && next < model.pin.size() && model.pin[next] != ' ')
            return digits[model.pin[next] - '0'];
        if (chance < 5)
            return {270, 210}; // Done
        if (chance < 6)
            return {270, 110}; // Del
        return {below(322) - 1, below(242) - 1};
    }

    void touch() {
        const Point at = somewhere();
        last = "touch " + std::to_string(at.x) + ',' + std::to_string(at.y);
        std::vector<Point> stroke{at};
        for (int moves = below(3); moves > 0; --moves)
            stroke.push_back(below(2) != 0 ? at : somewhere());
        stroke.push_back({-1, -1});
        world().pen.assign(stroke.begin() + 1, stroke.end());
        world().penRead = 0;
        world().padTouches = world().keyboardTouches = world().widgetOffers = 0;
        const int widgetsBefore = widgetCallbacks;
        const int headerBefore = headerCallbacks;
        const int endedBefore = entriesEnded;

        const Receiver receiver = model.touch(at);
        page.getTouch(at.x, at.y);

        const bool inHeaderButton = at.y >= 5 && ((at.x >= 10 && at.x < 46) || (at.x >= 50 && at.x < 86));
        expect(world().padTouches == (receiver == Receiver::Pad ? 1 : 0), "pad");
        expect(world().keyboardTouches == (receiver == Receiver::Keyboard ? 1 : 0), "keyboard");
        expect((world().widgetOffers > 0) == (receiver == Receiver::Widgets), "widgets");
        expect(widgetCallbacks == widgetsBefore || receiver == Receiver::Widgets, "widget callback");
        expect(headerCallbacks == headerBefore + (receiver == Receiver::Header && inHeaderButton ? 1 : 0), "header");

        if (receiver == Receiver::Pad) {
            const int unlocksBefore = model.unlocks;
            model.strokeOnPad(stroke);
            if (model.unlocks > unlocksBefore)
                model.redraw(); // the program's handler draws its page
        }
        if (entriesEnded > endedBefore) {
            expect(receiver == Receiver::Keyboard && entriesEnded == endedBefore + 1, "end of entry");
            model.entry = false;
            model.redraw();
        }
    }

    void expect(bool holds, const char* what) {
        if (!holds && wrong.empty())
            wrong = what;
    }

    bool agree() {
        expect(isLocked() == model.dark && locked <= 1, "dark");
        expect(isLockScreen() == model.pad && lockScreen <= 1, "pad flag");
        expect(returnNext == model.toSwallow, "swallowing");
        expect(blCnt == model.idleTicks, "idle count");
        expect((page.keyboard.active != 0) == model.entry, "entry");
        expect(unlockCallbacks == model.unlocks, "unlocks");
        expect(lockPassCnt == model.typed, "typed digits");
        last += wrong.empty() ? "" : ": " + wrong;
        return wrong.empty();
    }

    std::mt19937 random;
    std::string wrong;
    wchar_t result[KEYBOARD_TEXT_LENGTH] = {};
    Widget button{0, 10, 50, 0, 0, 0, 300, 50, 20.0F, 0, L"Button"};
    Widget toggle{4, 10, 110, 0, 0, 0, 300, 50, 20.0F, 0, L"Switch"};
    Widget choice{3, 10, 170, 0, 0, 0, 300, 50, 20.0F, 0, L"Choice"};
    Screen page{L"Page"};
};

TEST(Lock, HoldsOverMillionsOfRandomSteps) {
    const long steps = scaled(5000000) / 10;
    int unlocks = 0;
    for (unsigned seed = 1; seed <= 10; ++seed) {
        Router router(seed);
        for (long n = 0; n < steps; ++n)
            ASSERT_TRUE(router.step()) << "seed " << seed << ", step " << n << ", " << router.last;
        unlocks += router.model.unlocks;
    }
    EXPECT_GT(unlocks, steps / 1000) << "the pad was opened too rarely to say much";
    std::cout << 10 * steps << " steps, " << unlocks << " unlocks\n";
}

} // namespace
