// Another PIN: a field for the current one and two for the new one, each opened when it is its turn. The second entry
// of the new one stores it.
#include "entry.h"
#include "notice.h"
#include "pages.h"
#include "pin_change.h"
#include "screen_page.h"
#include "store.h"
#include "texts.h"

namespace {

constexpr int KEYPAD = 0; // the keyboard's layout

enum { HINT, CURRENT, NEW, REPEATED };
Widget widgets[] = {
    {wType.kind7, 18, 48, 0, 0, 0, 294, 34, 17, 1, L""},
    {wType.kind2, 8, 86, 0, 0, 0, 304, 44, 20, 1, L""},
    {wType.kind2, 8, 136, 0, 0, 0, 304, 44, 20, 1, L""},
    {wType.kind2, 8, 186, 0, 0, 0, 304, 44, 20, 1, L""},
};
Screen screen(L"");

PinChange change;

void enable(Widget& field, bool isEnabled) {
    field.record.touchable = isEnabled ? 0 : -1;
}

void showField(Widget& field, const char* key, bool isFilled) {
    if (isFilled)
        label(field, key, "••••");
    else
        label(field, key);
}

void showFields() {
    if (change.hasCurrent())
        showField(widgets[CURRENT], "pin_current", !change.takesCurrent());
    else
        label(widgets[CURRENT], "pin_current", utf8Of(textOf("pin_none")));
    showField(widgets[NEW], "pin_new", change.takesRepeated());
    showField(widgets[REPEATED], "pin_repeat", change.isComplete());
    enable(widgets[CURRENT], change.takesCurrent());
    enable(widgets[NEW], change.takesNew());
    enable(widgets[REPEATED], change.takesRepeated());
}

void editCurrent();

void takeCurrent(const std::string& text) {
    switch (change.enterCurrent(text)) {
    case PinChange::Answer::Wrong:
        redrawPage(); // under the message
        refuse("pin_wrong");
        editCurrent();
        break;
    case PinChange::Answer::WrongTooOften:
        returnToScreenPage();
        refuse("pin_too_often");
        break;
    default:
        showFields();
    }
}

void editCurrent() {
    constexpr Entry ENTRY{KEYPAD, 1, 0, nullptr};
    edit(ENTRY, "", takeCurrent);
}

bool hasFourDigits(wchar_t* text) {
    return isPin(utf8Of(text)) || refuse("pin_four_digits");
}

void takeNew(const std::string& text) {
    change.enterNew(text);
    showFields();
}

void editNew() {
    constexpr Entry ENTRY{KEYPAD, 0, 0, hasFourDigits};
    edit(ENTRY, "", takeNew);
}

void store() {
    Batch batch;
    batch.set(setting::PIN, change.pin());
    if (!batch.store())
        refuse("common_failed");
    returnToScreenPage();
}

void takeRepeated(const std::string& text) {
    if (change.enterRepeated(text) == PinChange::Answer::Different) {
        showFields();
        redrawPage(); // under the message
        refuse("pin_different");
    } else {
        store();
    }
}

void editRepeated() {
    constexpr Entry ENTRY{KEYPAD, 0, 0, hasFourDigits};
    edit(ENTRY, "", takeRepeated);
}

void prepare() {
    preparePage(screen, linked(widgets));
    screen.onBack = returnToScreenPage;
    widgets[CURRENT].callback = editCurrent;
    widgets[NEW].callback = editNew;
    widgets[REPEATED].callback = editRepeated;
}

void retext() {
    entitle(screen, "pin_title");
    label(widgets[HINT], "pin_hint");
    showFields();
}

// What is no PIN was stored by others. Nobody could type it as the current one, and it opens no lock.
void open() {
    const std::string stored = readSetting(setting::PIN);
    change = PinChange(isPin(stored) ? stored : "");
    showFields();
}

} // namespace

const Page pinPage{&screen, prepare, retext, open, nullptr, screenPageIsChanged, nullptr};
