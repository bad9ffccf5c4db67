// Where the panel lies in a window, what the window shows of it, and which pixel of the panel is under a pointer.
#include "simulator/window/window_picture.h"

#include <gtest/gtest.h>

using namespace ostrel;

namespace {

std::string text(const Area& area) {
    return std::to_string(area.width) + "x" + std::to_string(area.height) + " at " + std::to_string(area.left) + "," +
           std::to_string(area.top);
}

std::string text(Position position) {
    return std::to_string(position.x) + "," + std::to_string(position.y);
}

TEST(Placement, IsTheLargestWholeMultipleInTheMiddle) {
    const struct {
        Extent window;
        const char* picture;
    } cases[] = {{{320, 240}, "320x240 at 0,0"},     {{321, 242}, "320x240 at 0,1"},
                 {{639, 480}, "320x240 at 159,120"}, {{640, 479}, "320x240 at 160,119"},
                 {{640, 480}, "640x480 at 0,0"},     {{960, 719}, "640x480 at 160,119"},
                 {{960, 720}, "960x720 at 0,0"},     {{3840, 240}, "320x240 at 1760,0"},
                 {{320, 2160}, "320x240 at 0,960"},  {{3840, 2160}, "2880x2160 at 480,0"}};
    for (const auto& [window, picture] : cases)
        EXPECT_EQ(text(placePanel(window)), picture) << window.width << "x" << window.height;
}

TEST(Placement, ShrinksTheWholePanelIntoASmallerWindow) {
    const struct {
        Extent window;
        const char* picture;
    } cases[] = {{{319, 240}, "319x239 at 0,0"},    {{320, 239}, "318x238 at 1,0"}, {{160, 120}, "160x120 at 0,0"},
                 {{160, 1000}, "160x120 at 0,440"}, {{1000, 60}, "80x60 at 460,0"}, {{1, 1}, "1x1 at 0,0"},
                 {{1000, 1}, "1x1 at 499,0"}};
    for (const auto& [window, picture] : cases)
        EXPECT_EQ(text(placePanel(window)), picture) << window.width << "x" << window.height;
}

TEST(Placement, OfANewWindowLeavesRoomForItsFrame) {
    EXPECT_EQ(zoomFor({1920, 1040}), 4);
    EXPECT_EQ(zoomFor({1366, 728}), 2);
    EXPECT_EQ(zoomFor({656, 536}), 2);
    EXPECT_EQ(zoomFor({655, 536}), 1);
    EXPECT_EQ(zoomFor({656, 535}), 1);
    EXPECT_EQ(zoomFor({200, 100}), 1);
    EXPECT_EQ(zoomFor({0, 0}), 1);
}

TEST(Pointer, FindsThePixelUnderIt) {
    const Area picture = placePanel({1000, 800}); // three times, at 20,40
    EXPECT_EQ(text(picture), "960x720 at 20,40");
    const struct {
        Position position;
        bool isInside;
        const char* pixel;
    } cases[] = {{{20, 40}, true, "0,0"},        {{22, 42}, true, "0,0"},        {{23, 43}, true, "1,1"},
                 {{979, 759}, true, "319,239"},  {{976, 756}, true, "318,238"},  {{977, 757}, true, "319,239"},
                 {{19, 40}, false, "0,0"},       {{20, 39}, false, "0,0"},       {{980, 759}, false, "319,239"},
                 {{979, 760}, false, "319,239"}, {{-5000, 400}, false, "0,120"}, {{500, 9000}, false, "160,239"}};
    for (const auto& [position, isInside, pixel] : cases) {
        EXPECT_EQ(contains(picture, position), isInside) << text(position);
        EXPECT_EQ(text(panelPixelAt(picture, position)), pixel) << text(position);
    }
}

TEST(Pointer, ReachesBothEdgesOfAShrunkPanel) {
    const Area picture = placePanel({161, 121});
    EXPECT_EQ(text(picture), "161x120 at 0,0");
    EXPECT_EQ(text(panelPixelAt(picture, {0, 0})), "0,0");
    EXPECT_EQ(text(panelPixelAt(picture, {160, 119})), "318,238");
}

class WindowPictureTest : public testing::Test {
  protected:
    WindowPictureTest() : panel(76800) {
        for (size_t i = 0; i < panel.size(); ++i)
            panel[i] = static_cast<uint16_t>(i * 40503U);
    }

    uint32_t at(int x, int y) const {
        return shown
            .pixels()[static_cast<size_t>(y) * static_cast<size_t>(shown.size().width) + static_cast<size_t>(x)];
    }

    // Every pixel of the window by the definition: the panel's pixel under it, or the surround.
    void expectExact() const {
        const Area& area = shown.pictureArea();
        for (int y = 0; y < shown.size().height; ++y)
            for (int x = 0; x < shown.size().width; ++x) {
                const bool isPanel =
                    x >= area.left && x < area.left + area.width && y >= area.top && y < area.top + area.height;
                const int panelX = (x - area.left) * 320 / area.width;
                const int panelY = (y - area.top) * 240 / area.height;
                const uint32_t expected =
                    isPanel ? toRgb888(panel[static_cast<size_t>(panelY * 320 + panelX)]) : 0x26292EU;
                ASSERT_EQ(at(x, y), expected) << x << "," << y;
            }
    }

    Picture panel;
    WindowPicture shown;
};

TEST_F(WindowPictureTest, ShowsEachPixelAsABlockWithinTheSurround) {
    for (const Extent size :
         {Extent{320, 240}, Extent{700, 800}, Extent{960, 720}, Extent{1280, 960}, Extent{200, 500}, Extent{1, 1}}) {
        shown.fit(size);
        EXPECT_EQ(text(shown.draw(panel)), text(Area{0, 0, size.width, size.height}));
        expectExact();
    }
}

TEST_F(WindowPictureTest, DrawsOnlyWhatHasChanged) {
    shown.fit({700, 800}); // twice, at 30,160
    shown.draw(panel);
    EXPECT_EQ(shown.draw(panel).width, 0);
    panel[0] ^= 1U;
    EXPECT_EQ(text(shown.draw(panel)), "2x2 at 30,160");
    panel[76799] ^= 1U;
    EXPECT_EQ(text(shown.draw(panel)), "2x2 at 668,638");
    panel[320 * 10 + 5] ^= 1U;
    panel[320 * 12 + 9] ^= 1U;
    EXPECT_EQ(text(shown.draw(panel)), "10x6 at 40,180");
    expectExact();
}

TEST_F(WindowPictureTest, KeepsAShrunkPictureTrueWhileItChanges) {
    shown.fit({150, 111});
    shown.draw(panel);
    for (size_t i = 7; i < panel.size(); i += 2003) {
        panel[i] ^= 0x8410U;
        shown.draw(panel);
    }
    expectExact();
}

TEST_F(WindowPictureTest, IsDrawnAnewForAnotherSize) {
    shown.fit({640, 480});
    shown.draw(panel);
    shown.fit({640, 500});
    EXPECT_EQ(text(shown.draw(panel)), "640x500 at 0,0");
    expectExact();
}

} // namespace
