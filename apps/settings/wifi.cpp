// The Wi-Fi page: name, security and password of the router's network.
#include "entry.h"
#include "notice.h"
#include "pages.h"
#include "store.h"
#include "texts.h"
#include "wifi_rules.h"

namespace {

enum { NAME_CAPTION, NAME, OPEN, WPA2, WPA3, PASSWORD_CAPTION, PASSWORD, SHOW, SAVE };
Widget widgets[] = {
    {wType.kind7, 18, 46, 0, 0, 0, 88, 34, 18, 1, L""},      {wType.kind2, 108, 46, 0, 0, 0, 204, 34, 18, 1, L""},
    {wType.kind3, 8, 84, 0, 0, 0, 114, 34, 18, 1, L""},      {wType.kind3, 126, 84, 0, 0, 0, 91, 34, 18, 1, L"WPA2"},
    {wType.kind3, 221, 84, 0, 0, 0, 91, 34, 18, 1, L"WPA3"}, {wType.kind7, 18, 122, 0, 0, 0, 88, 34, 18, 1, L""},
    {wType.kind2, 108, 122, 0, 0, 0, 204, 34, 18, 1, L""},   {wType.kind4, 8, 160, 0, 0, 0, 304, 34, 18, 1, L""},
    {wType.kind0, 8, 200, 0, 0, 0, 304, 36, 20, 1, L""},
};
Screen screen(L"");
Batch batch;

struct Security {
    int widget;
    const char* value;
};
constexpr Security SECURITIES[] = {{OPEN, "open"}, {WPA2, "wpa2"}, {WPA3, "wpa3"}};

bool isOpenNetwork() {
    return batch.get(setting::WIFI_SECURITY) == "open";
}

// The drafts into the widgets.
void showDrafts() {
    fill(widgets[NAME], batch.get(setting::WIFI_NAME));
    fill(widgets[PASSWORD], batch.get(setting::WIFI_PASSWORD));
    for (const Security& security : SECURITIES)
        widgets[security.widget].setSelected(batch.get(setting::WIFI_SECURITY) == security.value ? 1 : 0);
    const int passwordTouchable = isOpenNetwork() ? -1 : 0;
    widgets[PASSWORD_CAPTION].record.touchable = passwordTouchable;
    widgets[PASSWORD].record.touchable = passwordTouchable;
    widgets[SHOW].setSelected(batch.isOn(setting::SHOW_PASSWORDS) ? 1 : 0);
    widgets[SAVE].record.touchable = batch.changed() ? 0 : -1;
}

// A page's draw() goes by the stored "ShowPass"; the draft counts here.
void draw() {
    showDrafts();
    screen.draw();
    setShowPasswords(batch.isOn(setting::SHOW_PASSWORDS));
    widgets[PASSWORD].draw();
}

// After a touch that changed a draft but for the text of a field.
void drawChange() {
    showDrafts();
    setShowPasswords(batch.isOn(setting::SHOW_PASSWORDS));
    for (const int widget : {int{PASSWORD_CAPTION}, int{PASSWORD}, int{SAVE}})
        widgets[widget].draw();
}

bool passes(const char* wrong) {
    return wrong == nullptr || refuse(wrong);
}

bool isName(wchar_t* text) {
    return passes(wrongWithWifiName(utf8Of(text)));
}

bool isPassword(wchar_t* text) {
    return passes(wrongWithWifiPassword(utf8Of(text)));
}

void keepName(const std::string& name) {
    batch.set(setting::WIFI_NAME, name);
}

void keepPassword(const std::string& password) {
    batch.set(setting::WIFI_PASSWORD, password);
}

// Both have at least as many bytes as characters, so the keyboard's own limits refuse first what is clear at once.
void editName() {
    constexpr Entry ENTRY{KEYBOARD_LETTERS, 1, WIFI_NAME_BYTES, isName};
    edit(ENTRY, batch.get(setting::WIFI_NAME), keepName);
}

void editPassword() {
    constexpr Entry ENTRY{KEYBOARD_LETTERS, WIFI_PASSWORD_LEAST, WIFI_PASSWORD_MOST, isPassword};
    edit(ENTRY, batch.get(setting::WIFI_PASSWORD), keepPassword);
}

template<int INDEX>
void choose() {
    batch.set(setting::WIFI_SECURITY, SECURITIES[INDEX].value);
    drawChange();
}

void toggleShow() {
    batch.setOn(setting::SHOW_PASSWORDS, widgets[SHOW].record.selected != 0);
    drawChange();
}

// The drafts were checked in their entries, but others store settings, too.
const char* wrongWithDrafts() {
    const char* const wrong = wrongWithWifiName(batch.get(setting::WIFI_NAME));
    if (wrong != nullptr || isOpenNetwork())
        return wrong;
    return wrongWithWifiPassword(batch.get(setting::WIFI_PASSWORD));
}

void save() {
    const char* const wrong = wrongWithDrafts();
    if (wrong != nullptr)
        refuse(wrong);
    else if (!batch.store())
        refuse("common_failed");
    redrawPage();
}

void prepare() {
    preparePage(screen, linked(widgets));
    widgets[NAME].callback = editName;
    widgets[OPEN].callback = choose<0>;
    widgets[WPA2].callback = choose<1>;
    widgets[WPA3].callback = choose<2>;
    widgets[PASSWORD].callback = editPassword;
    widgets[PASSWORD].isPassword(1);
    widgets[SHOW].callback = toggleShow;
    widgets[SAVE].callback = save;
}

void retext() {
    entitle(screen, "wifi_title");
    label(widgets[NAME_CAPTION], "wifi_name");
    label(widgets[OPEN], "wifi_open");
    label(widgets[PASSWORD_CAPTION], "wifi_password");
    label(widgets[SHOW], "wifi_show");
    label(widgets[SAVE], "common_save");
}

void open() {
    batch.discard();
}

bool isChanged() {
    return batch.changed();
}

} // namespace

const Page wifiPage{&screen, prepare, retext, open, draw, isChanged, nullptr};
