// How a run ends, and what the user is told.
#include "tests/e2e/simulator_run.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

TEST(Ending, PassesTheProgramsStatusOn) {
    const Desk desk;
    const Told good = desk.run("--headless true");
    EXPECT_EQ(good.status, 0);
    EXPECT_EQ(good.errors, "");
    const Told bad = desk.run("--headless sh -c 'exit 3'");
    EXPECT_EQ(bad.status, 3);
    EXPECT_EQ(bad.errors, "ostrel-sim: sh exited with status 3\n");
}

TEST(Ending, NamesTheSignalThatEndedTheProgram) {
    const Desk desk;
    const Told crash = desk.run("--headless '" OSTREL_PROBE "' crash", "prlimit --core=0");
    EXPECT_EQ(crash.status, 134);
    EXPECT_EQ(crash.errors, "ostrel-sim: probe was ended by signal 6 (Aborted)\n");
    const Told killed = desk.run("--headless sh -c 'kill -KILL $$'");
    EXPECT_EQ(killed.status, 137);
    EXPECT_EQ(killed.errors, "ostrel-sim: sh was ended by signal 9 (Killed)\n");
}

// Where the machine collects core dumps itself, it is told that there is one, but not where.
TEST(Ending, KeepsACoreDumpWhereTheyAreAllowed) {
    const Desk desk;
    // A simulator that is built with the address sanitizer would forbid them.
    const Told crash =
        desk.run("--headless sh -c 'kill -ABRT $$'", "ASAN_OPTIONS=disable_coredump=0 prlimit --core=unlimited");
    EXPECT_EQ(crash.status, 134);
    const std::string told = "ostrel-sim: sh was ended by signal 6 (Aborted) and left a core dump";
    if (contentOf("/proc/sys/kernel/core_pattern").find_first_of("|/") == 0) {
        EXPECT_EQ(crash.errors, told + "\n");
        return;
    }
    EXPECT_EQ(crash.errors, told + ", " + desk.file("state/core") + "\n");
    EXPECT_EQ(contentOf(desk.file("state/core")).find("ELF"), 1U);
}

TEST(Ending, PassesOutputAndErrorsThrough) {
    const Desk desk;
    const Told run = desk.run("--headless sh -c 'echo to output; echo to errors >&2; cat' < /dev/null");
    EXPECT_EQ(run.output, "to output\n");
    EXPECT_EQ(run.errors, "to errors\n");
}

TEST(Ending, SaysWhyAProgramCannotBeRun) {
    const Desk desk;
    const Told missing = desk.run("--headless ./nothing");
    EXPECT_EQ(missing.status, 127);
    EXPECT_EQ(missing.errors, "ostrel-sim: there is no program ./nothing: No such file or directory\n");

    desk.write("text", "no program");
    const Told text = desk.run("--headless ./text");
    EXPECT_EQ(text.status, 126);
    EXPECT_EQ(text.errors, "ostrel-sim: ./text is not executable; chmod +x makes it so\n");

    chmod(desk.file("text").c_str(), 0755);
    const Told noProgram = desk.run("--headless ./text");
    EXPECT_EQ(noProgram.status, 126);
    EXPECT_EQ(
        noProgram.errors, "ostrel-sim: cannot run " + desk.file("text") +
                              ": it is neither a program nor a script that names its interpreter\n");

    desk.write("orphan", "#!/no/interpreter\n");
    chmod(desk.file("orphan").c_str(), 0755);
    const Told orphan = desk.run("--headless ./orphan");
    EXPECT_EQ(orphan.status, 126);
    EXPECT_EQ(
        orphan.errors,
        "ostrel-sim: cannot run " + desk.file("orphan") + ": its interpreter /no/interpreter is not on this machine\n");
}

TEST(Ending, NamesTheMachineOfAForeignProgram) {
    const Desk desk;
    std::string header(
        "\x7f"
        "ELF\x01\x01\x01",
        7);
    header.resize(64);
    header[16] = 2;
    header[18] = '\xf3'; // RISC-V
    desk.write("foreign", header);
    chmod(desk.file("foreign").c_str(), 0755);
    const Told run = desk.run("--headless ./foreign");
    EXPECT_EQ(run.status, 126);
    EXPECT_EQ(
        run.errors, "ostrel-sim: cannot run " + desk.file("foreign") +
                        ": it is a program for RISC-V; compile it for this machine\n");
}

TEST(Ending, SaysWhatIsMissingOnTheMachine) {
    const Desk desk;
    const Told noBubblewrap = desk.run("--headless /bin/true", "PATH=/nowhere");
    EXPECT_EQ(noBubblewrap.status, 125);
    EXPECT_EQ(
        noBubblewrap.errors, "ostrel-sim: bubblewrap is missing, which makes the program's view of the files; "
                             "apt-get install bubblewrap\n");
    const Told noAssets = desk.run("--headless true", "OSTREL_ASSETS=/nowhere");
    EXPECT_EQ(noAssets.status, 125);
    EXPECT_EQ(
        noAssets.errors,
        "ostrel-sim: cannot find the assets that become /ostrel in /nowhere; that is what $OSTREL_ASSETS names\n");
    const Told noScript = desk.run("--script nothing true");
    EXPECT_EQ(noScript.status, 125);
    EXPECT_EQ(
        noScript.errors,
        "ostrel-sim: cannot read the script nothing: No such file or directory; check its name and its rights\n");
}

} // namespace
