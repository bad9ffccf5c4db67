// Drawing works in objects of static storage: before libOstrelGuiInit, before main, and after exit has begun.
#include "gui/display.h"
#include "tests/support/panel_file.h"

#include <cstdio>
#include <cstdlib>
#include <unistd.h>

namespace {

// Made before the library's state and destroyed after everything that was made later.
struct DrawsAllItsLife {
    PanelFile panel{0x1111};
    WidgetRecord record{};

    DrawsAllItsLife() {
        record.x = 10;
        record.y = 10;
        record.width = 50;
        record.height = 20;
        getTouchArea(record);
        drawWidget(record);
        lcd_clear(0x1234);
        fillRect(0, 0, 5, 5, 0xFFFF);
        require(panel.at(0, 0) == 0xFFFF && panel.at(5, 5) == 0x1234, "drawing before main");
    }

    ~DrawsAllItsLife() {
        fillRect(0, 0, 5, 5, 0x4321);
        unDrawWidget(record);
        require(panel.at(0, 0) == 0x4321, "filling after exit has begun");
        require(panel.at(30, 15) == 0x1234, "erasing after exit has begun");
    }

    static void require(bool holds, const char* what) {
        if (holds)
            return;
        std::fprintf(stderr, "%s shows nothing\n", what);
        _exit(1);
    }
};

DrawsAllItsLife drawsAllItsLife;

} // namespace

int main() {
    drawWidget(drawsAllItsLife.record);
    std::exit(0);
}
