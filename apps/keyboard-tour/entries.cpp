#include "entries.h"

#include <cstdio>
#include <cstring>
#include <cwchar>

namespace {

constexpr int VALUE_BYTES = 40; // that a row shows at most
constexpr int PIN_DIGITS = 4;
constexpr long SHORTEST_TIMEOUT_S = 10;

// Checks of their own say what is wrong; the keyboard draws itself again behind them.
bool refuse(const wchar_t* line1, const wchar_t* line2, const wchar_t* line3) {
    Modal notice;
    notice.onClose = doNothing;
    notice.setLine1(line1);
    notice.setLine2(line2);
    notice.setLine3(line3);
    notice.draw(2, -1);
    return false;
}

bool isPin(wchar_t* text) {
    return textLen(text) == PIN_DIGITS || refuse(L"A PIN has", L"four digits,", L"no more, no less.");
}

bool isTimeout(wchar_t* text) {
    const bool isReadable = wcstol(text, nullptr, 10) >= SHORTEST_TIMEOUT_S;
    return isReadable || refuse(L"Nobody reads that", L"fast: ten seconds", L"at least.");
}

// Where the keyboard puts what was typed. A free text is the program's to keep: this one saves it too.
enum class Store { Main, Rtdev, Text };

// What a program chooses before an entry. Lengths of 0 are no limits.
struct Entry {
    const wchar_t* row; // the row's text around the value
    const char* key;
    bool (*validation)(wchar_t* text);
    Store store;
    int layout;
    int minLength;
    int maxLength;
    int prefixLength;
    bool restartsServices;
};
constexpr Entry ENTRIES[] = {
    // row, key, validation, store, layout, lengths, prefix, restarts
    {L"Network name\t%hs", "WifiName", nullptr, Store::Main, KEYBOARD_LETTERS, 1, 32, 0, true},
    {L"Dark after\t%hs s", "ScreenTimeout", isTimeout, Store::Rtdev, 0, 0, 4, 0, false},
    {L"Address\t%hs", "IPAddress", nullptr, Store::Main, KEYBOARD_IP_ADDRESS, 0, 0, 0, false},
    {L"Web page\t%hs", "WebPage", nullptr, Store::Text, KEYBOARD_LETTERS, 4, 60, 7, false},
    {L"PIN\t%hs", "PIN", isPin, Store::Main, 0, 0, 0, 0, false},
};
enum { WEB_PAGE = 3, PIN = 4, ENTRY_COUNT = 5, ROW_COUNT };

constexpr const char* WEB_PAGE_PREFIX = "http://"; // neither shown nor editable in its entry
wchar_t webPage[KEYBOARD_TEXT_LENGTH];             // as its entry gives it

// The texts of rows with a value are read when the page is drawn.
Widget rows[ROW_COUNT] = {
    {wType.kind1, 6, 46, 0, 0, 0, 308, 31, 18, 1, L""},  {wType.kind1, 6, 78, 0, 0, 0, 308, 31, 18, 1, L""},
    {wType.kind1, 6, 110, 0, 0, 0, 308, 31, 18, 1, L""}, {wType.kind1, 6, 142, 0, 0, 0, 308, 31, 18, 1, L""},
    {wType.kind1, 6, 174, 0, 0, 0, 308, 31, 18, 1, L""}, {wType.kind1, 6, 206, 0, 0, 0, 308, 31, 18, 1, L"Messages"},
};

Screen page(L"Keyboard");

void readValue(const Entry& entry, char (&value)[NVRAM_TEXT_LENGTH]) {
    Memory settings;
    if (entry.store == Store::Rtdev)
        settings.getSettingRtdev(entry.key, value);
    else
        settings.getSetting(entry.key, value);
    if (entry.store == Store::Text && value[0] == 0)
        snprintf(value, sizeof value, "%s", WEB_PAGE_PREFIX);
}

void readRow(int index) {
    char value[NVRAM_TEXT_LENGTH];
    readValue(ENTRIES[index], value);
    value[VALUE_BYTES] = 0;
    if (index == PIN) // which others may look at
        snprintf(value, sizeof value, "%s", value[0] != 0 ? "••••" : "none");
    aswprintf(rows[index].record.text, WIDGET_TEXT_LENGTH - 1, ENTRIES[index].row, value);
}

void editWebPage() {
    char initial[NVRAM_TEXT_LENGTH];
    readValue(ENTRIES[WEB_PAGE], initial);
    page.keyboard.drawText(initial, webPage);
}

void keepWebPage() {
    char value[NVRAM_TEXT_LENGTH];
    value[wchar_to_utf8(webPage, wcslen(webPage), value, sizeof value - 1, UTF8_DROP_INVALID)] = 0;
    char kept[NVRAM_TEXT_LENGTH];
    readValue(ENTRIES[WEB_PAGE], kept);
    if (strcmp(value, kept) != 0)
        Memory().saveSetting(ENTRIES[WEB_PAGE].key, value);
    webPage[0] = 0;
}

template<int INDEX>
void edit() {
    const Entry& entry = ENTRIES[INDEX];
    Keyboard& keyboard = page.keyboard;
    keyboard.keyboardMode(entry.layout);
    keyboard.minLength = entry.minLength;
    keyboard.maxLength = entry.maxLength;
    keyboard.prefixLength = entry.prefixLength;
    keyboard.deferCommit = entry.restartsServices ? 0 : 1;
    keyBoardSaveMode(entry.store != Store::Text);
    setKeyboardValidationFunction(entry.validation);
    if (entry.store == Store::Main)
        keyboard.draw(entry.key);
    else if (entry.store == Store::Rtdev)
        keyboard.drawRtdev(entry.key);
    else
        editWebPage();
}

void finishEntry() {
    if (webPage[0] != 0)
        keepWebPage();
    drawEntries();
}

void leave() {
    page.keyboard.returnHandler = doNothing; // the page's end calls it too, and has nothing to draw
}

} // namespace

void prepareEntries(void (*onMessages)()) {
    void (*const callbacks[ROW_COUNT])() = {edit<0>, edit<1>, edit<2>, edit<3>, edit<4>, onMessages};
    for (int i = 0; i < ROW_COUNT; ++i) {
        rows[i].callback = callbacks[i];
        rows[i].prev = i > 0 ? &rows[i - 1] : nullptr;
        rows[i].next = i + 1 < ROW_COUNT ? &rows[i + 1] : nullptr;
    }
    page.widgets = rows;
    page.showBack = 0;
    page.keyboard.returnHandler = finishEntry;
    page.onExit = leave;
}

void drawEntries() {
    for (int i = 0; i < ENTRY_COUNT; ++i)
        readRow(i);
    page.draw();
}

Screen& entriesPage() {
    return page;
}
