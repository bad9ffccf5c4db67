// ImagePNG: images by index, drawn replacing and blending, and files that cannot be used.
#include "display/allocate.h"
#include "display/panel.h"
#include "gui/display.h"
#include "tests/support/guarded_canvas.h"
#include "tests/support/panel_file.h"
#include "tests/support/png_writer.h"
#include "tests/support/scale.h"

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

using namespace ostrel;

namespace {

// The path that open refuses as if the program were not allowed to read it: root always is.
std::string forbiddenPath;

class TemporaryFile {
  public:
    explicit TemporaryFile(const Bytes& bytes) : path(testing::TempDir() + "ostrel-image.png") {
        std::ofstream(path, std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    }
    ~TemporaryFile() { std::remove(path.c_str()); }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const std::string path;
};

// Two by two pixels: opaque red, opaque green, half transparent blue, invisible.
Bytes fourPixels() {
    return encodePng({2, 2, 6, 8, false, {255, 0, 0, 255, 0, 255, 0, 255, 0, 0, 255, 128, 255, 255, 255, 0}, {}, {}});
}

// Loads the file and returns what was printed on standard error.
std::string loadAndListen(ImagePNG& images, const std::string& path, int expectedIndex) {
    testing::internal::CaptureStderr();
    EXPECT_EQ(images.loadPNG(path.c_str()), expectedIndex);
    return testing::internal::GetCapturedStderr();
}

std::string lineFor(const std::string& path, const std::string& reason) {
    return "ostrel: no image from " + path + ": " + reason + ". Its place stays empty.\n";
}

bool isOneLineAbout(const std::string& text, const std::string& path) {
    return text.find(path) != std::string::npos && text.find('\n') == text.size() - 1;
}

} // namespace

extern "C" int openTaken(const char* path, int flags, mode_t mode) __asm__("open");
extern "C" int openTaken(const char* path, int flags, mode_t mode) {
    if (!forbiddenPath.empty() && forbiddenPath == path) {
        errno = EACCES;
        return -1;
    }
    return static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}

TEST(Images, AreNumberedInTheOrderOfLoading) {
    const TemporaryFile file(fourPixels());
    ImagePNG images;
    EXPECT_EQ(images.loadPNG(file.path.c_str()), 0);
    EXPECT_EQ(images.loadPNG(file.path.c_str()), 1);
    ImagePNG others;
    EXPECT_EQ(others.loadPNG(file.path.c_str()), 0);
}

TEST(Images, DrawnWithAZeroReplaceWhatIsThere) {
    const PanelFile panel;
    const TemporaryFile file(fourPixels());
    ImagePNG images;
    images.loadPNG(file.path.c_str());
    lcd_clear(0xFFFF);
    fillRect(0, 0, 320, 240, 0x1234);
    images.drawPNG(10, 20, 0, 0, 0);
    EXPECT_EQ(panel.at(10, 20), 0xF800);
    EXPECT_EQ(panel.at(11, 20), 0x07E0);
    EXPECT_EQ(panel.at(10, 21), mixed(0xFFFF, 0x001F, 128));
    EXPECT_EQ(panel.at(11, 21), 0xFFFF) << "an invisible pixel becomes the last clear's colour";
    EXPECT_EQ(panel.at(12, 20), 0x1234);
    EXPECT_EQ(panel.at(10, 22), 0x1234);
}

TEST(Images, DrawnWithAnotherABlendOverWhatIsThere) {
    const PanelFile panel;
    const TemporaryFile file(fourPixels());
    ImagePNG images;
    images.loadPNG(file.path.c_str());
    lcd_clear(0xFFFF);
    fillRect(0, 0, 320, 240, 0x1234);
    images.drawPNG(10, 20, 1, 0, 0);
    EXPECT_EQ(panel.at(10, 20), 0xF800);
    EXPECT_EQ(panel.at(11, 20), 0x07E0);
    EXPECT_EQ(panel.at(10, 21), mixed(0x1234, 0x001F, 128));
    EXPECT_EQ(panel.at(11, 21), 0x1234);
}

TEST(Images, SwapWithoutATraceOfTheEarlierOne) {
    const PanelFile panel;
    ImagePNG images;
    const Bytes invisible = encodePng({2, 2, 4, 8, false, Bytes(8, 0), {}, {}});
    {
        const TemporaryFile file(fourPixels());
        images.loadPNG(file.path.c_str());
    }
    const TemporaryFile file(invisible);
    images.loadPNG(file.path.c_str());
    lcd_clear(0x057D);
    images.drawPNG(10, 20, 0, 0, 0);
    images.drawPNG(10, 20, 0, 0, 1);
    EXPECT_EQ(panel.picture(), blankPicture(320, 240, 0x057D));
}

TEST(Images, OutlastTheirFile) {
    const PanelFile panel;
    ImagePNG images;
    {
        const TemporaryFile file(fourPixels());
        images.loadPNG(file.path.c_str());
    }
    images.drawPNG(0, 0, 0, 0, 0);
    EXPECT_EQ(panel.at(0, 0), 0xF800);
}

TEST(Images, AreCutAtThePanelsEdges) {
    const PanelFile panel;
    const TemporaryFile file(fourPixels());
    ImagePNG images;
    images.loadPNG(file.path.c_str());
    images.drawPNG(-1, -1, 1, 0, 0);
    images.drawPNG(319, 239, 1, 0, 0);
    images.drawPNG(320, 240, 1, 0, 0);
    Picture expected = blankPicture(320, 240, 0);
    expected.at(319, 239) = 0xF800;
    EXPECT_EQ(panel.picture(), expected);
}

TEST(Images, SurviveCoordinatesAndIndicesOfEveryKind) {
    const PanelFile panel;
    const TemporaryFile file(fourPixels());
    ImagePNG images;
    images.loadPNG(file.path.c_str());
    std::mt19937 random(11);
    for (long i = 0; i < scaled(20'000); ++i)
        images.drawPNG(
            wildCoordinate(random, -5, 325), wildCoordinate(random, -5, 245), wildCoordinate(random, 0, 1), 0,
            wildCoordinate(random, -1, 2));
    EXPECT_EQ(panel.picture(), cut(panelCanvas(), {0, 0, 320, 240}));
}

TEST(Images, ThatWereNeverLoadedDrawNothing) {
    const PanelFile panel;
    ImagePNG images;
    for (const int index : {INT_MIN, -1, 0, 1, INT_MAX})
        images.drawPNG(0, 0, 0, 0, index);
    EXPECT_EQ(panel.picture(), blankPicture(320, 240, 0));
}

TEST(ImageFile, ThatIsMissingKeepsItsIndexAndSaysSoOnce) {
    const PanelFile panel;
    ImagePNG images;
    EXPECT_EQ(loadAndListen(images, "/nowhere/a.png", 0), lineFor("/nowhere/a.png", "No such file or directory"));
    const TemporaryFile file(fourPixels());
    EXPECT_EQ(loadAndListen(images, file.path, 1), "");
    testing::internal::CaptureStderr();
    images.drawPNG(0, 0, 0, 0, 0);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(panel.picture(), blankPicture(320, 240, 0));
    images.drawPNG(0, 0, 0, 0, 1);
    EXPECT_EQ(panel.at(0, 0), 0xF800);
}

TEST(ImageFile, ThatIsSomethingElseSaysWhat) {
    ImagePNG images;
    EXPECT_EQ(loadAndListen(images, "/tmp", 0), lineFor("/tmp", "Is a directory"));
    {
        const TemporaryFile file({'G', 'I', 'F', '8', '9', 'a', 0, 0, 0, 0, 0});
        EXPECT_EQ(loadAndListen(images, file.path, 1), lineFor(file.path, "it is not a PNG file"));
    }
    {
        const TemporaryFile file(Bytes{});
        EXPECT_EQ(loadAndListen(images, file.path, 2), lineFor(file.path, "it is not a PNG file"));
    }
    testing::internal::CaptureStderr();
    EXPECT_EQ(images.loadPNG(static_cast<char*>(nullptr)), 3);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), lineFor("(null)", "no file was named"));
}

TEST(ImageFile, ThatIsAPipeNobodyWritesToBlocksNothing) {
    const std::string path = testing::TempDir() + "ostrel-image-pipe";
    std::remove(path.c_str());
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    ImagePNG images;
    EXPECT_TRUE(isOneLineAbout(loadAndListen(images, path, 0), path));
    std::remove(path.c_str());
}

TEST(ImageFile, ThatMayNotBeReadSaysSo) {
    const TemporaryFile file(fourPixels());
    forbiddenPath = file.path;
    ImagePNG images;
    EXPECT_EQ(loadAndListen(images, file.path, 0), lineFor(file.path, "Permission denied"));
    forbiddenPath.clear();
}

TEST(ImageFile, CutAtEvery64thByteGivesOneLine) {
    PngPicture noise{40, 30, 6, 8, true, Bytes(4800), {}, {}};
    std::mt19937 random(5);
    for (uint8_t& sample : noise.samples)
        sample = static_cast<uint8_t>(random());
    const Bytes whole = encodePng(noise);
    ASSERT_GT(whole.size(), 4800U);
    ImagePNG images;
    int index = 0;
    for (size_t length = 0; length < whole.size(); length += 64) {
        const TemporaryFile file(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length)));
        const std::string said = loadAndListen(images, file.path, index++);
        ASSERT_TRUE(isOneLineAbout(said, file.path)) << "cut at " << length << ": " << said;
    }
    const TemporaryFile file(whole);
    EXPECT_EQ(loadAndListen(images, file.path, index), "");
}

TEST(ImageFile, WithAWrongChecksumInAnyChunkGivesOneLine) {
    const Bytes whole = encodePng({4, 1, 3, 2, false, {0x1B}, Bytes(12, 0x40), {0, 128, 255}});
    ImagePNG images;
    int index = 0;
    for (size_t chunk = 8; chunk < whole.size();) {
        const size_t length = static_cast<size_t>(whole[chunk + 2]) << 8 | whole[chunk + 3];
        Bytes damaged = whole;
        damaged[chunk + 8 + length] ^= 1;
        const TemporaryFile file(damaged);
        const std::string said = loadAndListen(images, file.path, index++);
        EXPECT_TRUE(isOneLineAbout(said, file.path)) << "chunk at " << chunk << ": " << said;
        chunk += 12 + length;
    }
    EXPECT_EQ(index, 5) << "IHDR, PLTE, tRNS, IDAT, IEND";
}

TEST(ImageFile, WithASizeThatNoPanelHasGivesOneLine) {
    ImagePNG images;
    {
        const TemporaryFile file(pngWithSize(0, 0));
        EXPECT_TRUE(isOneLineAbout(loadAndListen(images, file.path, 0), file.path));
    }
    const TemporaryFile file(pngWithSize(10000, 10000));
    EXPECT_EQ(
        loadAndListen(images, file.path, 1), lineFor(file.path, "its 10000x10000 pixels are more than 1024x1024"));
}

TEST(ImageFile, ThatIsTooLongIsNotRead) {
    const TemporaryFile file(fourPixels());
    ASSERT_EQ(truncate(file.path.c_str(), (8 << 20) + 1), 0);
    ImagePNG images;
    EXPECT_EQ(loadAndListen(images, file.path, 0), lineFor(file.path, "it is longer than 8388608 bytes"));
}

namespace {

long allocationsLeft = -1;
size_t largestAllocation = 0;

void* allocateUntilNoneIsLeft(size_t bytes) {
    largestAllocation = std::max(largestAllocation, bytes);
    if (allocationsLeft == 0)
        return nullptr;
    --allocationsLeft;
    return std::malloc(bytes);
}

} // namespace

TEST(ImageFile, GivesOneLineWhicheverAllocationFails) {
    const PanelFile panel;
    const TemporaryFile file(fourPixels());
    replaceAllocator(allocateUntilNoneIsLeft);
    ImagePNG images;
    int failures = 0;
    for (;; ++failures) {
        ASSERT_LT(failures, 100);
        allocationsLeft = failures;
        const std::string said = loadAndListen(images, file.path, failures);
        if (said.empty())
            break;
        ASSERT_TRUE(isOneLineAbout(said, file.path)) << said;
        images.drawPNG(0, 0, 0, 0, failures);
    }
    replaceAllocator(nullptr);
    EXPECT_GT(failures, 5) << "the file, the decoder and the pixels all take memory";
    EXPECT_EQ(panel.picture(), blankPicture(320, 240, 0));
    images.drawPNG(0, 0, 0, 0, failures);
    EXPECT_EQ(panel.at(0, 0), 0xF800);
}

TEST(ImageFile, IsRefusedBeforeMemoryIsTakenForItsPixels) {
    allocationsLeft = -1;
    largestAllocation = 0;
    const TemporaryFile file(pngWithSize(10000, 10000));
    replaceAllocator(allocateUntilNoneIsLeft);
    ImagePNG images;
    loadAndListen(images, file.path, 0);
    replaceAllocator(nullptr);
    EXPECT_LT(largestAllocation, 64U << 10);
}
