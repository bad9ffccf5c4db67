// Elements, as gui/display.h promises them.
#include "display/panel.h"
#include "display/widget_draw.h"
#include "display/widget_layout.h"
#include "gui/display.h"

using namespace ostrel;

void drawWidget(WidgetRecord record) {
    flush(drawElement(panelCanvas(), record));
}

void unDrawWidget(WidgetRecord record) {
    flush(eraseElement(panelCanvas(), record));
}

TouchArea getTouchArea(WidgetRecord record) {
    return touchAreaOf(boxOf(record));
}

void setShowPasswords(bool show) {
    hidePasswords(!show);
}
