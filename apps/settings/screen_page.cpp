// The screen: when it goes dark, whether a PIN lights it again, and the way to another PIN.
#include "screen_page.h"

#include "idle.h"
#include "notice.h"
#include "pages.h"
#include "pin_change.h"
#include "store.h"
#include "texts.h"

#include <iterator>

namespace {

struct Timeout {
    const char* key;
    const char* seconds;
};
constexpr Timeout TIMEOUTS[] = {
    {"screen_30_s", "30"},    {"screen_1_min", "60"},    {"screen_5_min", "300"},
    {"screen_10_min", "600"}, {"screen_30_min", "1800"}, {"screen_never", NEVER_SECONDS},
};
constexpr int TIMEOUT_COUNT = static_cast<int>(std::size(TIMEOUTS));

enum { OFF_AFTER, TIMES, LOCK = TIMES + TIMEOUT_COUNT, CHANGE_PIN, SAVE };
Widget widgets[] = {
    {wType.kind7, 18, 45, 0, 0, 0, 294, 20, 17, 1, L""},   {wType.kind3, 8, 67, 0, 0, 0, 100, 36, 17, 1, L""},
    {wType.kind3, 110, 67, 0, 0, 0, 100, 36, 17, 1, L""},  {wType.kind3, 212, 67, 0, 0, 0, 100, 36, 17, 1, L""},
    {wType.kind3, 8, 105, 0, 0, 0, 100, 36, 17, 1, L""},   {wType.kind3, 110, 105, 0, 0, 0, 100, 36, 17, 1, L""},
    {wType.kind3, 212, 105, 0, 0, 0, 100, 36, 17, 1, L""}, {wType.kind4, 8, 149, 0, 0, 0, 304, 40, 20, 1, L""},
    {wType.kind1, 8, 195, 0, 0, 0, 177, 40, 20, 1, L""},   {wType.kind0, 191, 195, 0, 0, 0, 121, 40, 20, 1, L""},
};
static_assert(std::size(widgets) == SAVE + 1, "one widget a name");
Screen screen(L"");

Batch batch;

bool hasPin() {
    return isPin(readSetting(setting::PIN));
}

// The drafts into the widgets. A timeout that another program has chosen may be none of these.
void showDrafts() {
    const std::string& seconds = batch.get(setting::SCREEN_TIMEOUT);
    for (int i = 0; i < TIMEOUT_COUNT; ++i)
        widgets[TIMES + i].setSelected(seconds == TIMEOUTS[i].seconds ? 1 : 0);
    widgets[LOCK].setSelected(batch.isOn(setting::SCREEN_LOCK) ? 1 : 0);
    label(widgets[CHANGE_PIN], hasPin() ? "screen_change_pin" : "screen_choose_pin");
    widgets[SAVE].record.touchable = batch.changed() ? 0 : -1;
}

void draw() {
    showDrafts();
    screen.draw();
}

// After a touch that has drawn itself.
void drawSave() {
    showDrafts();
    widgets[SAVE].draw();
}

template<int CHOICE>
void chooseTimeout() {
    batch.set(setting::SCREEN_TIMEOUT, TIMEOUTS[CHOICE].seconds);
    drawSave();
}

// Nobody could open the lock again otherwise.
const char* wrongWithLock() {
    if (!hasPin())
        return "screen_no_pin";
    return lockHandler == nullptr ? "screen_no_lock" : nullptr;
}

void toggleLock() {
    const bool isOn = widgets[LOCK].record.selected != 0;
    const char* const wrong = isOn ? wrongWithLock() : nullptr;
    if (wrong == nullptr) {
        batch.setOn(setting::SCREEN_LOCK, isOn);
        drawSave();
    } else {
        widgets[LOCK].setSelected(0); // it stays in sight beside the message
        widgets[LOCK].draw();
        refuse(wrong);
        redrawPage();
    }
}

// The lock begins when the screen goes dark. Whoever switches it on should not believe in one that never does.
bool isLockInVain() {
    return batch.isOn(setting::SCREEN_LOCK) && !darkens(batch.get(setting::SCREEN_TIMEOUT));
}

void save() {
    if (isLockInVain())
        refuse("screen_lock_never");
    else if (!batch.store())
        refuse("common_failed");
    followTimeout();
    redrawPage();
}

void prepare() {
    constexpr void (*CHOOSE[])() = {chooseTimeout<0>, chooseTimeout<1>, chooseTimeout<2>,
                                    chooseTimeout<3>, chooseTimeout<4>, chooseTimeout<5>};
    static_assert(std::size(CHOOSE) == std::size(TIMEOUTS), "one callback a choice");
    preparePage(screen, linked(widgets));
    for (int i = 0; i < TIMEOUT_COUNT; ++i)
        widgets[TIMES + i].callback = CHOOSE[i];
    widgets[LOCK].callback = toggleLock;
    widgets[CHANGE_PIN].callback = [] { showPage(pinPage); };
    widgets[SAVE].callback = save;
}

void retext() {
    entitle(screen, "screen_title");
    label(widgets[OFF_AFTER], "screen_off_after");
    for (int i = 0; i < TIMEOUT_COUNT; ++i)
        label(widgets[TIMES + i], TIMEOUTS[i].key);
    label(widgets[LOCK], "screen_lock");
    label(widgets[SAVE], "common_save");
}

void open() {
    batch.discard();
}

} // namespace

const Page screenPage{&screen, prepare, retext, open, draw, screenPageIsChanged, nullptr};

void returnToScreenPage() {
    returnTo(screenPage);
}

bool screenPageIsChanged() {
    return batch.changed();
}
