// Restart: asks before the services restart, and tells of it while they do.
#include "pages.h"
#include "store.h"
#include "texts.h"

namespace {

constexpr int BOXED_NOTE = 1;

enum { TEXT_LINES = 3, RESTART = TEXT_LINES };
Widget widgets[] = {
    {wType.kind7, 18, 56, 0, 0, 1, 294, 28, 20, 1, L""},
    {wType.kind7, 18, 86, 0, 0, 1, 294, 28, 20, 1, L""},
    {wType.kind7, 18, 116, 0, 0, 1, 294, 28, 20, 1, L""},
    {wType.kind9, 8, 176, 0, 0, 0, 304, 50, 20, 1, L""},
};
Screen screen(L"");

void restart() {
    Modal message;
    message.setLine1(textOf("restart_running_l1"));
    message.setLine2(textOf("restart_running_l2"));
    message.setLine3(textOf("restart_running_l3"));
    message.drawTimed(BOXED_NOTE);
    Memory().commit();
    message.time(RESTART_SECONDS);
    goHome();
}

void prepare() {
    preparePage(screen, linked(widgets));
    widgets[RESTART].callback = restart;
}

void retext() {
    entitle(screen, "restart_title");
    label(widgets[0], "restart_text1");
    label(widgets[1], "restart_text2");
    label(widgets[2], "restart_text3");
    label(widgets[RESTART], "restart_now");
}

} // namespace

const Page restartPage{&screen, prepare, retext, nullptr, nullptr, nullptr, nullptr};
