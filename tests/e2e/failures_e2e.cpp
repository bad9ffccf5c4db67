// What a user is told when the simulator cannot do its work: one sentence each, with what to do.
#include "tests/e2e/simulator_run.h"

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

// `sentence` and nothing else; "*" in it stands for what differs between machines.
void expectFailure(const Told& run, const std::string& sentence, int status = 125) {
    EXPECT_EQ(run.status, status);
    const std::string expected = "ostrel-sim: " + sentence + "\n";
    const size_t star = expected.find('*');
    const std::string begin = expected.substr(0, star);
    const std::string end = star == std::string::npos ? "" : expected.substr(star + 1);
    const bool isTold = star == std::string::npos ? run.errors == expected
                                                  : run.errors.size() >= begin.size() + end.size() &&
                                                        run.errors.compare(0, begin.size(), begin) == 0 &&
                                                        run.errors.substr(run.errors.size() - end.size()) == end &&
                                                        run.errors.find('\n') == run.errors.size() - 1;
    EXPECT_TRUE(isTold) << "  expected: " << expected << "  told:     " << run.errors;
}

// Runs a command as somebody without rights.
std::string asOrdinaryUser(const Desk& desk) {
    fs::permissions(desk.directory.path, fs::perms::all);
    return geteuid() == 0 ? "setpriv --reuid 12345 --regid 12345 --clear-groups" : "";
}

// Runs a command with a disk of `kilobytes` mounted at `directory`; what it leaves there is listed in "left".
std::string withSmallDisk(const Desk& desk, const char* directory, int kilobytes) {
    fs::create_directory(desk.file(directory));
    return std::string("unshare --mount ") + (geteuid() == 0 ? "" : "--user --map-root-user") +
           " sh -c 'mount -t tmpfs -o mode=777,size=" + std::to_string(kilobytes) + "k none " + directory +
           " && \"$@\"; status=$?; ls " + directory + " >left; exit $status' sh";
}

constexpr const char* NO_NAMESPACES =
    "cannot make the program's view of the files, namespaces are not allowed here (bwrap: Creating new namespace "
    "failed: *); ";

TEST(Failure, OfRootWithoutTheRightToMakeNamespaces) {
    if (geteuid() != 0)
        return; // there is no root to be refused; the next test is an ordinary user's
    const Desk desk;
    expectFailure(
        desk.run("--headless true", "setpriv --bounding-set -sys_admin --inh-caps -sys_admin"),
        NO_NAMESPACES + std::string("start the container with 'docker run --privileged'"));
}

// Inside a user namespace anybody may lower that namespace's limits.
TEST(Failure, OfRootAndUserWhereNamespacesAreUsedUp) {
    const Desk desk;
    const std::string advice = "raise the limits that 'sysctl user' shows, as root";
    const char* asRoot = "unshare --user --map-root-user sh -c 'echo 0 > /proc/sys/user/max_pid_namespaces && exec "
                         "\"$@\"' sh";
    expectFailure(desk.run("--headless true", asRoot), NO_NAMESPACES + advice);
    const char* asUser = "unshare --user --map-user=12345 --map-group=12345 --keep-caps sh -c 'echo 0 > "
                         "/proc/sys/user/max_user_namespaces && exec setpriv --ambient-caps -all --inh-caps -all "
                         "\"$@\"' sh";
    expectFailure(desk.run("--headless true", asUser), NO_NAMESPACES + advice);
}

TEST(Failure, OfABinaryThatWasMovedAlone) {
    const Desk desk;
    fs::create_directories(desk.file("moved/bin"));
    fs::copy_file(OSTREL_SIM, desk.file("moved/bin/ostrel-sim"));
    const std::string run = "env -u OSTREL_ASSETS moved/bin/ostrel-sim --headless --state state true";
    const std::string there = fs::canonical(desk.directory.path).string() + "/moved/";
    expectFailure(
        desk.shell(run), "cannot find the simulator's own files in " + there + "libexec/ostrel-sim; install it again");

    fs::create_directories(desk.file("moved/libexec"));
    const fs::path support = fs::path(OSTREL_SIM).parent_path() / "../libexec/ostrel-sim";
    fs::copy(support, desk.file("moved/libexec/ostrel-sim"), fs::copy_options::recursive);
    expectFailure(
        desk.shell(run), "cannot find the assets that become /ostrel in " + there + "ostrel or " + there +
                             "share/ostrel; build or install them, or set $OSTREL_ASSETS");

    fs::remove(desk.file("moved/libexec/ostrel-sim/launch"));
    expectFailure(
        desk.shell(run),
        "cannot find the simulator's own file " + there + "libexec/ostrel-sim/launch; install it again");
}

TEST(Failure, OfAStateDirectoryThatCannotBeUsed) {
    const Desk desk;
    const std::string sim = "'" OSTREL_SIM "' --headless --state ";
    expectFailure(
        desk.shell(sim + "/sys true"),
        "cannot write in the state directory /sys: *; choose another directory with --state");
    expectFailure(
        desk.shell(sim + "/proc/nothing true"),
        "cannot make the state directory /proc/nothing: *; choose one with --state");
    desk.write("taken", "");
    expectFailure(desk.shell(sim + "taken true"), "cannot make the state directory taken: *; choose one with --state");
    fs::create_directory(desk.file("state"));
    expectFailure(
        desk.run("--headless true", "flock state/lock"), "another simulator uses " +
                                                             fs::canonical(desk.file("state")).string() +
                                                             "; end it, or choose another directory with --state");
}

TEST(Failure, OfAUserWithoutAHome) {
    const Desk desk;
    const char* nobody = "unshare --user --map-user=12345 env -u HOME -u XDG_STATE_HOME ";
    expectFailure(
        desk.shell(nobody + std::string("'" OSTREL_SIM "' --headless true")),
        "there is no home directory to keep the router's state in; set HOME, or choose a directory with --state");
}

TEST(Failure, OfADirectoryThatIsGone) {
    const Desk desk;
    expectFailure(
        desk.shell(
            "mkdir gone && cd gone && rmdir ../gone && '" OSTREL_SIM "' --headless --state '" + desk.file("state") +
            "' true"),
        "the directory that you are in is gone; cd to one that is there");
}

TEST(Failure, OfAScriptThatCannotBeRead) {
    const Desk desk;
    expectFailure(
        desk.run("--script nothing true"),
        "cannot read the script nothing: No such file or directory; check its name and its rights");
    expectFailure(
        desk.run("--script assets true"),
        "cannot read the script assets: Is a directory; check its name and its rights");
    desk.write("secret", "tap 1 1\n");
    fs::permissions(desk.file("secret"), fs::perms::none);
    fs::remove_all(desk.file("state")); // the one just made is root's
    const std::string user = asOrdinaryUser(desk);
    expectFailure(
        desk.run("--script secret true", user),
        "cannot read the script secret: Permission denied; check its name and its rights");
}

TEST(Failure, OfAProgramThatIsNone) {
    const Desk desk;
    expectFailure(desk.run("--headless ./assets"), "./assets is a directory, not a program", 126);
    expectFailure(desk.run("--headless /dev/null"), "/dev/null is not a program", 126);

    // A program of this machine whose dynamic loader is not there.
    std::string program = contentOf(OSTREL_PROBE);
    const size_t loader = program.find("/ld-linux");
    ASSERT_NE(loader, std::string::npos);
    program.replace(loader, 9, "/xx-xxxxx");
    desk.write("orphan", program);
    fs::permissions(desk.file("orphan"), fs::perms::owner_all);
    expectFailure(
        desk.run("--headless ./orphan"),
        "cannot run " + desk.file("orphan") + ": its dynamic loader is not on this machine; compile it here", 126);
}

// The script adds nothing, and cannot be passed.
TEST(Failure, OfAProgramThatAScriptWaitsFor) {
    const Desk desk;
    desk.write("text", "no program\n");
    fs::permissions(desk.file("text"), fs::perms::owner_all);
    const std::string sentence =
        "cannot run " + desk.file("text") + ": it is neither a program nor a script that names its interpreter";
    for (const char* script :
         {"tap 1 2\n", "exit-code 126\n", "exit-code 0\n", "quit\n", "expect-setting 1 Nothing\n"}) {
        desk.write("script", script);
        expectFailure(desk.run("--script script --junit j.xml ./text"), sentence, 126);
        EXPECT_NE(contentOf(desk.file("j.xml")).find("message=\"" + sentence + "\""), std::string::npos)
            << contentOf(desk.file("j.xml"));
    }
    desk.write("script", "exit-code 125\n");
    expectFailure(
        desk.run(
            "--script script true", "unshare --user --map-root-user sh -c 'echo 0 > /proc/sys/user/max_pid_namespaces "
                                    "&& exec \"$@\"' sh"),
        NO_NAMESPACES + std::string("raise the limits that 'sysctl user' shows, as root"));
}

TEST(Failure, OfAFullDisk) {
    const Desk desk;
    const std::string state = desk.file("state");
    expectFailure(
        desk.run("--headless true", withSmallDisk(desk, "state", 100)),
        "cannot write " + state + "/fb0: No space left on device; make room, or choose another directory with --state");
    expectFailure(
        desk.run("--headless true", withSmallDisk(desk, "state", 160)),
        "the settings in " + state +
            " cannot be used: No space left on device; make room, or choose another directory with --state");
    // A log that cannot be written is no reason to end.
    const Told run =
        desk.run("--headless sh -c 'echo runs; wc -c <\"'$PWD/state/log'\"'", withSmallDisk(desk, "state", 164));
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.output, "runs\n0\n");
}

TEST(Failure, OfAPictureOnAFullDisk) {
    const Desk desk;
    desk.write("script", "shot disk/page.png\n");
    desk.write("program", "echo x >" + desk.file("disk/filler") + "; exec '" OSTREL_PROBE "' follow 1\n");
    expectFailure(
        desk.run("--script script sh \"$PWD/program\"", withSmallDisk(desk, "disk", 4)),
        "script:1: cannot write disk/page.png: No space left on device; make room", 1);
    EXPECT_EQ(contentOf(desk.file("left")), "filler\n");
}

// What was set while there was room is still there when there is room again.
TEST(Failure, OfACommitOnAFullDiskIsToldToTheProgramAndLosesNothing) {
    const Desk desk;
    desk.write("fill", "cat /dev/zero >" + desk.file("state") + "/filler 2>/dev/null; true\n");
    desk.write("free", "rm " + desk.file("state") + "/filler\n");
    const std::string sh = " shell 'sh " + desk.file("");
    const Told run = desk.run(
        "--headless '" SETTINGS_PROBE "' set 1 Language greek" + sh +
            "fill' commit 1 get 1 Language set 1 Language dutch" + sh + "free' get 1 Language commit 1",
        withSmallDisk(desk, "state", 400));
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(
        run.output, "commit: No space left on device\nLanguage=greek\nset: No space left on device\nLanguage=greek\n");
    EXPECT_EQ(run.status, 0);
}

} // namespace
