#include "lock/backlight.h"
#include "tests/support/call_log.h"
#include "tests/support/fake_device.h"
#include "tests/support/fake_system.h"

#include <cerrno>
#include <gtest/gtest.h>

namespace {

constexpr char DEVICE[] = "/dev/ostrel_backlight";

class Backlight : public ::testing::Test {
  protected:
    Backlight() {
        callLog() = {};
        fakeSystem() = {};
        fakeDevices() = {};
        fakeDevices().byPath[DEVICE] = {};
    }
    ~Backlight() override {
        fakeDevices() = {};
        fakeSystem() = {};
    }
};

TEST_F(Backlight, IsSwitchedOnByRequestTenAndOffByEleven) {
    EXPECT_EQ(backlightEnable(), 0);
    EXPECT_EQ(
        callLog().take(), "open(\"/dev/ostrel_backlight\", O_RDONLY) = 700\n"
                          "ioctl(700, 0xa, 1)\n"
                          "close(700)\n");
    EXPECT_EQ(backlightDisable(), 0);
    EXPECT_EQ(
        callLog().take(), "open(\"/dev/ostrel_backlight\", O_RDONLY) = 700\n"
                          "ioctl(700, 0xb, 1)\n"
                          "close(700)\n");
}

TEST_F(Backlight, AMissingNodeIsCreatedOnceAndOpenedAgain) {
    fakeDevices().byPath[DEVICE].openError = ENOENT;
    fakeSystem().run = [](const std::string&) {
        fakeDevices().byPath[DEVICE].openError = 0;
        return 0;
    };
    EXPECT_EQ(backlightEnable(), 0);
    EXPECT_EQ(
        callLog().take(), "open(\"/dev/ostrel_backlight\", O_RDONLY) = -1 ENOENT\n"
                          "system(\"mknod /dev/ostrel_backlight c `cat /proc/devices | grep ostrel_backlight | "
                          "awk '{print $1}'` 0\")\n"
                          "open(\"/dev/ostrel_backlight\", O_RDONLY) = 700\n"
                          "ioctl(700, 0xa, 1)\n"
                          "close(700)\n");
}

TEST_F(Backlight, ANodeThatCannotBeMadeFailsTheRequestAndTheClosing) {
    fakeDevices().byPath[DEVICE].openError = ENOENT;
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(backlightDisable(), -1);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "ioctl period: Bad file descriptor\n");
    EXPECT_TRUE(fakeDevices().openDescriptors.empty());
}

TEST_F(Backlight, ARefusedRequestIsReportedAndTheDeviceClosed) {
    fakeDevices().byPath[DEVICE].answer = [](unsigned long, void*) { return ENOTTY; };
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(backlightEnable(), 0);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "ioctl period: Inappropriate ioctl for device\n");
    EXPECT_TRUE(fakeDevices().openDescriptors.empty());
}

} // namespace
