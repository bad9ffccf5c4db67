// Filling, outlines and boxes on a panel that is a file, and a panel that is not there.
#include "display/panel.h"
#include "gui/display.h"
#include "tests/support/golden.h"
#include "tests/support/guarded_canvas.h"
#include "tests/support/panel_file.h"
#include "tests/support/scale.h"

#include <climits>
#include <cstdlib>
#include <gtest/gtest.h>

using namespace ostrel;

TEST(Panel, ClearFillsAllOfItAtOnce) {
    const PanelFile panel(0x1111);
    lcd_clear(0x057D);
    EXPECT_EQ(panel.picture(), blankPicture(320, 240, 0x057D));
    EXPECT_EQ(background(), 0x057D);
}

TEST(Panel, StartsWithWhatItShows) {
    const PanelFile panel(0x1111);
    libOstrelGuiInit();
    EXPECT_EQ(cut(panelCanvas(), {0, 0, 320, 240}), blankPicture(320, 240, 0x1111));
    EXPECT_EQ(panel.picture(), blankPicture(320, 240, 0x1111)) << "opening draws nothing";
}

TEST(Panel, FillReachesItAlsoWhereItWasDrawnBefore) {
    const PanelFile panel;
    lcd_clear(0x1234);
    panel.overwrite(0xFFFF);
    fillRect(0, 0, 320, 240, 0x1234);
    EXPECT_EQ(panel.picture(), blankPicture(320, 240, 0x1234));
}

TEST(Panel, FillRectStopsBeforeTheSecondCorner) {
    const PanelFile panel;
    fillRect(2, 1, 5, 3, 0xFFFF);
    EXPECT_EQ(
        shapeOf(panel.picture({0, 0, 7, 5}), 0xFFFF), ".......\n"
                                                      "..###..\n"
                                                      "..###..\n"
                                                      ".......\n"
                                                      ".......\n");
}

TEST(Panel, FillRectWithEqualOrSwappedCornersPaintsNothing) {
    const PanelFile panel;
    fillRect(5, 5, 5, 9, 0xFFFF);
    fillRect(5, 5, 9, 5, 0xFFFF);
    fillRect(9, 5, 5, 9, 0xFFFF);
    fillRect(5, 9, 9, 5, 0xFFFF);
    EXPECT_EQ(panel.picture(), blankPicture(320, 240, 0));
}

TEST(Panel, FillRectReachesTheLastPixelAndNoFurther) {
    const PanelFile panel;
    fillRect(318, 238, 65535, 65535, 0xFFFF);
    EXPECT_EQ(shapeOf(panel.picture({316, 236, 320, 240}), 0xFFFF), "....\n....\n..##\n..##\n");
    fillRect(320, 0, 65535, 240, 0xFFFF);
    EXPECT_EQ(shapeOf(panel.picture({316, 0, 320, 2}), 0xFFFF), "....\n....\n");
}

TEST(Panel, DrawRectRunsThroughBothCorners) {
    const PanelFile panel;
    drawRect(1, 1, 4, 3, 0xFFFF);
    EXPECT_EQ(
        shapeOf(panel.picture({0, 0, 6, 5}), 0xFFFF), "......\n"
                                                      ".####.\n"
                                                      ".#..#.\n"
                                                      ".####.\n"
                                                      "......\n");
}

TEST(Panel, DrawRectOfOnePointIsAPixel) {
    const PanelFile panel;
    drawRect(2, 1, 2, 1, 0xFFFF);
    EXPECT_EQ(shapeOf(panel.picture({0, 0, 4, 3}), 0xFFFF), "....\n..#.\n....\n");
}

TEST(Panel, NeighbouringOutlinesShareAnEdge) {
    const PanelFile panel;
    drawRect(0, 0, 3, 2, 0xFFFF);
    drawRect(3, 0, 6, 2, 0xFFFF);
    EXPECT_EQ(shapeOf(panel.picture({0, 0, 8, 3}), 0xFFFF), "#######.\n#..#..#.\n#######.\n");
}

TEST(Panel, DrawRectWithSwappedCornersOrOutsideDrawsNothing) {
    const PanelFile panel;
    drawRect(9, 5, 5, 9, 0xFFFF);
    drawRect(5, 9, 9, 5, 0xFFFF);
    drawRect(320, 240, 65535, 65535, 0xFFFF);
    EXPECT_EQ(panel.picture(), blankPicture(320, 240, 0));
}

TEST(Panel, DrawRectAroundThePanelShowsTheEdgesThatLieOnIt) {
    const PanelFile panel;
    drawRect(317, 238, 65535, 65535, 0xFFFF);
    EXPECT_EQ(shapeOf(panel.picture({315, 236, 320, 240}), 0xFFFF), ".....\n.....\n..###\n..#..\n");
}

TEST(Panel, TakesColoursModulo65536) {
    const PanelFile panel;
    fillRect(0, 0, 1, 1, 0x1057D);
    fillRect(1, 0, 2, 1, -1);
    fillRect(2, 0, 3, 1, INT_MIN + 7);
    drawRect(3, 0, 3, 0, INT_MAX);
    EXPECT_EQ(panel.at(0, 0), 0x057D);
    EXPECT_EQ(panel.at(1, 0), 0xFFFF);
    EXPECT_EQ(panel.at(2, 0), 7);
    EXPECT_EQ(panel.at(3, 0), 0xFFFF);
    lcd_clear(0x2F00D);
    EXPECT_EQ(panel.at(4, 0), 0xF00D);
    EXPECT_EQ(background(), 0xF00D);
}

TEST(RoundedRectangle, ReadsWellOverADarkPage) {
    const PanelFile panel;
    lcd_clear(0);
    drawRoundedRectangle(60, 60, 260, 160, 0, 240);
    EXPECT_TRUE(matchesGolden(panel.picture({56, 56, 96, 96}), "rounded-box-dark-page"));
}

TEST(RoundedRectangle, ReadsWellOverALightPage) {
    const PanelFile panel;
    lcd_clear(0xFFFF);
    drawRoundedRectangle(60, 60, 260, 160, 0, 240);
    EXPECT_TRUE(matchesGolden(panel.picture({224, 124, 264, 164}), "rounded-box-light-page"));
}

TEST(RoundedRectangle, StaysInsideItsCornersAndShowsOnEverySide) {
    const PanelFile panel;
    drawRoundedRectangle(60, 60, 260, 160, 0, 240);
    const Picture drawn = panel.picture();
    for (int y = 0; y < 240; ++y) {
        for (int x = 0; x < 320; ++x)
            ASSERT_TRUE((x >= 60 && x < 260 && y >= 60 && y < 160) || drawn.at(x, y) == 0) << x << ", " << y;
    }
    EXPECT_NE(drawn.at(160, 61), 0);
    EXPECT_EQ(drawn.at(160, 61), drawn.at(160, 158));
    EXPECT_EQ(drawn.at(160, 61), drawn.at(61, 110));
    EXPECT_EQ(drawn.at(160, 61), drawn.at(258, 110));
}

TEST(Panel, SurvivesCoordinatesOfEveryKind) {
    const PanelFile panel;
    std::mt19937 random(7);
    const auto corner = [&] { return static_cast<unsigned short>(wildCoordinate(random, 0, 400)); };
    for (long i = 0; i < scaled(500); ++i) {
        SCOPED_TRACE("seed 7, step " + std::to_string(i));
        const int colour = wildCoordinate(random, INT_MIN, INT_MAX);
        fillRect(corner(), corner(), corner(), corner(), colour);
        drawRect(corner(), corner(), corner(), corner(), colour);
        const Rect box = wildRect(random);
        drawRoundedRectangle(box.left, box.top, box.right, box.bottom, colour, colour);
        ASSERT_EQ(panel.picture(), cut(panelCanvas(), {0, 0, 320, 240})) << "something was not flushed";
    }
}

TEST(MissingPanel, CostsOneLineThatNamesTheWayOutAndDrawsInMemory) {
    setenv("OSTREL_FRAMEBUFFER", "/nowhere/fb0", 1);
    testing::internal::CaptureStderr();
    reopenPanel();
    lcd_clear(0x1234);
    fillRect(0, 0, 5, 5, 1);
    turnOff();
    turnOn();
    EXPECT_EQ(
        testing::internal::GetCapturedStderr(),
        "ostrel: no panel at /nowhere/fb0: No such file or directory. Drawing goes to memory; run the program with "
        "'ostrel-sim PROGRAM', or name a framebuffer in OSTREL_FRAMEBUFFER.\n");
    EXPECT_EQ(panelCanvas().row(100)[100], 0x1234);
    EXPECT_EQ(panelCanvas().row(1)[1], 1);
}
