#include "display/touch_scale.h"

#include <gtest/gtest.h>

using namespace ostrel;

namespace {

std::string panelPoint(const TouchScale& scale, int32_t x, int32_t y) {
    const PenPoint at = scale.toPanel(x, y);
    return std::to_string(at.x) + "," + std::to_string(at.y);
}

TouchScale rangeOf(AxisRange x, AxisRange y) {
    TouchScale scale;
    scale.xRange = x;
    scale.yRange = y;
    return scale;
}

} // namespace

TEST(TouchWithoutRanges, IsInPanelPixelsKeptInsideThePanel) {
    const TouchScale scale;
    EXPECT_EQ(panelPoint(scale, 1, 1), "1,1");
    EXPECT_EQ(panelPoint(scale, 319, 239), "319,239");
    EXPECT_EQ(panelPoint(scale, 0, 0), "1,1");
    EXPECT_EQ(panelPoint(scale, 320, 240), "319,239");
    EXPECT_EQ(panelPoint(scale, INT32_MIN, INT32_MAX), "1,239");
}

TEST(TouchWithRanges, IsSpreadOverThePanel) {
    const TouchScale scale = rangeOf({0, 4095}, {0, 4095});
    EXPECT_EQ(panelPoint(scale, 0, 0), "1,1");
    EXPECT_EQ(panelPoint(scale, 2048, 2048), "160,120");
    EXPECT_EQ(panelPoint(scale, 4095, 4095), "319,239");
    EXPECT_EQ(panelPoint(scale, 25, 34), "1,1");
    EXPECT_EQ(panelPoint(scale, 26, 35), "2,2");
}

TEST(TouchWithRanges, StaysAsItIsWhereTheRangesAreThePanels) {
    const TouchScale scale = rangeOf({0, 319}, {0, 239});
    for (int x = 1; x < 320; ++x)
        EXPECT_EQ(panelPoint(scale, x, 17), std::to_string(x) + ",17");
    for (int y = 1; y < 240; ++y)
        EXPECT_EQ(panelPoint(scale, 17, y), "17," + std::to_string(y));
}

TEST(TouchWithRanges, MayStartAnywhereAndFillAllOfAnInteger) {
    EXPECT_EQ(panelPoint(rangeOf({-500, 499}, {200, 3800}), 0, 2000), "160,119");
    const TouchScale widest = rangeOf({INT32_MIN, INT32_MAX}, {INT32_MIN, INT32_MAX});
    EXPECT_EQ(panelPoint(widest, 0, 0), "160,120");
    EXPECT_EQ(panelPoint(widest, INT32_MIN, INT32_MAX), "1,239");
}

TEST(TouchWithRanges, TakesASenselessRangeForPanelPixels) {
    EXPECT_EQ(panelPoint(rangeOf({100, 99}, {5, -5}), 50, 60), "50,60");
}

TEST(Calibration, TurnsAndShiftsThePanel) {
    TouchScale scale;
    ASSERT_TRUE(parseCalibration("-1 0 319 0 -1 239 1", scale.calibration));
    EXPECT_EQ(panelPoint(scale, 19, 39), "300,200");
    ASSERT_TRUE(parseCalibration("0 1365 0 768 0 0 1024", scale.calibration));
    EXPECT_EQ(panelPoint(scale, 160, 120), "159,120");
    ASSERT_TRUE(parseCalibration("  2 0 -10   0 1 5 1  ", scale.calibration));
    EXPECT_EQ(panelPoint(scale, 50, 60), "90,65");
}

TEST(Calibration, StaysInsideThePanelWhateverItsNumbers) {
    TouchScale scale;
    ASSERT_TRUE(parseCalibration("2147483647 2147483647 2147483647 -2147483648 -2147483648 0 -1", scale.calibration));
    EXPECT_EQ(panelPoint(scale, INT32_MAX, INT32_MAX), "1,239");
}

TEST(Calibration, IsRefusedAsAWholeWhenItIsNotSevenNumbers) {
    const char* const refused[] = {
        "",
        " ",
        "1",
        "1 0 0 0 1 0",
        "1 0 0 0 1 0 1 1",
        "1 0 0 0 1 0 0",
        "1 0 0 0 1 0 x",
        "1,0,0,0,1,0,1",
        "1 0 0 0 1.5 0 1",
        "1 0 0 0 1 0 2147483648",
        "1 0 0 0 1 0 99999999999999999999",
    };
    for (const char* const text : refused) {
        TouchCalibration calibration;
        calibration.c = 77;
        EXPECT_FALSE(parseCalibration(text, calibration)) << text;
        EXPECT_EQ(calibration.c, 77) << text;
    }
}
