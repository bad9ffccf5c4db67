#include "simulator/core_dump.h"

#include "tests/unit/simulator/temporary_directory.h"

#include <fstream>
#include <gtest/gtest.h>
#include <iterator>

using namespace ostrel;
namespace fs = std::filesystem;

namespace {

std::string contentOf(const std::string& path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

TEST(CoreDump, IsTheNewestFileOfThatName) {
    const TemporaryDirectory directory;
    std::ofstream(directory.file("core.7")) << "old";
    std::ofstream(directory.file("core.8")) << "new";
    std::ofstream(directory.file("score")) << "newest, and no dump";
    fs::create_directory(directory.file("core.d"));
    fs::create_symlink("score", directory.file("core.link"));
    fs::last_write_time(
        directory.file("core.7"), fs::last_write_time(directory.file("core.8")) - std::chrono::hours(1));
    std::ofstream(directory.file("kept")) << "the last crash's, which was longer";
    EXPECT_TRUE(keepCoreDump(directory.path, directory.file("kept")));
    EXPECT_EQ(contentOf(directory.file("kept")), "new");
}

TEST(CoreDump, ThatIsNotThereLeavesNoneOfAnEarlierCrash) {
    const TemporaryDirectory directory;
    std::ofstream(directory.file("kept")) << "the last crash's";
    EXPECT_FALSE(keepCoreDump(directory.path, directory.file("kept")));
    EXPECT_FALSE(fs::exists(directory.file("kept")));
    EXPECT_FALSE(keepCoreDump("/nowhere", directory.file("kept")));
}

TEST(CoreDump, ThatCannotBeCopiedIsNotKept) {
    const TemporaryDirectory directory;
    std::ofstream(directory.file("core")) << std::string(100000, 'x');
    EXPECT_FALSE(keepCoreDump(directory.path, "/dev/full/core"));
    EXPECT_FALSE(keepCoreDump(directory.path, directory.file("nowhere/core")));
}

} // namespace
