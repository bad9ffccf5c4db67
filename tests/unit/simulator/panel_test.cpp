#include "simulator/failure.h"
#include "simulator/panel.h"
#include "simulator/png_file.h"
#include "tests/unit/simulator/temporary_directory.h"

#include <algorithm>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <png.h>
#include <unistd.h>

using namespace ostrel;

namespace {

class PanelTest : public testing::Test {
  protected:
    PanelTest() : file(directory.file("fb0")) {
        fd = open(file.c_str(), O_RDWR | O_CREAT, 0600);
        EXPECT_EQ(ftruncate(fd, 153600), 0);
    }
    ~PanelTest() override { close(fd); }

    void draw(int x, int y, uint16_t colour) const {
        EXPECT_EQ(pwrite(fd, &colour, sizeof colour, (y * 320 + x) * 2), 2);
    }

    TemporaryDirectory directory;
    std::string file;
    int fd;
    SharedPage page = {};
};

TEST_F(PanelTest, NoticesASinglePixel) {
    Panel panel(file, page);
    EXPECT_FALSE(panel.look());
    draw(319, 239, 0xF800);
    EXPECT_TRUE(panel.look());
    EXPECT_EQ(panel.picture()[76799], 0xF800);
    EXPECT_FALSE(panel.look());
}

TEST_F(PanelTest, IsBlackWhileDarkAndKeepsWhatIsDrawnMeanwhile) {
    Panel panel(file, page);
    draw(0, 0, 0xFFFF);
    EXPECT_TRUE(panel.look());
    for (std::atomic<uint32_t>* reason : {&page.backlightOff, &page.blanked}) {
        *reason = 4;
        EXPECT_TRUE(panel.isDark());
        EXPECT_TRUE(panel.look());
        EXPECT_EQ(panel.picture()[0], 0);
        draw(1, 0, 0x07E0);
        EXPECT_FALSE(panel.look());
        *reason = 0;
        EXPECT_TRUE(panel.look());
        EXPECT_EQ(panel.picture()[0], 0xFFFF);
        EXPECT_EQ(panel.picture()[1], 0x07E0);
    }
}

TEST_F(PanelTest, IsBlankUntilSomethingIsDrawn) {
    Panel panel(file, page);
    EXPECT_TRUE(panel.isBlank());
    draw(319, 239, 1);
    EXPECT_FALSE(panel.isBlank());
    EXPECT_TRUE(panel.look()); // which is news all the same
}

TEST_F(PanelTest, SurvivesAProgramThatTruncatesItsFramebuffer) {
    Panel panel(file, page);
    draw(0, 0, 0x1234);
    draw(0, 100, 0x1234);
    EXPECT_TRUE(panel.look());
    EXPECT_EQ(ftruncate(fd, 2), 0);
    EXPECT_TRUE(panel.look());
    EXPECT_EQ(panel.picture()[0], 0x1234);
    EXPECT_EQ(panel.picture()[32000], 0);
    EXPECT_EQ(std::filesystem::file_size(file), 153600U);
}

TEST_F(PanelTest, CannotBeMadeOfAMissingFile) {
    EXPECT_THROW(Panel(directory.file("missing"), page), Failure);
}

TEST(Colours, KeepBlackAndWhiteAndComeBackExactly) {
    EXPECT_EQ(toRgb888(0x0000), 0x000000U);
    EXPECT_EQ(toRgb888(0xFFFF), 0xFFFFFFU);
    EXPECT_EQ(toRgb888(0xF800), 0xFF0000U);
    EXPECT_EQ(toRgb888(0x07E0), 0x00FF00U);
    EXPECT_EQ(toRgb888(0x001F), 0x0000FFU);
    // A viewer that asks for 16 bits gets the nearest colour: it has to be the one the program drew.
    for (uint32_t colour = 0; colour < 65536; ++colour) {
        const uint32_t wide = toRgb888(static_cast<uint16_t>(colour));
        const auto back = [&](uint32_t shift, uint32_t most) { return ((wide >> shift & 255U) * most + 127) / 255; };
        ASSERT_EQ(back(16, 31) << 11 | back(8, 63) << 5 | back(0, 31), colour);
    }
}

TEST(PngFile, HoldsThePictureExactly) {
    const TemporaryDirectory directory;
    Picture picture(76800, 0x0000);
    picture[0] = 0xF800;
    picture[321] = 0x07E0;
    picture[76799] = 0x001F;
    writePng(directory.file("a.png"), picture);
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    ASSERT_NE(png_image_begin_read_from_file(&image, directory.file("a.png").c_str()), 0);
    EXPECT_EQ(image.width, 320U);
    EXPECT_EQ(image.height, 240U);
    image.format = PNG_FORMAT_RGB;
    std::vector<unsigned char> bytes(PNG_IMAGE_SIZE(image));
    ASSERT_NE(png_image_finish_read(&image, nullptr, bytes.data(), 0, nullptr), 0);
    const auto at = [&](size_t pixel) {
        return bytes[pixel * 3] << 16 | bytes[pixel * 3 + 1] << 8 | bytes[pixel * 3 + 2];
    };
    EXPECT_EQ(at(0), 0xFF0000);
    EXPECT_EQ(at(1), 0);
    EXPECT_EQ(at(321), 0x00FF00);
    EXPECT_EQ(at(76799), 0x0000FF);
}

TEST(PngFile, LeavesNothingHalfWrittenBehind) {
    const TemporaryDirectory directory;
    const Picture picture(76800);
    EXPECT_THROW(writePng(directory.file("missing/a.png"), picture), Failure);
    std::filesystem::create_directory(directory.file("b.png"));
    EXPECT_THROW(writePng(directory.file("b.png"), picture), Failure);
    EXPECT_TRUE(std::filesystem::is_empty(directory.file("b.png")));
}

} // namespace
