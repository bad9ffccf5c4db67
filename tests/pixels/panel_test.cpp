// Filling, outlines and power on a panel that is a file.
#include "display/panel.h"
#include "gui/display.h"
#include "tests/support/panel_file.h"

#include <gtest/gtest.h>

using namespace ostrel;

TEST(Panel, ClearFillsAllOfItAtOnce) {
    const PanelFile panel(0x1111);
    lcd_clear(0x057D);
    EXPECT_EQ(panel.picture(), blankPicture(320, 240, 0x057D));
    EXPECT_EQ(background(), 0x057D);
}
