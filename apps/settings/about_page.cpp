// About: what the owner is asked for when something does not work.
#include "pages.h"
#include "store.h"
#include "texts.h"

namespace {

enum { VERSION, LANGUAGE, ADDRESS };
Widget widgets[] = {
    {wType.kind7, 18, 52, 0, 0, 1, 294, 40, 20, 1, L""},
    {wType.kind7, 18, 96, 0, 0, 1, 294, 40, 20, 1, L""},
    {wType.kind7, 18, 140, 0, 0, 1, 294, 40, 20, 1, L""},
};
Screen screen(L"");

void showValues() {
    label(widgets[VERSION], "about_version", OSTREL_VERSION);
    const wchar_t* const name = lang.get("name", "language");
    label(widgets[LANGUAGE], "about_language", name != nullptr ? utf8Of(name) : readSetting(setting::LANGUAGE));
    const bool isAutomatic = readSetting(setting::DHCP) == "1";
    label(
        widgets[ADDRESS], "about_address",
        isAutomatic ? utf8Of(textOf("about_automatic")) : readSetting(setting::ADDRESS));
}

void prepare() {
    preparePage(screen, linked(widgets));
}

void retext() {
    entitle(screen, "about_title");
    showValues();
}

} // namespace

const Page aboutPage{&screen, prepare, retext, showValues, nullptr, nullptr, nullptr};
