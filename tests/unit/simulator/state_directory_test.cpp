#include "simulator/failure.h"
#include "simulator/state_directory.h"
#include "tests/unit/simulator/temporary_directory.h"

#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <optional>
#include <sys/file.h>
#include <sys/syscall.h>
#include <unistd.h>

using namespace ostrel;
namespace fs = std::filesystem;

namespace {

std::function<void()> afterLocking; // runs when a lock was tried, whether it was had or not

} // namespace

// In place of the C library's.
extern "C" int flock(int fd, int operation) noexcept {
    const long result = syscall(SYS_flock, fd, operation);
    if (afterLocking)
        afterLocking();
    return static_cast<int>(result);
}

namespace {

TEST(StateDirectoryTest, IsMadeWithEverythingTheViewBinds) {
    const TemporaryDirectory directory;
    const StateDirectory state(directory.file("a/b"), false);
    EXPECT_EQ(fs::file_size(state.file("fb0")), 153600U);
    EXPECT_TRUE(fs::is_fifo(state.file("event0")));
    EXPECT_TRUE(fs::is_regular_file(state.file("apsoc_nvram")));
    EXPECT_TRUE(fs::is_regular_file(state.file("ostrel_backlight")));
    EXPECT_TRUE(fs::is_directory(state.file("mtdblock5")));
    EXPECT_EQ(state.page().programs, 0U);
}

TEST(StateDirectoryTest, KeepsSettingsAndFlashAndForgetsTheRest) {
    const TemporaryDirectory directory;
    {
        const StateDirectory state(directory.path, false);
        std::ofstream(state.file("settings")) << "PIN=1234";
        std::ofstream(state.file("mtdblock5/kept")) << "x";
        std::ofstream(state.file("fb0")) << "drawn";
        state.page().penDown = 1;
    }
    {
        const StateDirectory state(directory.path, false);
        EXPECT_EQ(fs::file_size(state.file("settings")), 8U);
        EXPECT_TRUE(fs::exists(state.file("mtdblock5/kept")));
        EXPECT_EQ(state.page().penDown, 0U);
        std::ifstream framebuffer(state.file("fb0"));
        EXPECT_EQ(framebuffer.get(), 0);
    }
    std::ofstream(directory.file("notes")) << "mine";
    const StateDirectory fresh(directory.path, true);
    EXPECT_FALSE(fs::exists(fresh.file("settings")));
    EXPECT_TRUE(fs::is_empty(fresh.file("mtdblock5")));
    EXPECT_TRUE(fs::exists(directory.file("notes"))); // not ours to remove
}

TEST(StateDirectoryTest, BelongsToOneSimulatorAtATime) {
    const TemporaryDirectory directory;
    std::optional<StateDirectory> first(std::in_place, directory.path, false);
    try {
        const StateDirectory second(directory.path, false);
        FAIL();
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.status, 125);
        EXPECT_EQ(
            failure.what(),
            "another simulator uses " + directory.path + "; end it, or choose another directory with --state");
    }
    first.reset();
    EXPECT_NO_THROW(StateDirectory(directory.path, false));
}

TEST(StateDirectoryTest, WaitsForWhoOnlyLooksWhetherASimulatorRuns) {
    const TemporaryDirectory directory;
    const int looker = open(directory.file("lock").c_str(), O_RDONLY | O_CREAT, 0600);
    ASSERT_EQ(flock(looker, LOCK_SH | LOCK_NB), 0);
    int tries = 0;
    afterLocking = [&] {
        if (++tries == 3)
            close(looker);
    };
    EXPECT_NO_THROW(StateDirectory(directory.path, false));
    afterLocking = nullptr;
    EXPECT_EQ(tries, 4);
}

TEST(StateDirectoryTest, SaysWhereItCannotBeMade) {
    const TemporaryDirectory directory;
    std::ofstream(directory.file("file")) << "x";
    try {
        const StateDirectory state(directory.file("file/below"), false);
        FAIL();
    } catch (const Failure& failure) {
        EXPECT_EQ(
            failure.what(), "cannot make the state directory " + directory.file("file/below") +
                                ": Not a directory; choose one with --state");
    }
}

TEST(StateDirectoryTest, FollowsTheUsersStateHome) {
    setenv("XDG_STATE_HOME", "/somewhere", 1);
    EXPECT_EQ(defaultStateDirectory("gallery"), "/somewhere/ostrel-sim/gallery");
    setenv("XDG_STATE_HOME", "relative is not allowed", 1);
    setenv("HOME", "/home/me", 1);
    EXPECT_EQ(defaultStateDirectory("gallery"), "/home/me/.local/state/ostrel-sim/gallery");
}

} // namespace
