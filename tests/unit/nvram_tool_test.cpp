#include "apps/nvram/nvram_tool.h"
#include "tests/support/call_log.h"
#include "tests/support/fake_device.h"
#include "tests/support/fake_settings.h"
#include "tests/support/fake_system.h"

#include <cerrno>
#include <gtest/gtest.h>
#include <sstream>

namespace {

using Words = std::vector<std::string>;

class NvramTool : public testing::Test {
  protected:
    NvramTool() {
        restartFakeSettings();
        fakeSystem() = {};
        fakeSettings().working = {{1, {{"Language", "el"}, {"PIN", "4711"}}}, {2, {{"ShowPass", "1"}}}};
    }

    int run(const Words& words, const std::string& input = "") {
        std::istringstream in(input);
        std::ostringstream outStream;
        std::ostringstream errStream;
        const int code = runNvramTool(words, {in, outStream, errStream});
        out = outStream.str();
        err = errStream.str();
        return code;
    }

    FakeSettings::Section& section(int number) { return fakeSettings().working[number]; }

    std::string out;
    std::string err;
};

TEST_F(NvramTool, GetPrintsTheValueOfTheMainSection) {
    EXPECT_EQ(run({"get", "Language"}), 0);
    EXPECT_EQ(out, "el\n");
    EXPECT_EQ(err, "");
}

TEST_F(NvramTool, RtdevStandsAnywhereAndMeansTheSecondSection) {
    for (const Words& words :
         {Words{"--rtdev", "get", "ShowPass"}, Words{"get", "--rtdev", "ShowPass"},
          Words{"get", "ShowPass", "--rtdev"}}) {
        EXPECT_EQ(run(words), 0);
        EXPECT_EQ(out, "1\n");
    }
    EXPECT_EQ(run({"get", "ShowPass"}), 0);
    EXPECT_EQ(out, "\n");
}

TEST_F(NvramTool, SetStoresInTheWorkingCopyOnly) {
    EXPECT_EQ(run({"set", "Language", "de"}), 0);
    EXPECT_EQ(run({"set", "--rtdev", "ScreenTimeout=300"}), 0);
    EXPECT_EQ(section(1)["Language"], "de");
    EXPECT_EQ(section(2)["ScreenTimeout"], "300");
    EXPECT_EQ(out + err, "");
    EXPECT_TRUE(fakeSettings().committed.empty());
}

TEST_F(NvramTool, AValueMayHoldEqualsSignsBlanksDashesAndNothing) {
    EXPECT_EQ(run({"set", "a=b=c"}), 0);
    EXPECT_EQ(run({"set", "b", "x=y"}), 0);
    EXPECT_EQ(run({"set", "c", "two words"}), 0);
    EXPECT_EQ(run({"set", "d", "-5"}), 0);
    EXPECT_EQ(run({"set", "e", "--", "--5"}), 0);
    EXPECT_EQ(run({"set", "f=-"}), 0);
    EXPECT_EQ(run({"set", "PIN="}), 0);
    EXPECT_EQ(run({"set", "Language", ""}), 0);
    EXPECT_EQ(
        section(1), (FakeSettings::Section{
                        {"Language", ""},
                        {"PIN", ""},
                        {"a", "b=c"},
                        {"b", "x=y"},
                        {"c", "two words"},
                        {"d", "-5"},
                        {"e", "--5"},
                        {"f", "-"}}));
}

TEST_F(NvramTool, ADashReadsTheValueFromStandardInputWithoutItsLastLineEnd) {
    EXPECT_EQ(run({"set", "PIN", "-"}, "1234\n"), 0);
    EXPECT_EQ(section(1)["PIN"], "1234");
    EXPECT_EQ(run({"set", "PIN", "-"}, "5678"), 0);
    EXPECT_EQ(section(1)["PIN"], "5678");
    EXPECT_EQ(run({"set", "notes", "-"}, "first\nsecond\n\n"), 0);
    EXPECT_EQ(section(1)["notes"], "first\nsecond\n");
    EXPECT_EQ(run({"set", "notes", "-"}, "\n"), 0);
    EXPECT_EQ(section(1)["notes"], "");
}

TEST_F(NvramTool, InputWithoutAByteOrWithAZeroByteChangesNothing) {
    EXPECT_EQ(run({"set", "PIN", "-"}, ""), 1);
    EXPECT_EQ(err, "ostrel-nvram: standard input is empty; for an empty value give an empty line.\n");
    EXPECT_EQ(
        run({"set", "PIN", "-"}, std::string(
                                     "12\0"
                                     "34",
                                     5)),
        1);
    EXPECT_EQ(err, "ostrel-nvram: the value contains a zero byte.\n");
    EXPECT_EQ(section(1)["PIN"], "4711");
}

TEST_F(NvramTool, NamesAndValuesOf1023BytesAreTakenAndLongerOnesRefusedInsteadOfCut) {
    const std::string longest(1023, 'x');
    EXPECT_EQ(run({"set", longest, longest}), 0);
    EXPECT_EQ(run({"set", "piped", "-"}, longest + "\n"), 0);
    EXPECT_EQ(section(1)["piped"], longest);
    EXPECT_EQ(run({"get", longest}), 0);
    EXPECT_EQ(out, longest + "\n");

    callLog().take();
    EXPECT_EQ(run({"set", "Language", longest + "x"}), 2);
    EXPECT_EQ(err, "ostrel-nvram: the value is longer than 1023 bytes. See ostrel-nvram --help.\n");
    EXPECT_EQ(run({"set", "Language", "-"}, longest + "x"), 2);
    EXPECT_EQ(run({"set", "Language", "-"}, longest + "x\n"), 2);
    EXPECT_EQ(run({"set", "Language", "-"}, std::string(100000, 'x')), 2);
    EXPECT_EQ(run({"get", longest + "x"}), 2);
    EXPECT_EQ(err, "ostrel-nvram: the name is longer than 1023 bytes. See ostrel-nvram --help.\n");
    EXPECT_EQ(callLog().take(), "");
}

TEST_F(NvramTool, CommitKeepsTheSectionAndRestartsOnlyWhenAsked) {
    EXPECT_EQ(run({"commit"}), 0);
    EXPECT_EQ(fakeSettings().committed, (std::map<int, FakeSettings::Section>{{1, section(1)}}));
    EXPECT_EQ(callLog().take().find("system"), std::string::npos);
    EXPECT_EQ(run({"--rtdev", "commit", "--restart"}), 0);
    EXPECT_EQ(fakeSettings().committed[2], section(2));
    EXPECT_EQ(
        callLog().take(), "open(\"/dev/apsoc_nvram\", O_RDONLY) = 700\n"
                          "close(700)\n"
                          "open(\"/dev/apsoc_nvram\", O_RDONLY) = 700\n"
                          "ioctl(700, 0x1004, index 2)\n"
                          "close(700)\n"
                          "system(\"killall nvram_daemon\")\n"
                          "system(\"nvram_daemon &\")\n"
                          "system(\"init_system restart&\")\n");
}

TEST_F(NvramTool, AMissingDriverIsToldWithTheWayOut) {
    fakeDevices().byPath["/dev/apsoc_nvram"].openError = ENOENT;
    for (const Words& words : {Words{"get", "PIN"}, Words{"set", "PIN", "1"}, Words{"commit"}}) {
        EXPECT_EQ(run(words), 1);
        EXPECT_EQ(out, "");
        EXPECT_EQ(
            err, "ostrel-nvram: cannot open /dev/apsoc_nvram: No such file or directory. The settings driver is not "
                 "loaded; on a desk run: ostrel-sim ostrel-nvram.\n");
    }
    fakeDevices().byPath["/dev/apsoc_nvram"].openError = EACCES;
    EXPECT_EQ(run({"commit"}), 1);
    EXPECT_EQ(err, "ostrel-nvram: cannot open /dev/apsoc_nvram: Permission denied. Run it as root.\n");
}

TEST_F(NvramTool, AValueThatTheDriverDidNotStoreIsAFailure) {
    fakeSettings().refusal = EIO;
    EXPECT_EQ(run({"set", "PIN", "1234"}), 1);
    EXPECT_EQ(err, "ostrel-nvram: the settings driver did not store the value.\n");
}

TEST_F(NvramTool, WhatIsNotUnderstoodChangesNothingAndIsNeverRepeated) {
    const struct {
        Words words;
        const char* message;
    } cases[] = {
        {{}, "the first word must be get, set or commit"},
        {{"s3cret"}, "the first word must be get, set or commit"},
        {{"", "get"}, "the first word must be get, set or commit"},
        {{"get"}, "get takes one name"},
        {{"get", "PIN", "s3cret"}, "get takes one name"},
        {{"get", ""}, "the name is empty"},
        {{"get", "PIN=s3cret"}, "a name cannot contain '='"},
        {{"set"}, "set takes a name and a value"},
        {{"set", "s3cret"}, "set takes a name and a value"},
        {{"set", "=s3cret"}, "the name is empty"},
        {{"set", "", "s3cret"}, "the name is empty"},
        {{"set", "PIN=1", "s3cret"}, "a name cannot contain '='"},
        {{"set", "PIN", "my", "s3cret"}, "set takes one name and one value; put a value with blanks into quotes"},
        {{"commit", "s3cret"}, "commit takes no name: it keeps the whole section"},
        {{"get", "PIN", "--restart"}, "--restart goes with commit only"},
        {{"set", "PIN", "--s3cret"}, "unknown option; put -- before a value that begins with two dashes"},
    };
    const auto before = fakeSettings().working;
    callLog().take();
    for (const auto& each : cases) {
        EXPECT_EQ(run(each.words, "s3cret"), 2);
        EXPECT_EQ(err, "ostrel-nvram: " + std::string(each.message) + ". See ostrel-nvram --help.\n");
        EXPECT_EQ(out, "");
    }
    EXPECT_EQ(callLog().take(), "");
    EXPECT_EQ(fakeSettings().working, before);
}

TEST_F(NvramTool, HelpFitsAScreenOf80ColumnsAndNeedsNoDriver) {
    fakeDevices() = {};
    EXPECT_EQ(run({"--help"}), 0);
    std::istringstream lines(out);
    int count = 0;
    for (std::string line; std::getline(lines, line); ++count)
        EXPECT_LE(line.size(), 79U) << line;
    EXPECT_LE(count, 24);
    EXPECT_GE(count, 10);
    EXPECT_EQ(run({"--version"}), 0);
    EXPECT_EQ(out.compare(0, 13, "ostrel-nvram "), 0);
}

TEST_F(NvramTool, OutputThatCannotBeWrittenIsAFailure) {
    std::istringstream in;
    std::ostringstream full;
    full.setstate(std::ios::badbit);
    std::ostringstream errStream;
    EXPECT_EQ(runNvramTool({"get", "Language"}, {in, full, errStream}), 1);
    EXPECT_EQ(errStream.str(), "ostrel-nvram: standard output cannot be written.\n");
}

} // namespace
