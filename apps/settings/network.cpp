// The Network page: the router's address, from the network or by hand.
#include "entry.h"
#include "network_rules.h"
#include "notice.h"
#include "pages.h"
#include "store.h"
#include "texts.h"

namespace {

enum { DHCP, ADDRESS, MASK, GATEWAY, SAVE };
Widget widgets[] = {
    {wType.kind4, 8, 46, 0, 0, 0, 304, 34, 18, 1, L""},  {wType.kind2, 8, 84, 0, 0, 0, 304, 34, 18, 1, L""},
    {wType.kind2, 8, 122, 0, 0, 0, 304, 34, 18, 1, L""}, {wType.kind2, 8, 160, 0, 0, 0, 304, 34, 18, 1, L""},
    {wType.kind0, 8, 200, 0, 0, 0, 304, 36, 20, 1, L""},
};
Screen screen(L"");
Batch batch;

bool isMask(wchar_t* text) {
    return isNetworkMask(utf8Of(text)) || refuse("network_no_mask");
}

struct Row {
    int widget;
    const char* label;
    Setting setting;
    bool (*isRight)(wchar_t* text); // beyond being an address
};
constexpr Row ROWS[] = {
    {ADDRESS, "network_address", setting::ADDRESS, nullptr},
    {MASK, "network_mask", setting::MASK, isMask},
    {GATEWAY, "network_gateway", setting::GATEWAY, nullptr},
};

// The drafts into the widgets.
void showDrafts() {
    const bool isAutomatic = batch.isOn(setting::DHCP);
    widgets[DHCP].setSelected(isAutomatic ? 1 : 0);
    for (const Row& row : ROWS) {
        label(widgets[row.widget], row.label, batch.get(row.setting));
        widgets[row.widget].record.touchable = isAutomatic ? -1 : 0;
    }
    widgets[SAVE].record.touchable = batch.changed() ? 0 : -1;
}

void draw() {
    showDrafts();
    screen.draw();
}

// Addresses that nobody uses are not checked, and so not stored either.
void toggleDhcp() {
    const bool isAutomatic = widgets[DHCP].record.selected != 0;
    batch.setOn(setting::DHCP, isAutomatic);
    if (isAutomatic)
        for (const Row& row : ROWS)
            batch.revert(row.setting);
    showDrafts();
    for (const int widget : {int{ADDRESS}, int{MASK}, int{GATEWAY}, int{SAVE}})
        widgets[widget].draw();
}

template<int ROW>
void keep(const std::string& text) {
    batch.set(ROWS[ROW].setting, text);
}

template<int ROW>
void editRow() {
    constexpr Entry ENTRY{KEYBOARD_IP_ADDRESS, 0, 0, ROWS[ROW].isRight};
    edit(ENTRY, batch.get(ROWS[ROW].setting), keep<ROW>);
}

const char* wrongWithDrafts() {
    if (batch.isOn(setting::DHCP))
        return nullptr;
    return wrongWithNetwork(batch.get(setting::ADDRESS), batch.get(setting::MASK), batch.get(setting::GATEWAY));
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
    widgets[DHCP].callback = toggleDhcp;
    widgets[ADDRESS].callback = editRow<0>;
    widgets[MASK].callback = editRow<1>;
    widgets[GATEWAY].callback = editRow<2>;
    widgets[SAVE].callback = save;
}

// The rows have theirs with their values, each time the page is drawn.
void retext() {
    entitle(screen, "network_title");
    label(widgets[DHCP], "network_dhcp");
    label(widgets[SAVE], "common_save");
}

void open() {
    batch.discard();
}

bool isChanged() {
    return batch.changed();
}

} // namespace

const Page networkPage{&screen, prepare, retext, open, draw, isChanged, nullptr};
