#include "simulator/nvram_cli.h"

#include "simulator/failure.h"
#include "tests/unit/devices/store_fixture.h"

#include <fcntl.h>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <sys/file.h>
#include <unistd.h>

namespace ostrel {
namespace {

struct NvramCommandLine : testing::Test {
    NvramCommandLine() {
        setenv("XDG_STATE_HOME", directory.c_str(), 1);
        write(directory.file("factory-settings"), "[main]\nLanguage=english\n[rtdev]\nShowPass=0\n");
    }

    // What the command prints, or the exit status and the sentence it fails with.
    std::string nvram(std::vector<std::string> words, bool withState = true) {
        if (withState)
            words.insert(words.begin(), {"--state", state});
        std::ostringstream out;
        try {
            runNvram(words, directory.file("factory-settings"), out);
            return out.str();
        } catch (const Failure& failure) {
            return std::to_string(failure.status) + ": " + failure.what();
        }
    }

    StoreDirectory directory;
    std::string state = directory.file("router");
};

constexpr char SEE[] = "; see ostrel-sim nvram --help";

TEST_F(NvramCommandLine, ASetValueLastsAndIsRead) {
    EXPECT_EQ(nvram({"set", "main", "Language", "greek"}), "");
    EXPECT_EQ(nvram({"get", "main", "Language"}), "greek\n");
    EXPECT_EQ(nvram({"get", "1", "Language"}), "greek\n");
    EXPECT_EQ(committed(state, Section::Main, "Language"), "greek");
    EXPECT_EQ(nvram({"get", "rtdev", "ShowPass"}), "0\n");
}

TEST_F(NvramCommandLine, AListShowsEachSettingInOneLine) {
    nvram({"set", "main", "Two=lines", "a\nb"});
    EXPECT_EQ(nvram({"list"}), "main Language=english\nmain Two\\x3dlines=a\\x0ab\nrtdev ShowPass=0\n");
    EXPECT_EQ(nvram({"list", "rtdev"}), "rtdev ShowPass=0\n");
}

TEST_F(NvramCommandLine, AResetForgetsOneSectionOrAll) {
    nvram({"set", "main", "Mine", "1"});
    nvram({"set", "rtdev", "Mine", "2"});
    EXPECT_EQ(nvram({"factory-reset", "main"}), "");
    EXPECT_EQ(nvram({"list"}), "main Language=english\nrtdev Mine=2\nrtdev ShowPass=0\n");
    EXPECT_EQ(nvram({"factory-reset"}), "");
    EXPECT_EQ(nvram({"list"}), "main Language=english\nrtdev ShowPass=0\n");
}

TEST_F(NvramCommandLine, WhatIsOnlySetCountsWhileTheSimulatorRuns) {
    nvram({"set", "main", "Language", "greek"});
    setStored(state.c_str(), Section::Main, "Language", "polish");
    EXPECT_EQ(nvram({"get", "main", "Language"}), "greek\n"); // the power is off
    const int lock = open((state + "/lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    flock(lock, LOCK_EX);
    EXPECT_EQ(nvram({"get", "main", "Language"}), "polish\n");
    EXPECT_EQ(nvram({"get", "--committed", "main", "Language"}), "greek\n");
    EXPECT_EQ(nvram({"set", "main", "PIN", "1234"}), "");
    EXPECT_EQ(nvram({"list", "main"}), "main Language=polish\nmain PIN=1234\n");
    EXPECT_EQ(nvram({"list", "main", "--committed"}), "main Language=greek\nmain PIN=1234\n");
    close(lock);
}

TEST_F(NvramCommandLine, TheRouterIsChosenByItsProgramOrIsTheOnlyOne) {
    const std::string root = directory.file("ostrel-sim");
    EXPECT_EQ(nvram({"list"}, false), "2: no router was simulated yet in " + root + "; choose one with --state" + SEE);
    EXPECT_EQ(nvram({"set", "--program", "gallery", "main", "PIN", "1"}, false), "");
    EXPECT_EQ(nvram({"get", "main", "PIN"}, false), "1\n");
    nvram({"set", "--program", "tour", "main", "PIN", "2"}, false);
    EXPECT_EQ(nvram({"get", "main", "PIN", "--program", "tour"}, false), "2\n");
    EXPECT_EQ(
        nvram({"get", "main", "PIN"}, false),
        std::string("2: which router? --program NAME chooses among gallery, tour") + SEE);
}

TEST_F(NvramCommandLine, WhatCannotBeDoneIsSaidInOneSentence) {
    EXPECT_EQ(nvram({"list"}), "1: there are no settings in " + state + " yet: no program has run there");
    nvram({"factory-reset"});
    EXPECT_EQ(nvram({"get", "main", "Pin"}), "1: section main has no setting 'Pin'");
    write(state + "/settings.main", "scribble");
    EXPECT_EQ(
        nvram({"get", "main", "Language"}),
        "1: " + state +
            "/settings.main is damaged: line 1: it does not begin as this section's settings do; "
            "'ostrel-sim nvram factory-reset' keeps it aside and begins anew");
    EXPECT_EQ(nvram({"factory-reset"}), "");
    EXPECT_EQ(contents(state + "/settings.main.damaged"), "scribble");
    EXPECT_EQ(nvram({"get", "main", "Language"}), "english\n");
    const std::string value(1023, 'v');
    std::string failure;
    for (int i = 0; i < 70 && failure.empty(); ++i)
        failure = nvram({"set", "main", "name" + std::to_string(i), value});
    EXPECT_EQ(failure, "1: section main or the disk is full");
}

TEST_F(NvramCommandLine, AWrongCommandLineIsSaidWithAWayOut) {
    nvram({"factory-reset"});
    const std::string see = SEE;
    EXPECT_EQ(nvram({}), "2: no command is given" + see);
    EXPECT_EQ(nvram({"show"}), "2: there is no command 'show'" + see);
    EXPECT_EQ(nvram({"get", "main"}), "2: usage: ostrel-sim nvram get SECTION NAME" + see);
    EXPECT_EQ(nvram({"set", "main", "a", "b", "c"}), "2: usage: ostrel-sim nvram set SECTION NAME VALUE" + see);
    EXPECT_EQ(
        nvram({"get", "flash", "PIN"}), "2: there is no section 'flash': sections are main (1) and rtdev (2)" + see);
    EXPECT_EQ(nvram({"set", "main", "", "1"}), "2: a setting needs a name" + see);
    EXPECT_EQ(nvram({"set", "main", "a", std::string(1024, 'v')}), "2: names and values have at most 1023 bytes" + see);
    EXPECT_EQ(nvram({"list", "--all"}), "2: there is no option --all" + see);
    EXPECT_EQ(nvram({"list", "--program"}), "2: --program needs NAME" + see);
    EXPECT_EQ(nvram({"list", "--program", "a"}), "2: --state and --program exclude each other" + see);
    EXPECT_EQ(nvram({"set", "--", "main", "Sign", "--"}), "");
    EXPECT_EQ(nvram({"get", "main", "Sign"}), "--\n");
}

TEST_F(NvramCommandLine, WhatIsMistypedIsToldTheNearest) {
    EXPECT_EQ(nvram({"lst"}), std::string("2: there is no command 'lst' (did you mean list?)") + SEE);
    EXPECT_EQ(
        nvram({"list", "--comitted"}),
        std::string("2: there is no option --comitted (did you mean --committed?)") + SEE);
}

TEST_F(NvramCommandLine, HelpFitsATerminal) {
    std::istringstream help(nvram({"--help"}));
    int lines = 0;
    for (std::string line; std::getline(help, line); ++lines)
        EXPECT_LE(line.size(), 80U) << line;
    EXPECT_GT(lines, 10);
    EXPECT_LE(lines, 23); // and the prompt
}

TEST_F(NvramCommandLine, OutputThatCannotBeWrittenIsAFailure) {
    nvram({"factory-reset"});
    for (const char* command : {"list", "--help"}) {
        std::ofstream full("/dev/full");
        try {
            runNvram({"--state", state, command}, directory.file("factory-settings"), full);
            ADD_FAILURE() << command;
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.status, 1);
            EXPECT_STREQ(failure.what(), "the output cannot be written");
        }
    }
}

} // namespace
} // namespace ostrel
