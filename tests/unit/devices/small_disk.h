// A disk of a few kilobytes.
#ifndef OSTREL_TESTS_UNIT_DEVICES_SMALL_DISK_H
#define OSTREL_TESTS_UNIT_DEVICES_SMALL_DISK_H

#include <cstdio>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <sched.h>
#include <string>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

namespace ostrel {

// Runs `test` with the path of an empty tmpfs of that size, in a child process with mounts of its own. The machine has
// to allow that, as it has to for the simulator; the test fails where it does not. What fails in the child is printed
// there and fails the test here.
inline void onSmallDisk(long bytes, const std::function<void(const std::string& disk)>& test) {
    std::string name = (std::filesystem::temp_directory_path() / "ostrel-disk-XXXXXX").string();
    ASSERT_NE(mkdtemp(name.data()), nullptr);
    fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        const int flags = CLONE_NEWNS | (geteuid() != 0 ? CLONE_NEWUSER : 0);
        const std::string options = "size=" + std::to_string(bytes) + ",mode=777";
        if (unshare(flags) != 0 || mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
            mount("tmpfs", name.c_str(), "tmpfs", 0, options.c_str()) != 0) {
            perror("a small disk needs namespaces and mounts");
            _exit(2);
        }
        test(name);
        fflush(nullptr);
        _exit(testing::Test::HasFailure() ? 1 : 0);
    }
    int status = -1;
    waitpid(child, &status, 0);
    std::filesystem::remove(name);
    EXPECT_EQ(status, 0);
}

} // namespace ostrel

#endif
