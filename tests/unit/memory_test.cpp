#include "settings/memory.h"
#include "tests/support/call_log.h"
#include "tests/support/fake_device.h"
#include "tests/support/fake_settings.h"
#include "tests/support/fake_system.h"

#include <algorithm>
#include <cerrno>
#include <gtest/gtest.h>
#include <type_traits>
#include <vector>

namespace {

constexpr char UNTOUCHED = '#';

class MemoryObject : public testing::Test {
  protected:
    MemoryObject() {
        restartFakeSettings();
        fakeSystem() = {};
        fakeSettings().working = {{1, {{"Language", "el"}}}, {2, {{"Language", "in the second section"}}}};
    }

    Memory memory;
    std::vector<char> buffer = std::vector<char>(NVRAM_TEXT_LENGTH + 64, UNTOUCHED);

    // How many bytes from the buffer's start on were written.
    size_t written() const {
        const auto last = std::find_if(buffer.rbegin(), buffer.rend(), [](char byte) { return byte != UNTOUCHED; });
        return static_cast<size_t>(buffer.rend() - last);
    }
};

TEST_F(MemoryObject, HasNoDataOfItsOwn) {
    EXPECT_TRUE(std::is_empty<Memory>::value);
}

TEST_F(MemoryObject, ReadsTheMainSectionWithoutTheFunctionsIndexRule) {
    memory.getSetting("Language", buffer.data());
    EXPECT_STREQ(buffer.data(), "el");
    EXPECT_EQ(
        callLog().take(), "open(\"/dev/apsoc_nvram\", O_RDONLY) = 700\n"
                          "ioctl(700, 0x1001, index 1, \"Language\")\n"
                          "close(700)\n");
}

TEST_F(MemoryObject, ReadsTheRtdevSection) {
    memory.getSettingRtdev("Language", buffer.data());
    EXPECT_STREQ(buffer.data(), "in the second section");
    EXPECT_EQ(
        callLog().take(), "open(\"/dev/apsoc_nvram\", O_RDONLY) = 700\n"
                          "ioctl(700, 0x1001, index 2, \"Language\")\n"
                          "close(700)\n");
}

TEST_F(MemoryObject, GetSettingAndGetNoSaveSettingOnTheSameNameReturnTheSameText) {
    char other[NVRAM_TEXT_LENGTH];
    for (const char* name : {"Language", "absent", ""}) {
        memory.getSetting(name, buffer.data());
        const std::string log = callLog().take();
        memory.getNoSaveSetting(name, other);
        EXPECT_STREQ(other, buffer.data()) << name;
        EXPECT_EQ(callLog().take(), log) << name;
    }
}

TEST_F(MemoryObject, AddingIsOneRequestAndNoCommit) {
    memory.addValue("PIN", "1234");
    EXPECT_EQ(
        callLog().take(), "open(\"/dev/apsoc_nvram\", O_RDONLY) = 700\n"
                          "ioctl(700, 0x1003, index 1, \"PIN\", \"1234\")\n"
                          "close(700)\n");
    memory.addValueRtdev("ShowPass", "1");
    EXPECT_EQ(
        callLog().take(), "open(\"/dev/apsoc_nvram\", O_RDONLY) = 700\n"
                          "ioctl(700, 0x1003, index 2, \"ShowPass\", \"1\")\n"
                          "close(700)\n");
    EXPECT_TRUE(fakeSettings().committed.empty());
}

TEST_F(MemoryObject, SavingIsOneRequestForEachSection) {
    memory.saveValues();
    EXPECT_EQ(
        callLog().take(), "open(\"/dev/apsoc_nvram\", O_RDONLY) = 700\n"
                          "ioctl(700, 0x1004, index 1)\n"
                          "close(700)\n");
    EXPECT_EQ(fakeSettings().committed.count(2), 0U);
    memory.saveValuesRtdev();
    EXPECT_EQ(
        callLog().take(), "open(\"/dev/apsoc_nvram\", O_RDONLY) = 700\n"
                          "ioctl(700, 0x1004, index 2)\n"
                          "close(700)\n");
}

TEST_F(MemoryObject, SaveSettingIssuesExactlyTwoRequestsBothWithIndex1) {
    memory.saveSetting("PIN", "1234");
    EXPECT_EQ(
        callLog().take(), "open(\"/dev/apsoc_nvram\", O_RDONLY) = 700\n"
                          "ioctl(700, 0x1003, index 1, \"PIN\", \"1234\")\n"
                          "close(700)\n"
                          "open(\"/dev/apsoc_nvram\", O_RDONLY) = 700\n"
                          "ioctl(700, 0x1004, index 1)\n"
                          "close(700)\n");
    EXPECT_EQ(fakeSettings().committed[1]["PIN"], "1234");
}

TEST_F(MemoryObject, SaveSettingRtdevIssuesTheSameTwoRequestsWithIndex2) {
    memory.saveSettingRtdev("ScreenTimeout", "60");
    EXPECT_EQ(
        callLog().take(), "open(\"/dev/apsoc_nvram\", O_RDONLY) = 700\n"
                          "ioctl(700, 0x1003, index 2, \"ScreenTimeout\", \"60\")\n"
                          "close(700)\n"
                          "open(\"/dev/apsoc_nvram\", O_RDONLY) = 700\n"
                          "ioctl(700, 0x1004, index 2)\n"
                          "close(700)\n");
    EXPECT_EQ(fakeSettings().committed[2]["ScreenTimeout"], "60");
}

TEST_F(MemoryObject, ABatchIsOneRequestAValueOneSaveAndOneRestart) {
    memory.addValue("SSID", "Home");
    memory.addValue("WifiKey", "secret words");
    memory.saveValues();
    memory.commit();
    EXPECT_EQ(
        callLog().take(), "open(\"/dev/apsoc_nvram\", O_RDONLY) = 700\n"
                          "ioctl(700, 0x1003, index 1, \"SSID\", \"Home\")\n"
                          "close(700)\n"
                          "open(\"/dev/apsoc_nvram\", O_RDONLY) = 700\n"
                          "ioctl(700, 0x1003, index 1, \"WifiKey\", \"secret words\")\n"
                          "close(700)\n"
                          "open(\"/dev/apsoc_nvram\", O_RDONLY) = 700\n"
                          "ioctl(700, 0x1004, index 1)\n"
                          "close(700)\n"
                          "system(\"killall nvram_daemon\")\n"
                          "system(\"nvram_daemon &\")\n"
                          "system(\"init_system restart&\")\n");
}

TEST_F(MemoryObject, CommitIssuesTheThreeCommandsInOrderWhateverTheyExitWith) {
    fakeSystem().run = [](const std::string&) { return 1; };
    memory.commit();
    EXPECT_EQ(
        callLog().take(), "system(\"killall nvram_daemon\")\n"
                          "system(\"nvram_daemon &\")\n"
                          "system(\"init_system restart&\")\n");
}

TEST_F(MemoryObject, GetMacAndGetCloudIDLeaveTheCallersBufferUnchanged) {
    memory.getMac(buffer.data());
    memory.getCloudID(buffer.data());
    EXPECT_EQ(written(), 0U);
    EXPECT_EQ(callLog().take(), "");
}

TEST_F(MemoryObject, AReadWritesTheTextAndItsTerminatorAndNothingBehindIt) {
    memory.getSetting("Language", buffer.data());
    EXPECT_EQ(written(), 3U);
}

TEST_F(MemoryObject, AnUnknownNameARefusalAndAMissingDeviceReadAsAnEmptyText) {
    memory.getSetting("absent", buffer.data());
    EXPECT_EQ(buffer[0], 0);
    EXPECT_EQ(written(), 1U);

    buffer[0] = UNTOUCHED;
    fakeSettings().refusal = EIO;
    memory.getSettingRtdev("Language", buffer.data());
    EXPECT_EQ(buffer[0], 0);
    EXPECT_EQ(written(), 1U);

    buffer[0] = UNTOUCHED;
    fakeDevices().byPath["/dev/apsoc_nvram"].openError = ENOENT;
    callLog().take();
    memory.getNoSaveSetting("Language", buffer.data());
    EXPECT_EQ(buffer[0], 0);
    EXPECT_EQ(written(), 1U);
    EXPECT_EQ(
        callLog().take(), "open(\"/dev/apsoc_nvram\", O_RDONLY) = -1 ENOENT\n"
                          "ioctl(-1, 0x1001, index 1, \"Language\") = -1 EBADF\n"
                          "close(-1) = -1 EBADF\n");
}

TEST_F(MemoryObject, TheLongestValueFillsABufferOf1024BytesAndNeverMore) {
    fakeSettings().working[1]["longest"] = std::string(1023, 'v');
    memory.getSetting("longest", buffer.data());
    EXPECT_EQ(buffer.data(), std::string(1023, 'v'));
    EXPECT_EQ(written(), 1024U);

    fakeSettings().unterminated = true;
    memory.getSetting("longest", buffer.data());
    EXPECT_EQ(buffer.data(), std::string(1023, 'x'));
    EXPECT_EQ(written(), 1024U);
}

TEST_F(MemoryObject, NamesAndValuesPast1023BytesAreCutThere) {
    const std::string name(1023, 'n');
    const std::string value(1023, 'v');
    memory.addValue((name + "n").c_str(), (value + "v").c_str());
    memory.addValueRtdev((name + "and more").c_str(), (value + "and more").c_str());
    EXPECT_EQ(fakeSettings().working[1][name], value);
    EXPECT_EQ(fakeSettings().working[2][name], value);
    memory.getSetting((name + "n").c_str(), buffer.data());
    EXPECT_EQ(buffer.data(), value);
}

TEST_F(MemoryObject, TheNameMayStandInTheBufferThatTakesTheValue) {
    std::copy_n("Language", 9, buffer.begin());
    memory.getSetting(buffer.data(), buffer.data());
    EXPECT_STREQ(buffer.data(), "el");
}

} // namespace
