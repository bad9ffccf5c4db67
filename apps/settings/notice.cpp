#include "notice.h"

#include "texts.h"

#include <string>

namespace {

enum { BOXED_NOTE = 1, BOXED_WARNING = 2, UNTIL_TAPPED = -1 };

void clearPanel() {
    lcd_clear(0);
}

void show(int type, const std::string& key) {
    Modal message;
    message.setLine1(textOf((key + "_l1").c_str()));
    message.setLine2(textOf((key + "_l2").c_str()));
    message.setLine3(textOf((key + "_l3").c_str()));
    message.onClose = clearPanel;
    message.draw(type, UNTIL_TAPPED);
}

} // namespace

void tell(const char* key) {
    show(BOXED_NOTE, key);
}

bool refuse(const char* key) {
    show(BOXED_WARNING, key);
    return false;
}
