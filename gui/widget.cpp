#include "gui/widget.h"

#include "util/bounded_copy.h"

// Widget has a virtual table, so the standard leaves offsetof to the compiler; both of ours define it.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
namespace {

// The members' places on the router, whose pointers have 4 bytes, are part of the binary interface.
constexpr bool onRouter = sizeof(void*) == 4;
static_assert(!onRouter || offsetof(Widget, callback) == 4, "binary interface");
static_assert(!onRouter || offsetof(Widget, flagA) == 8, "binary interface");
static_assert(!onRouter || offsetof(Widget, flagB) == 9, "binary interface");
static_assert(!onRouter || offsetof(Widget, group) == 12, "binary interface");
static_assert(!onRouter || offsetof(Widget, next) == 16, "binary interface");
static_assert(!onRouter || offsetof(Widget, prev) == 20, "binary interface");
static_assert(!onRouter || offsetof(Widget, record) == 24, "binary interface");
static_assert(!onRouter || offsetof(Widget, touchArea) == 412, "binary interface");
static_assert(!onRouter || offsetof(Widget, keyboardFlag) == 428, "binary interface");
static_assert(!onRouter || offsetof(Widget, keyboardTarget) == 432, "binary interface");
static_assert(!onRouter || sizeof(Widget) == 436, "binary interface");

} // namespace
#pragma GCC diagnostic pop

WidgetType::WidgetType()
    : kind8(8), kind0(0), kind1(1), kind2(2), kind3(3), kind4(4), kind5(5), kind6(6), kind7(7), kind9(9) {}

// The constructors leave what they do not name as storage holds it: programs rely on static storage's zeros.
Widget::Widget() = default;

Widget::Widget(const Widget&) {}

Widget::Widget(
    int type, int x, int y, int colourA, int colourB, int selected, int width, int height, float fontSize, int scale,
    wchar_t* text) {
    flagA = 0;
    flagB = 1;
    keyboardFlag = 0;
    record.x = x;
    record.y = y;
    record.colourA = colourA;
    record.colourB = colourB;
    record.selected = selected;
    record.type = type;
    record.width = width;
    record.height = height;
    record.fontSize = fontSize;
    record.scale = static_cast<float>(scale);
    ostrel::copyText(record.text, text);
    touchArea = getTouchArea(record);
    group = 1;
}

Widget::Widget(int type, int x, int y, int colourA, int colourB, int selected, wchar_t* text) {
    flagA = 0;
    flagB = 1;
    keyboardFlag = 0;
    record.x = x;
    record.y = y;
    record.colourA = colourA;
    record.colourB = colourB;
    record.selected = selected;
    record.type = type;
    ostrel::copyText(record.text, text);
    touchArea = getTouchArea(record);
    group = 1;
    record.password = 0;
    record.touchable = 1;
}

Widget::Widget(int x, int y, int colourA, int word10, int word11, float fontSize, int word9, int width, wchar_t* text) {
    record.type = wType.kind8;
    record.width = width;
    record.x = x;
    record.y = y;
    record.colourA = colourA;
    record.word9 = word9;
    record.word10 = word10;
    record.word11 = word11;
    record.fontSize = fontSize;
    ostrel::copyText(record.text, text);
}

Widget::~Widget() {
    unDrawWidget(record);
}

void Widget::draw() {
    drawWidget(record);
}

void Widget::unDraw() {
    unDrawWidget(record);
}

void Widget::setText(wchar_t* text) {
    ostrel::copyText(record.text, text);
    drawWidget(record);
}

void Widget::isPassword(int flag) {
    record.password = flag;
}

void Widget::setSelected(int state) {
    record.selected = state;
}

int Widget::getType() {
    return record.type;
}

namespace {

bool takes(const Widget& widget, int x, int y) {
    const TouchArea& area = widget.touchArea;
    const bool inside = area.left < x && x < area.right && area.top < y && y < area.bottom;
    return inside && widget.record.type != wType.kind7 && widget.record.touchable != -1;
}

void clearOthersOfGroup(Widget& chosen) {
    const int32_t group = chosen.group;
    Widget* widget = &chosen;
    while (widget->prev != nullptr)
        widget = widget->prev;
    for (; widget != nullptr; widget = widget->next) {
        if (widget->group == group && widget->getType() == wType.kind3 && widget != &chosen) {
            widget->setSelected(0);
            widget->draw();
        }
    }
}

} // namespace

int Widget::checkTouch(int x, int y) {
    if (!takes(*this, x, y))
        return 0;
    if (record.type == wType.kind3) {
        record.selected = 1;
        draw();
        clearOthersOfGroup(*this);
        waitForPenUp();
    } else if (record.type == wType.kind4) {
        record.selected = record.selected != 0 ? 0 : 1;
        draw();
        waitForPenUp();
    } else {
        record.selected = 1;
        draw();
        waitForPenUp();
        record.selected = 0;
        draw();
    }
    callback();
    return 1;
}

void Widget::useKeyboard(bool, char* key) {
    if (keyboardTarget != nullptr)
        ostrel::copyText(keyboardTarget, SIZE_MAX, key); // the program owns the buffer and knows its size
}
