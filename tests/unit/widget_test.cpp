#include "gui/widget.h"
#include "tests/support/recording_display.h"

#include <gtest/gtest.h>

namespace {

int callbacks = 0;

TEST(WidgetTouch, OnAnyEdgeOfTheTouchAreaIsNotTaken) {
    Widget button(wType.kind0, 10, 20, 0, 0, 0, 100, 40, 20.0F, 0, L"Save");
    button.record.touchable = 0;
    button.callback = [] { ++callbacks; };
    display() = {};
    EXPECT_EQ(button.checkTouch(10, 30), 0);
    EXPECT_EQ(display().take(), "");
}

} // namespace
