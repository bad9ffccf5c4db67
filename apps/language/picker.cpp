#include "apps/language/picker.h"

#include "apps/language/installed.h"

#include <algorithm>

namespace {

enum { ON_A_PAGE = 8, NOBODY = -1 };

// Down the left column, then down the right one.
Widget choices[ON_A_PAGE] = {
    {wType.kind3, 8, 46, 0, 0, 0, 149, 34, 20, 1, L""},    {wType.kind3, 8, 84, 0, 0, 0, 149, 34, 20, 1, L""},
    {wType.kind3, 8, 122, 0, 0, 0, 149, 34, 20, 1, L""},   {wType.kind3, 8, 160, 0, 0, 0, 149, 34, 20, 1, L""},
    {wType.kind3, 163, 46, 0, 0, 0, 149, 34, 20, 1, L""},  {wType.kind3, 163, 84, 0, 0, 0, 149, 34, 20, 1, L""},
    {wType.kind3, 163, 122, 0, 0, 0, 149, 34, 20, 1, L""}, {wType.kind3, 163, 160, 0, 0, 0, 149, 34, 20, 1, L""},
};
Widget done(wType.kind0, 163, 200, 0, 0, 0, 149, 36, 20, 1, L"Done");
Widget previous(wType.kind0, 8, 200, 0, 0, 0, 46, 36, 26, 1, L"◀");
Widget place(54, 209, 0xFFFF, 1, 0, 18, 1, 57, L"");
Widget following(wType.kind0, 111, 200, 0, 0, 0, 46, 36, 26, 1, L"▶");
Widget nothing(wType.kind7, 8, 110, 0, 0, 0, 304, 30, 20, 1, L"No languages are installed.");
Screen page(L"Language");

struct State {
    std::vector<InstalledLanguage> languages;
    int stored = NOBODY; // in `languages`, as chosen
    int chosen = NOBODY;
    int page = 0;
    bool isOver = false;
} state;

int languageCount() {
    return static_cast<int>(state.languages.size());
}

const InstalledLanguage& languageAt(int index) {
    return state.languages[static_cast<size_t>(index)];
}

int pageCount() {
    return (languageCount() + ON_A_PAGE - 1) / ON_A_PAGE;
}

int countOnPage() {
    return std::min<int>(ON_A_PAGE, languageCount() - state.page * ON_A_PAGE);
}

std::wstring ownText(const char* key, const wchar_t* otherwise) {
    // Nothing chosen yet, since what is stored is not there: rather this language than none.
    const int speaks = state.chosen != NOBODY ? state.chosen : 0;
    return state.languages.empty() ? otherwise : languageText(languageAt(speaks).path, key, "picker", otherwise);
}

// The page's list is what it shows now; a widget that is not in it is neither drawn nor touched.
void link(Widget& widget, Widget*& last) {
    widget.prev = last;
    widget.next = nullptr;
    if (last != nullptr)
        last->next = &widget;
    last = &widget;
}

void linkWidgets() {
    Widget* last = nullptr;
    for (int i = 0; i < countOnPage(); ++i)
        link(choices[i], last);
    if (pageCount() > 1)
        for (Widget* const widget : {&previous, &place, &following})
            link(*widget, last);
    link(state.languages.empty() ? nothing : done, last);
    page.widgets = last;
}

void setEnabled(Widget& widget, bool isEnabled) {
    widget.record.touchable = isEnabled ? 1 : -1;
}

void turnTo(int pageNumber) {
    state.page = pageNumber;
    for (int i = 0; i < countOnPage(); ++i) {
        const int language = pageNumber * ON_A_PAGE + i;
        std::wcsncpy(choices[i].record.text, languageAt(language).name.c_str(), WIDGET_TEXT_LENGTH - 1);
        choices[i].setSelected(language == state.chosen ? 1 : 0);
    }
    aswprintf(place.record.text, WIDGET_TEXT_LENGTH - 1, L"%d/%d", pageNumber + 1, pageCount());
    setEnabled(previous, pageNumber > 0);
    setEnabled(following, pageNumber + 1 < pageCount());
    linkWidgets();
}

// In the language that is chosen on the page, so that the choice shows what it brings.
void setOwnTexts() {
    std::wcsncpy(page.title, ownText("title", L"Language").c_str(), SCREEN_TITLE_LENGTH - 1);
    std::wcsncpy(done.record.text, ownText("done", L"Done").c_str(), WIDGET_TEXT_LENGTH - 1);
    setEnabled(done, state.chosen != NOBODY);
}

void choose() {
    for (int i = 0; i < countOnPage(); ++i)
        if (choices[i].record.selected != 0)
            state.chosen = state.page * ON_A_PAGE + i;
    setOwnTexts();
    page.setTitle(page.title);
    done.draw();
}

void turnBack() {
    turnTo(state.page - 1);
    page.draw();
}

void turnForward() {
    turnTo(state.page + 1);
    page.draw();
}

void leave() {
    state.isOver = true;
}

std::string storedSetting() {
    Memory settings;
    char value[NVRAM_TEXT_LENGTH];
    settings.getSetting("Language", value);
    return value;
}

void tellNotStored() {
    Modal notice;
    notice.onClose = drawPicker;
    notice.setLine1(ownText("not_stored_l1", L"The language").c_str());
    notice.setLine2(ownText("not_stored_l2", L"could not be").c_str());
    notice.setLine3(ownText("not_stored_l3", L"stored.").c_str());
    notice.draw(2, -1);
}

// No commit: it would restart the services, and none of them speaks to people. Programs ask for the setting again when
// the picker returns, or start with it.
void store() {
    if (state.chosen != state.stored) {
        const std::string& setting = languageAt(state.chosen).setting;
        Memory settings;
        settings.saveSetting("Language", setting.c_str());
        if (storedSetting() != setting) {
            tellNotStored();
            return;
        }
    }
    leave();
}

} // namespace

void preparePicker(const std::string& directory) {
    state = {};
    state.languages = installedLanguages(directory);
    const std::string setting = storedSetting();
    for (int i = 0; i < languageCount(); ++i)
        if (languageAt(i).setting == setting)
            state.stored = i;
    state.chosen = state.stored;

    for (Widget& choice : choices)
        choice.callback = choose;
    previous.callback = turnBack;
    following.callback = turnForward;
    done.callback = store;
    page.showExit = 0;
    page.onBack = leave;
    page.keyboard.returnHandler = doNothing; // called when the program ends
    setOwnTexts();
    turnTo(std::max<int>(state.chosen, 0) / ON_A_PAGE);
}

void drawPicker() {
    page.draw();
}

Screen& pickerPage() {
    return page;
}

bool isPickerOver() {
    return state.isOver;
}
