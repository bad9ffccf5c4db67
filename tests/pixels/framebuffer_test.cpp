// Framebuffer devices in their formats, files, and what cannot be used, seen through a fake device.
#include "display/framebuffer.h"
#include "tests/support/fake_framebuffer.h"
#include "tests/support/picture.h"

#include <cstdio>
#include <cstring>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace ostrel;

namespace {

struct FramebufferTest : testing::Test {
    void SetUp() override { fakeDevices() = {}; }
    void TearDown() override {
        closeFramebuffer(framebuffer);
        EXPECT_EQ(fakeDevices().openCount, 0) << "a descriptor stays open";
    }

    bool open(const char* path = FAKE_FRAMEBUFFER) { return openFramebuffer(path, framebuffer, why); }
    std::string reason() const { return why.text; }

    Canvas canvas() { return canvasOver(picture.pixels.data(), 320, 240, 320); }
    uint16_t word(size_t offset) const {
        uint16_t value;
        memcpy(&value, fakeDevices().memory.data() + offset, sizeof value);
        return value;
    }
    uint32_t longWord(size_t offset) const {
        uint32_t value;
        memcpy(&value, fakeDevices().memory.data() + offset, sizeof value);
        return value;
    }

    Framebuffer framebuffer;
    Reason why;
    Picture picture = blankPicture(320, 240, 0);
};

void useRgb565(uint32_t width, uint32_t height, uint32_t strideBytes, uint8_t filler) {
    fakeDevices().setScreen(width, height, 16, strideBytes, filler);
    fakeDevices().setChannels({11, 5, 0}, {5, 6, 0}, {0, 5, 0});
}

} // namespace

TEST_F(FramebufferTest, ShowsRgb565AsItIsInLinesOfTheDevicesOwnLength) {
    useRgb565(320, 240, 700, 0xEE);
    ASSERT_TRUE(open()) << reason();
    picture.at(0, 0) = 0xF801;
    picture.at(319, 239) = 0x07E0;
    show(framebuffer, canvas(), {0, 0, 320, 240});
    EXPECT_EQ(word(0), 0xF801);
    EXPECT_EQ(word(239 * 700 + 638), 0x07E0);
    EXPECT_EQ(word(238 * 700 + 638), 0);
    EXPECT_EQ(word(640), 0xEEEE) << "the rest of a line is not ours";
}

TEST_F(FramebufferTest, SwapsRedAndBlueForBgr565) {
    fakeDevices().setScreen(320, 240, 16, 640, 0);
    fakeDevices().setChannels({0, 5, 0}, {5, 6, 0}, {11, 5, 0});
    ASSERT_TRUE(open()) << reason();
    picture.at(1, 0) = 0xF800;
    picture.at(2, 0) = 0x07E0;
    picture.at(3, 0) = 0x001E;
    show(framebuffer, canvas(), {0, 0, 320, 240});
    EXPECT_EQ(word(2), 0x001F);
    EXPECT_EQ(word(4), 0x07E0);
    EXPECT_EQ(word(6), 0xF000);
}

TEST_F(FramebufferTest, WidensToXrgb8888) {
    fakeDevices().setScreen(320, 240, 32, 1280, 0);
    fakeDevices().setChannels({16, 8, 0}, {8, 8, 0}, {0, 8, 0});
    ASSERT_TRUE(open()) << reason();
    picture.at(0, 1) = 0xFFFF;
    picture.at(1, 1) = 0x8410;
    picture.at(2, 1) = 0xF800;
    show(framebuffer, canvas(), {0, 0, 320, 240});
    EXPECT_EQ(longWord(1280), 0xFFFFFFFFU);
    EXPECT_EQ(longWord(1284), 0xFF848284U);
    EXPECT_EQ(longWord(1288), 0xFFFF0000U);
    EXPECT_EQ(longWord(0), 0xFF000000U);
}

TEST_F(FramebufferTest, ReadsBackEveryColourThatItShowedInEveryFormat) {
    const fb_bitfield high{11, 5, 0};
    const fb_bitfield middle{5, 6, 0};
    const fb_bitfield low{0, 5, 0};
    struct Case {
        const char* name;
        uint32_t bits;
        fb_bitfield red, green, blue;
    };
    const Case cases[] = {
        {"RGB565", 16, high, middle, low},
        {"BGR565", 16, low, middle, high},
        {"XRGB8888", 32, {16, 8, 0}, {8, 8, 0}, {0, 8, 0}},
    };
    for (size_t i = 0; i < picture.pixels.size(); ++i)
        picture.pixels[i] = static_cast<uint16_t>(i);
    for (const Case& format : cases) {
        SCOPED_TRACE(format.name);
        fakeDevices() = {};
        fakeDevices().setScreen(320, 240, format.bits, 1300, 0);
        fakeDevices().setChannels(format.red, format.green, format.blue);
        ASSERT_TRUE(open()) << reason();
        show(framebuffer, canvas(), {0, 0, 320, 240});
        Picture again = blankPicture(320, 240, 0);
        readBack(framebuffer, canvasOver(again.pixels.data(), 320, 240, 320));
        EXPECT_EQ(again, picture);
        closeFramebuffer(framebuffer);
    }
}

TEST_F(FramebufferTest, ShowsOnlyTheAreaAskedFor) {
    useRgb565(320, 240, 640, 0xEE);
    ASSERT_TRUE(open()) << reason();
    show(framebuffer, canvas(), {-5, 10, 4, 11});
    for (size_t i = 0; i < fakeDevices().memory.size(); i += 2)
        ASSERT_EQ(word(i), i >= 6400 && i < 6408 ? 0 : 0xEEEE) << i;
    show(framebuffer, canvas(), {50, 50, 50, 60});
    EXPECT_EQ(word(50 * 640 + 100), 0xEEEE);
}

TEST_F(FramebufferTest, CentresThePanelOnALargerScreenAndLeavesTheRestAlone) {
    useRgb565(800, 480, 1600, 0xEE);
    ASSERT_TRUE(open()) << reason();
    show(framebuffer, canvas(), {0, 0, 320, 240});
    EXPECT_EQ(word(120 * 1600 + 240 * 2), 0);
    EXPECT_EQ(word(359 * 1600 + 559 * 2), 0);
    EXPECT_EQ(word(119 * 1600 + 240 * 2), 0xEEEE);
    EXPECT_EQ(word(360 * 1600 + 240 * 2), 0xEEEE);
    EXPECT_EQ(word(120 * 1600 + 239 * 2), 0xEEEE);
    EXPECT_EQ(word(120 * 1600 + 560 * 2), 0xEEEE);
}

TEST_F(FramebufferTest, FollowsAScreenThatWasPanned) {
    useRgb565(320, 240, 640, 0);
    fakeDevices().screen.yoffset = 240;
    fakeDevices().layout.smem_len = 640 * 480;
    fakeDevices().memory.assign(size_t{640} * 480, 0xEE);
    ASSERT_TRUE(open()) << reason();
    show(framebuffer, canvas(), {0, 0, 320, 240});
    EXPECT_EQ(word(240 * 640 - 2), 0xEEEE);
    EXPECT_EQ(word(size_t{240} * 640), 0);
    EXPECT_EQ(word(480 * 640 - 2), 0);
}

TEST_F(FramebufferTest, FindsMemoryThatDoesNotStartOnAPage) {
    useRgb565(320, 240, 640, 0xEE);
    fakeDevices().layout.smem_start = 0x10000040;
    fakeDevices().memory.assign(640 * 240 + 0x40, 0xEE);
    ASSERT_TRUE(open()) << reason();
    show(framebuffer, canvas(), {0, 0, 320, 240});
    EXPECT_EQ(word(0x3E), 0xEEEE);
    EXPECT_EQ(word(0x40), 0);
}

TEST_F(FramebufferTest, RefusesASmallerScreen) {
    useRgb565(240, 320, 480, 0);
    EXPECT_FALSE(open());
    EXPECT_EQ(reason(), "its 240x320 pixels are fewer than 320x240");
}

TEST_F(FramebufferTest, RefusesAFormatThatItDoesNotKnow) {
    fakeDevices().setScreen(320, 240, 8, 320, 0);
    EXPECT_FALSE(open());
    EXPECT_EQ(reason(), "its pixel format (8 bits) is none of RGB565, BGR565 and XRGB8888");
    useRgb565(320, 240, 640, 0);
    fakeDevices().layout.type = FB_TYPE_PLANES;
    EXPECT_FALSE(open());
}

TEST_F(FramebufferTest, RefusesMemoryThatIsTooSmallForItsScreen) {
    useRgb565(320, 240, 640, 0);
    fakeDevices().layout.smem_len -= 1;
    EXPECT_FALSE(open());
    EXPECT_EQ(reason(), "its memory of 153599 bytes does not hold the screen that it describes");
    useRgb565(320, 240, 639, 0);
    EXPECT_FALSE(open());
    useRgb565(320, 240, 640, 0);
    fakeDevices().screen.yoffset = 0xFFFFFFFF;
    EXPECT_FALSE(open());
}

TEST_F(FramebufferTest, SaysWhenTheDeviceFails) {
    useRgb565(320, 240, 640, 0);
    fakeDevices().tellsLayout = false;
    EXPECT_FALSE(open());
    EXPECT_EQ(reason(), "it does not tell its layout: Input/output error");
    fakeDevices().tellsLayout = true;
    fakeDevices().canBeMapped = false;
    EXPECT_FALSE(open());
    EXPECT_EQ(reason(), "its memory cannot be mapped: Cannot allocate memory");
}

TEST_F(FramebufferTest, SaysWhatIsWrongWithAPath) {
    EXPECT_FALSE(open("/nowhere/fb0"));
    EXPECT_EQ(reason(), "No such file or directory");
    EXPECT_FALSE(open("/tmp"));
    EXPECT_EQ(reason(), "Is a directory");
    EXPECT_FALSE(open("/dev/null"));
    EXPECT_EQ(reason(), "it is neither a framebuffer device nor a file of 153600 bytes");
}

TEST_F(FramebufferTest, TakesAFileOnlyOfExactlyThePanelsSize) {
    const std::string path = testing::TempDir() + "ostrel-framebuffer-size";
    std::ofstream(path).close();
    ASSERT_EQ(truncate(path.c_str(), 153599), 0);
    EXPECT_FALSE(open(path.c_str()));
    ASSERT_EQ(truncate(path.c_str(), 153601), 0);
    EXPECT_FALSE(open(path.c_str()));
    ASSERT_EQ(truncate(path.c_str(), 153600), 0);
    EXPECT_TRUE(open(path.c_str())) << reason();
    EXPECT_EQ(framebuffer.device, -1);
    std::remove(path.c_str());
}
