#include "settings/nvram.h"
#include "tests/support/call_log.h"
#include "tests/support/fake_device.h"
#include "tests/support/fake_settings.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <memory>

namespace {

struct Freed {
    void operator()(char* block) const { std::free(block); }
};
using Result = std::unique_ptr<char, Freed>;

constexpr int INDICES[] = {INT_MIN, -1, 0, 1, 2, 3, 4, 255, INT_MAX};

class NvramFunctions : public testing::Test {
  protected:
    NvramFunctions() { restartFakeSettings(); }

    // The index that a read with `index` hands to the driver, as the log shows it.
    static std::string indexSentFor(int index) {
        const Result value(nvram_get(index, "ShowPass"));
        const std::string log = callLog().take();
        const size_t from = log.find("index ");
        return log.substr(from, log.find(',', from) - from);
    }
};

TEST_F(NvramFunctions, ReadingIsOneOpenOneRequestOneClose) {
    fakeSettings().working[2]["ShowPass"] = "1";
    const Result value(nvram_get(0, "ShowPass"));
    EXPECT_STREQ(value.get(), "1");
    EXPECT_EQ(
        callLog().take(), "open(\"/dev/apsoc_nvram\", O_RDONLY) = 700\n"
                          "ioctl(700, 0x1001, index 2, \"ShowPass\")\n"
                          "close(700)\n");
}

TEST_F(NvramFunctions, WritingIsOneOpenOneRequestOneCloseAndNoCommit) {
    EXPECT_EQ(nvram_set(1, "ShowPass", "0"), 0);
    EXPECT_EQ(
        callLog().take(), "open(\"/dev/apsoc_nvram\", O_RDONLY) = 700\n"
                          "ioctl(700, 0x1003, index 2, \"ShowPass\", \"0\")\n"
                          "close(700)\n");
    EXPECT_EQ(fakeSettings().working[2]["ShowPass"], "0");
    EXPECT_TRUE(fakeSettings().committed.empty());
}

TEST_F(NvramFunctions, Index0And1And2SendSection2AndIndex3Sends3) {
    EXPECT_EQ(indexSentFor(0), "index 2");
    EXPECT_EQ(indexSentFor(1), "index 2");
    EXPECT_EQ(indexSentFor(2), "index 2");
    EXPECT_EQ(indexSentFor(3), "index 3");
}

TEST_F(NvramFunctions, AnyOtherIndexIsSentUnchanged) {
    EXPECT_EQ(indexSentFor(-1), "index -1");
    EXPECT_EQ(indexSentFor(INT_MIN), "index -2147483648");
    EXPECT_EQ(indexSentFor(INT_MAX), "index 2147483647");
}

TEST_F(NvramFunctions, TheResultIsAlwaysADistinctHeapBlockOf1024BytesAlsoForAnEmptyValue) {
    const Result first(nvram_get(0, "absent"));
    const Result second(nvram_get(0, "absent"));
    EXPECT_STREQ(first.get(), "");
    EXPECT_STREQ(second.get(), "");
    EXPECT_NE(first.get(), second.get());
    std::memset(first.get(), 'a', 1024); // the sanitizer knows where the block ends
    std::memset(second.get(), 'b', 1024);
    EXPECT_EQ(first.get()[1023], 'a');
}

TEST_F(NvramFunctions, TheRtdevVariantsBehaveExactlyLikeTheOthersForEveryIndex) {
    for (const int index : INDICES) {
        const int stored = nvram_set(index, "name", "value");
        const Result plain(nvram_get(index, "name"));
        const std::string log = callLog().take();
        fakeSettings() = {};
        EXPECT_EQ(nvram_setRtdev(index, "name", "value"), stored) << index;
        const Result rtdev(nvram_getRtdev(index, "name"));
        EXPECT_STREQ(plain.get(), "value") << index;
        EXPECT_STREQ(rtdev.get(), "value") << index;
        EXPECT_EQ(callLog().take(), log) << index;
    }
}

TEST_F(NvramFunctions, AMissingDeviceReadsAsAnEmptyText) {
    fakeDevices().byPath["/dev/apsoc_nvram"].openError = ENOENT;
    const Result value(nvram_get(0, "ShowPass"));
    EXPECT_STREQ(value.get(), "");
    EXPECT_EQ(
        callLog().take(), "open(\"/dev/apsoc_nvram\", O_RDONLY) = -1 ENOENT\n"
                          "ioctl(-1, 0x1001, index 2, \"ShowPass\") = -1 EBADF\n"
                          "close(-1) = -1 EBADF\n");
}

TEST_F(NvramFunctions, WritingToAMissingDeviceGivesMinus1) {
    fakeDevices().byPath["/dev/apsoc_nvram"].openError = EACCES;
    EXPECT_EQ(nvram_set(0, "ShowPass", "1"), -1);
    EXPECT_EQ(
        callLog().take(), "open(\"/dev/apsoc_nvram\", O_RDONLY) = -1 EACCES\n"
                          "ioctl(-1, 0x1003, index 2, \"ShowPass\", \"1\") = -1 EBADF\n"
                          "close(-1) = -1 EBADF\n");
}

TEST_F(NvramFunctions, ARefusedReadIsAnEmptyTextAndARefusedWriteGivesWhatCloseGives) {
    fakeSettings().working[2]["ShowPass"] = "1";
    fakeSettings().refusal = EINVAL;
    const Result value(nvram_get(0, "ShowPass"));
    EXPECT_STREQ(value.get(), "");
    EXPECT_EQ(nvram_set(0, "ShowPass", "0"), 0);
}

TEST_F(NvramFunctions, ADriverThatReturnsNoTerminatorIsCutAfter1023Bytes) {
    fakeSettings().unterminated = true;
    const Result value(nvram_get(0, "ShowPass"));
    EXPECT_EQ(value.get(), std::string(1023, 'x'));
}

TEST_F(NvramFunctions, NamesAndValuesOf1023BytesAreWholeAndLongerOnesAreCutThere) {
    const std::string longest(1023, 'n');
    const std::string value(1023, 'v');
    for (const char* excess : {"", "!", "!!", "far behind the end of the block"}) {
        fakeSettings() = {};
        EXPECT_EQ(nvram_set(2, (longest + excess).c_str(), (value + excess).c_str()), 0);
        EXPECT_EQ(fakeSettings().working[2], (FakeSettings::Section{{longest, value}}));
        const Result stored(nvram_get(2, (longest + excess).c_str()));
        EXPECT_EQ(stored.get(), value);
    }
}

TEST_F(NvramFunctions, NullTextsAreEmptyOnes) {
    EXPECT_EQ(nvram_set(2, static_cast<char*>(nullptr), static_cast<char*>(nullptr)), 0);
    EXPECT_EQ(fakeSettings().working[2], (FakeSettings::Section{{"", ""}}));
    const Result value(nvram_get(2, static_cast<char*>(nullptr)));
    EXPECT_STREQ(value.get(), "");
}

TEST_F(NvramFunctions, EveryCallOpensTheDeviceAfreshAndLeavesNoDescriptor) {
    for (int call = 0; call < 2000; ++call) {
        EXPECT_EQ(nvram_set(0, "count", std::to_string(call).c_str()), 0);
        const Result value(nvram_get(0, "count"));
        ASSERT_EQ(value.get(), std::to_string(call));
        ASSERT_TRUE(fakeDevices().openDescriptors.empty());
    }
}

} // namespace
