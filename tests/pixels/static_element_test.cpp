// Elements of natural size in static storage: they measure their texts before main and erase themselves after exit has
// begun, so the fonts must be there all that time.
#include "gui/display.h"
#include "tests/support/panel_file.h"

#include <cstdio>
#include <cstdlib>
#include <cwchar>
#include <unistd.h>

namespace {

void require(bool holds, const char* what) {
    if (holds)
        return;
    std::fprintf(stderr, "%s\n", what);
    _exit(1);
}

struct LivesAllTheTime {
    PanelFile panel;
    WidgetRecord record{};
    TouchArea area{};

    LivesAllTheTime() {
        record.x = 20;
        record.y = 30;
        record.touchable = 1;
        std::wcscpy(record.text, L"Łąka ✓");
        area = getTouchArea(record);
        require(area.right - area.left > textWidth(L"Łąka ✓", 20), "no touch area before main");
        drawWidget(record);
        require(panel.at(30, 40) != 0, "nothing drawn before main");
    }

    ~LivesAllTheTime() {
        drawWidget(record);
        require(panel.at(30, 40) != 0, "nothing drawn after exit has begun");
        std::wcscpy(record.text, L"i");
        unDrawWidget(record);
        require(panel.picture() == blankPicture(320, 240, 0), "not wholly erased after exit has begun");
    }
};

LivesAllTheTime livesAllTheTime;

} // namespace

int main() {
    libOstrelGuiInit();
    drawWidget(livesAllTheTime.record);
    std::exit(0);
}
