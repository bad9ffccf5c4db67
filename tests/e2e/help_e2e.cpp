// What is printed when no program is run, and standard descriptors that a caller has closed.
#include "tests/e2e/simulator_run.h"

#include <gtest/gtest.h>

namespace {

Told ask(const Desk& desk, const std::string& arguments) {
    return desk.shell("'" OSTREL_SIM "' " + arguments);
}

TEST(Help, IsPrinted) {
    const Desk desk;
    const Told help = ask(desk, "--help");
    EXPECT_EQ(help.status, 0);
    EXPECT_EQ(help.output.substr(0, 48), "Usage: ostrel-sim [options] PROGRAM [ARGUMENTS]\n");
    const Told version = ask(desk, "--version");
    EXPECT_EQ(version.status, 0);
    EXPECT_EQ(version.output.substr(0, 11), "ostrel-sim ");
}

TEST(Help, ThatCannotBeWrittenIsAFailure) {
    const Desk desk;
    for (const char* option : {"--help", "--version"}) {
        const Told full = ask(desk, option + std::string(" >/dev/full"));
        EXPECT_EQ(full.status, 125);
        EXPECT_EQ(full.errors, "ostrel-sim: the output cannot be written: No space left on device\n");
        const Told closed = ask(desk, option + std::string(" >&-"));
        EXPECT_EQ(closed.status, 125);
        EXPECT_EQ(closed.errors, "ostrel-sim: the output cannot be written: Bad file descriptor\n");
    }
    EXPECT_EQ(ask(desk, "nvram --help >/dev/full").errors, "ostrel-sim: the output cannot be written\n");
}

TEST(Help, SuggestsWhatMayHaveBeenMeant) {
    const Desk desk;
    const Told run = ask(desk, "--headles true");
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(
        run.errors, "ostrel-sim: there is no option --headles (did you mean --headless?); see ostrel-sim --help\n");
}

// None of the simulator's own files takes their places, to be written into.
TEST(ClosedDescriptors, StayUselessForTheProgram) {
    const Desk desk;
    const std::string found = desk.file("found");
    desk.write(
        "program", "in=$(readlink /proc/$$/fd/0) out=$(readlink /proc/$$/fd/1) err=$(readlink /proc/$$/fd/2)\n"
                   "echo $in $out $err >" +
                       found + "; echo told; echo told >&2; exit 0\n");
    EXPECT_EQ(desk.shell("'" OSTREL_SIM "' --headless --state state sh \"$PWD/program\" <&- >&- 2>&-").status, 0);
    EXPECT_EQ(contentOf(found), "/dev/null /dev/null /dev/null\n");
    EXPECT_EQ(contentOf(desk.file("state/lock")), "");
}

} // namespace
