// A line on standard error while something takes long. What takes long here waits for that very line.
#include "tests/e2e/family.h"
#include "tests/e2e/simulator_run.h"

#include <gtest/gtest.h>

namespace {

// A shell command that lasts until `line` is among what the simulator has said.
std::string waitFor(const Desk& desk, const std::string& line) {
    return "until grep -q '" + line + "' '" + desk.file("errors") + "'; do sleep 0.05; done\n";
}

TEST(Progress, IsToldWhileTheViewIsMade) {
    const Desk desk;
    std::filesystem::create_directory(desk.file("bin"));
    desk.write(
        "bin/bwrap", "#!/bin/sh\n" + waitFor(desk, "still making the view") + "PATH=${PATH#*:} exec bwrap \"$@\"\n");
    std::filesystem::permissions(desk.file("bin/bwrap"), std::filesystem::perms::owner_all);
    const Told run = desk.run("--headless --verbose echo done", "PATH='" + desk.file("bin") + ":'$PATH");
    EXPECT_EQ(run.output, "done\n");
    EXPECT_NE(run.errors.find("ostrel-sim: still making the view of the files for echo\n"), std::string::npos);
}

TEST(Progress, IsToldUntilTheFirstPicture) {
    const Desk desk;
    desk.write("program", waitFor(desk, "has not drawn") + "exec '" OSTREL_PROBE "' follow 0\n");
    const Told run = desk.run("--headless --verbose sh \"$PWD/program\"");
    EXPECT_EQ(run.status, 0);
    EXPECT_NE(run.errors.find("ostrel-sim: sh runs and has not drawn anything yet\n"), std::string::npos);
}

TEST(Progress, NamesTheLineOfAScript) {
    const Desk desk;
    desk.write("script", "# slow\ntap 1 2\n");
    desk.write("program", waitFor(desk, "still at script:2: tap 1 2") + "exec '" OSTREL_PROBE "' follow 1\n");
    const Told run = desk.run("--verbose --script script sh \"$PWD/program\"");
    EXPECT_EQ(run.output, "down 1 2\nup\n");
    EXPECT_EQ(run.status, 0) << run.errors;
}

// The program has drawn long ago and takes its time to end.
TEST(Progress, IsToldAgainWhenTheProgramIsEnded) {
    const Desk desk;
    desk.write(
        "program", "trap \"" + waitFor(desk, "waiting for sh to end") +
                       "exit\" TERM\n'" OSTREL_PROBE "' follow 0\nsleep 0.5\necho >'" + desk.file("ready") +
                       "'\nwhile :; do sleep 0.05; done\n");
    Family family(
        "cd '" + desk.directory.path +
        "' && OSTREL_ASSETS=assets exec '" OSTREL_SIM
        "' --headless --verbose --state state sh \"$PWD/program\" 2> errors");
    ASSERT_TRUE(soon([&] { return std::filesystem::exists(desk.file("ready")); }));
    kill(family.head, SIGTERM);
    EXPECT_TRUE(family.isGone());
    EXPECT_EQ(family.status, 143);
    const std::string errors = contentOf(desk.file("errors"));
    EXPECT_NE(errors.find("ostrel-sim: waiting for sh to end\n"), std::string::npos) << errors;
}

// Where standard error is a file, only --verbose tells of progress; a terminal always does.
TEST(Progress, IsToldOnATerminal) {
    const Desk desk;
    desk.write("program", waitFor(desk, "has not drawn"));
    const Told run = desk.shell(
        "script -qefc \"'" OSTREL_SIM "' --headless --state state sh '$PWD/program'\" typescript </dev/null >'" +
        desk.file("errors") + "'");
    EXPECT_EQ(run.status, 0);
    EXPECT_NE(run.errors.find("ostrel-sim: sh runs and has not drawn anything yet\r\n"), std::string::npos);
    const Told quiet = desk.run("--headless sleep 1.5");
    EXPECT_EQ(quiet.errors, "");
}

} // namespace
