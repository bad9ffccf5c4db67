// The fakes of the operating system: what is not theirs must reach the real one.
#include "tests/support/call_log.h"
#include "tests/support/fake_device.h"
#include "tests/support/fake_settings.h"
#include "tests/support/fake_sleep.h"
#include "tests/support/fake_system.h"

#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace {

TEST(FakeDevices, FilesThatAreNoFakeDeviceAreTheRealOnes) {
    restartFakeSettings();
    const int file = open("/proc/self/exe", O_RDONLY);
    ASSERT_GE(file, 0);
    int readable = 0;
    EXPECT_EQ(ioctl(file, FIONREAD, &readable), 0);
    EXPECT_GT(readable, 0);
    EXPECT_EQ(close(file), 0);
    EXPECT_EQ(open("/nowhere/to/be/found", O_RDONLY), -1);
    EXPECT_EQ(errno, ENOENT);
    EXPECT_EQ(callLog().take(), "");
}

TEST(FakeDevices, TwoOpenDescriptorsDifferAndAFreedOneIsUsedAgain) {
    restartFakeSettings();
    EXPECT_EQ(open("/dev/apsoc_nvram", O_RDONLY), 700);
    EXPECT_EQ(open("/dev/apsoc_nvram", O_RDWR), 701);
    EXPECT_EQ(close(700), 0);
    EXPECT_EQ(close(700), -1);
    EXPECT_EQ(open("/dev/apsoc_nvram", O_RDONLY), 700);
    EXPECT_EQ(fakeDevices().openDescriptors.size(), 2U);
    EXPECT_EQ(
        callLog().take(), "open(\"/dev/apsoc_nvram\", O_RDONLY) = 700\n"
                          "open(\"/dev/apsoc_nvram\", 0x2) = 701\n"
                          "close(700)\n"
                          "open(\"/dev/apsoc_nvram\", O_RDONLY) = 700\n");
}

TEST(FakeDevices, TheChosenCallFailsAndTheOthersDoNot) {
    restartFakeSettings();
    callLog().failCall(2);
    EXPECT_EQ(open("/dev/apsoc_nvram", O_RDONLY), 700);
    EXPECT_FALSE(callLog().failureWasMet());
    EXPECT_EQ(close(700), -1);
    EXPECT_TRUE(callLog().failureWasMet());
    EXPECT_EQ(open("/dev/apsoc_nvram", O_RDONLY), 700);
    EXPECT_EQ(close(700), 0);
    EXPECT_EQ(
        callLog().take(), "open(\"/dev/apsoc_nvram\", O_RDONLY) = 700\n"
                          "close(700) = -1 EIO\n"
                          "open(\"/dev/apsoc_nvram\", O_RDONLY) = 700\n"
                          "close(700)\n");
}

TEST(FakeSystem, DirectoriesElsewhereAreTheRealOnes) {
    callLog() = {};
    fakeSystem() = {};
    DIR* const root = opendir("/");
    ASSERT_NE(root, nullptr);
    EXPECT_GE(dirfd(root), 0);
    EXPECT_EQ(closedir(root), 0);
    EXPECT_EQ(opendir("/data"), nullptr);
    EXPECT_EQ(opendir("/database"), nullptr);
    EXPECT_EQ(callLog().take(), "opendir(\"/data\") = null\n");
}

TEST(FakeSleep, SleepsAreLoggedAddedUpAndMayEndTheWait) {
    callLog() = {};
    fakeSleep() = {};
    EXPECT_EQ(sleep(3), 0U);
    EXPECT_EQ(usleep(20000), 0);
    EXPECT_EQ(fakeSleep().sleptUs, 3020000U);
    EXPECT_EQ(callLog().take(), "sleep(3)\nusleep(20000)\n");
    fakeSleep().log = false;
    fakeSleep().duringSleep = [](uint64_t) { throw std::string("enough"); };
    EXPECT_THROW(usleep(1), std::string);
    EXPECT_EQ(callLog().take(), "");
}

TEST(CallLog, GoesIntoAListThatItSharesWithOthers) {
    callLog() = {};
    std::vector<std::string> lines = {"drawn before"};
    callLog().shareWith(&lines);
    fakeSleep() = {};
    usleep(7);
    EXPECT_EQ(callLog().take(), "drawn before\nusleep(7)\n");
    callLog().shareWith(nullptr);
}

} // namespace
