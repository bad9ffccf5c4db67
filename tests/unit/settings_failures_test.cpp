// The settings operations call by call, allocations included, and with each of the calls they make failing in turn.
#include "settings/memory.h"
#include "settings/nvram.h"
#include "settings/persistence.h"
#include "tests/support/call_log.h"
#include "tests/support/fake_allocate.h"
#include "tests/support/fake_device.h"
#include "tests/support/fake_settings.h"
#include "tests/support/fake_system.h"

#include <cstdlib>
#include <cstring>
#include <functional>
#include <gtest/gtest.h>

namespace {

char buffer[NVRAM_TEXT_LENGTH];

// Releases a result as a program does.
std::string taken(char* result) {
    if (result == nullptr)
        return "null";
    std::string text = result;
    std::memset(result, 'z', NVRAM_TEXT_LENGTH); // all of the block is the caller's
    fakeMemory().blocks.erase(result);
    std::free(result);
    return text;
}

std::string read(void (Memory::*operation)(char*, char*)) {
    std::memset(buffer, '#', sizeof buffer);
    char name[] = "PIN";
    (Memory().*operation)(name, buffer);
    return buffer;
}

// What an operation gives: its result in words, "done" where it has none. `unfailing` is what it gives when nothing
// fails, `failing` what else it may give.
struct Operation {
    const char* name;
    std::function<std::string()> run;
    std::string unfailing;
    std::string failing;
};

std::string close(int result) {
    return result == 0 ? "0" : result == -1 ? "-1" : "neither 0 nor -1";
}

template<typename Function>
std::function<std::string()> plain(Function function) {
    return [function] {
        function();
        return std::string("done");
    };
}

const Operation OPERATIONS[] = {
    {"nvram_get", [] { return taken(nvram_get(1, "PIN")); }, "4321", ""},
    {"nvram_getRtdev", [] { return taken(nvram_getRtdev(0, "PIN")); }, "4321", ""},
    {"nvram_set", [] { return close(nvram_set(1, "PIN", "1")); }, "0", "-1"},
    {"nvram_setRtdev", [] { return close(nvram_setRtdev(0, "PIN", "1")); }, "0", "-1"},
    {"getSetting", [] { return read(&Memory::getSetting); }, "1234", ""},
    {"getNoSaveSetting", [] { return read(&Memory::getNoSaveSetting); }, "1234", ""},
    {"getSettingRtdev", [] { return read(&Memory::getSettingRtdev); }, "4321", ""},
    {"addValue", plain([] { Memory().addValue("PIN", "1"); }), "done", "done"},
    {"addValueRtdev", plain([] { Memory().addValueRtdev("PIN", "1"); }), "done", "done"},
    {"saveValues", plain([] { Memory().saveValues(); }), "done", "done"},
    {"saveValuesRtdev", plain([] { Memory().saveValuesRtdev(); }), "done", "done"},
    {"saveSetting", plain([] { Memory().saveSetting("PIN", "1"); }), "done", "done"},
    {"saveSettingRtdev", plain([] { Memory().saveSettingRtdev("PIN", "1"); }), "done", "done"},
    {"commit", plain([] { Memory().commit(); }), "done", "done"},
    {"Persistence", plain([] { const Persistence files("a", "b"); }), "done", "done"},
    {"persist", plain([] { Persistence("a", "b").persist("/tmp/x", "x"); }), "done", "done"},
    {"depersist", plain([] { Persistence("a", "b").depersist("x"); }), "done", "done"},
    {"copyFile", plain([] { Persistence("a", "b").copyFile("x", "/tmp/y"); }), "done", "done"},
};

class EachCall : public testing::Test {
  protected:
    EachCall() { restart(); }

    static void restart() {
        restartFakeSettings();
        fakeSystem() = {};
        fakeSystem().directories = {"/data/apps", "/data/apps/b-a"};
        fakeMemory() = {};
        fakeSettings().working = {{1, {{"PIN", "1234"}}}, {2, {{"PIN", "4321"}}}};
    }
};

TEST_F(EachCall, ThatFailsLeavesNoBlockNoDescriptorNoDirectoryAndASafeResult) {
    for (const Operation& operation : OPERATIONS) {
        restart();
        EXPECT_EQ(operation.run(), operation.unfailing) << operation.name;
        int calls = 0;
        for (;;) {
            restart();
            callLog().failCall(calls + 1);
            const std::string result = operation.run();
            if (!callLog().failureWasMet())
                break;
            ++calls;
            const std::string where =
                std::string(operation.name) + ", call " + std::to_string(calls) + ":\n" + callLog().take();
            EXPECT_TRUE(result == operation.unfailing || result == operation.failing) << result << " from " << where;
            EXPECT_TRUE(fakeMemory().blocks.empty()) << where;
            EXPECT_TRUE(fakeDevices().openDescriptors.empty()) << where;
            EXPECT_TRUE(fakeSystem().openDirectories.empty()) << where;
        }
        EXPECT_GE(calls, 3) << operation.name;
    }
}

TEST_F(EachCall, OfAReadThroughTheFunctionIsMadeInThisOrder) {
    EXPECT_EQ(taken(nvram_get(0, "PIN")), "4321");
    EXPECT_EQ(
        callLog().take(), "allocate(1024) = A\n"
                          "allocate(1024) = B\n"
                          "open(\"/dev/apsoc_nvram\", O_RDONLY) = 700\n"
                          "ioctl(700, 0x1001, index 2, \"PIN\")\n"
                          "allocate(1024) = C\n"
                          "release(B)\n"
                          "release(A)\n"
                          "close(700)\n");
}

TEST_F(EachCall, OfAWriteThroughTheFunctionIsMadeInThisOrder) {
    EXPECT_EQ(nvram_set(0, "PIN", "1"), 0);
    EXPECT_EQ(
        callLog().take(), "allocate(1024) = A\n"
                          "allocate(1024) = B\n"
                          "open(\"/dev/apsoc_nvram\", O_RDONLY) = 700\n"
                          "ioctl(700, 0x1003, index 2, \"PIN\", \"1\")\n"
                          "release(A)\n"
                          "release(B)\n"
                          "close(700)\n");
}

TEST_F(EachCall, OfAReadThroughTheObjectIsMadeInThisOrder) {
    EXPECT_EQ(read(&Memory::getSetting), "1234");
    EXPECT_EQ(
        callLog().take(), "allocate(1024) = A\n"
                          "allocate(1024) = B\n"
                          "open(\"/dev/apsoc_nvram\", O_RDONLY) = 700\n"
                          "ioctl(700, 0x1001, index 1, \"PIN\")\n"
                          "close(700)\n"
                          "release(A)\n"
                          "release(B)\n");
}

TEST_F(EachCall, OfASavedSettingIsMadeInThisOrder) {
    Memory().saveSettingRtdev("PIN", "1");
    EXPECT_EQ(
        callLog().take(), "allocate(1024) = A\n"
                          "allocate(1024) = B\n"
                          "open(\"/dev/apsoc_nvram\", O_RDONLY) = 700\n"
                          "ioctl(700, 0x1003, index 2, \"PIN\", \"1\")\n"
                          "close(700)\n"
                          "release(A)\n"
                          "release(B)\n"
                          "open(\"/dev/apsoc_nvram\", O_RDONLY) = 700\n"
                          "ioctl(700, 0x1004, index 2)\n"
                          "close(700)\n");
}

TEST_F(EachCall, WithoutMemoryForItsTextsIsNotMade) {
    callLog().failCall(1);
    EXPECT_EQ(taken(nvram_get(0, "PIN")), "");
    EXPECT_EQ(
        callLog().take(), "allocate(1024) = null\n"
                          "allocate(1024) = A\n"
                          "open(\"/dev/apsoc_nvram\", O_RDONLY) = 700\n"
                          "allocate(1024) = B\n"
                          "release(A)\n"
                          "release(null)\n"
                          "close(700)\n");
    callLog().failCall(2);
    EXPECT_EQ(nvram_set(2, "PIN", "1"), -1);
    EXPECT_EQ(fakeSettings().working[2]["PIN"], "4321");
}

TEST_F(EachCall, AResultWithoutABlockOfItsOwnIsTheValuesBlock) {
    callLog().failCall(3 + 2); // two allocations, open and ioctl before it
    EXPECT_EQ(taken(nvram_get(0, "PIN")), "4321");
    EXPECT_EQ(
        callLog().take(), "allocate(1024) = A\n"
                          "allocate(1024) = B\n"
                          "open(\"/dev/apsoc_nvram\", O_RDONLY) = 700\n"
                          "ioctl(700, 0x1001, index 2, \"PIN\")\n"
                          "allocate(1024) = null\n"
                          "release(null)\n"
                          "release(A)\n"
                          "close(700)\n");
}

TEST_F(EachCall, AValuesBlockThatTheDriverFilledWholeIsTerminatedBeforeItBecomesTheResult) {
    fakeSettings().unterminated = true;
    callLog().failCall(3 + 2);
    EXPECT_EQ(taken(nvram_get(0, "PIN")), std::string(1023, 'x'));
}

TEST_F(EachCall, WithoutAnyMemoryGivesNull) {
    for (const int blocks : {0, 1}) {
        fakeMemory().blocksLeft = blocks;
        EXPECT_EQ(taken(nvram_get(0, "PIN")), "null") << blocks;
        fakeMemory().blocksLeft = blocks;
        EXPECT_EQ(nvram_set(0, "PIN", "1"), -1) << blocks;
        fakeMemory().blocksLeft = blocks;
        EXPECT_EQ(read(&Memory::getSetting), "") << blocks;
        EXPECT_TRUE(fakeMemory().blocks.empty()) << blocks;
        EXPECT_TRUE(fakeDevices().openDescriptors.empty()) << blocks;
    }
    EXPECT_EQ(fakeSettings().working[2]["PIN"], "4321");
}

} // namespace
