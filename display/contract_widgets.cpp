#include "gui/display.h"

void drawWidget(WidgetRecord) {}
void unDrawWidget(WidgetRecord) {}
TouchArea getTouchArea(WidgetRecord) {
    return {};
}
void setShowPasswords(bool) {}
