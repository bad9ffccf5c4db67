#include "simulator/failure.h"
#include "simulator/png_file.h"
#include "simulator/window/picture_file.h"
#include "tests/unit/simulator/temporary_directory.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

using namespace ostrel;

namespace {

TEST(PictureFile, NeverReplacesAnotherFile) {
    const TemporaryDirectory directory;
    const std::string name = directory.file("gallery");
    std::ofstream(name + "-2.png") << "mine";
    std::filesystem::create_symlink("nowhere", name + "-3.png");
    const Picture red(76800, 0xF800);
    EXPECT_EQ(savePicture(name, red), name + "-1.png");
    EXPECT_EQ(savePicture(name, red), name + "-4.png");
    EXPECT_EQ(readPng(name + "-1.png"), std::vector<uint32_t>(76800, 0xFF0000));
    std::string mine;
    std::ifstream(name + "-2.png") >> mine;
    EXPECT_EQ(mine, "mine");
    EXPECT_TRUE(std::filesystem::is_symlink(name + "-3.png"));
}

TEST(PictureFile, ThatCannotBeWrittenIsToldOf) {
    const TemporaryDirectory directory;
    const std::string name = directory.file("missing/gallery");
    try {
        savePicture(name, Picture(76800));
        FAIL() << "written";
    } catch (const Failure& failure) {
        EXPECT_EQ(
            failure.what(), "cannot write " + name + "-1.png: No such file or directory; make its directory first");
    }
    // The name can be taken, but the picture beside it cannot be written.
    std::filesystem::create_directories(directory.file("gallery-1.png.part"));
    EXPECT_THROW(savePicture(directory.file("gallery"), Picture(76800)), Failure);
    EXPECT_FALSE(std::filesystem::exists(directory.file("gallery-1.png")));
}

} // namespace
