#include "simulator/failure.h"
#include "simulator/program.h"
#include "tests/unit/simulator/temporary_directory.h"

#include <cerrno>
#include <csignal>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace ostrel;

namespace {

TEST(Ending, PassesTheStatusOn) {
    const Ending ending = describeEnding("/opt/gallery", {LaunchEvent::Exited, 3}, "/state");
    EXPECT_EQ(ending.status, 3);
    EXPECT_TRUE(ending.ran);
    EXPECT_EQ(ending.sentence, "gallery exited with status 3");
    EXPECT_EQ(describeEnding("/opt/gallery", {LaunchEvent::Exited, 0}, "/state").status, 0);
}

TEST(Ending, NamesTheSignal) {
    const Ending crash = describeEnding("/opt/gallery", {LaunchEvent::Signalled, SIGSEGV}, "/state");
    EXPECT_EQ(crash.status, 139);
    EXPECT_EQ(crash.sentence, "gallery was ended by signal 11 (Segmentation fault)");
    const Ending core = describeEnding("/opt/gallery", {LaunchEvent::DumpedCore, SIGABRT}, "/state");
    EXPECT_EQ(core.status, 134);
    EXPECT_EQ(core.sentence, "gallery was ended by signal 6 (Aborted) and left a core dump");
    EXPECT_EQ(
        describeEnding("/opt/gallery", {LaunchEvent::KeptCore, SIGABRT}, "/state").sentence,
        "gallery was ended by signal 6 (Aborted) and left a core dump, /state/core");
    EXPECT_EQ(
        describeEnding("/opt/gallery", {LaunchEvent::Signalled, 99}, "/state").sentence,
        "gallery was ended by signal 99 (unknown)");
}

TEST(Ending, SaysWhyAProgramCannotBeRun) {
    const Ending refused = describeEnding("/nowhere/x", {LaunchEvent::ExecFailed, EACCES}, "/state");
    EXPECT_EQ(refused.status, 126);
    EXPECT_FALSE(refused.ran);
    EXPECT_EQ(
        describeEnding("/nowhere/x", {LaunchEvent::ExecFailed, ENOEXEC}, "/state").sentence,
        "cannot run /nowhere/x: it is neither a program nor a script that names its interpreter");
}

TEST(NoView, SaysWhatAllowsNamespaces) {
    const struct {
        const char* complaint;
        const char* user;
        const char* root;
    } cases[] = {
        {"bwrap: Creating new namespace failed: Operation not permitted", "sysctl kernel.", "docker run"},
        {"bwrap: No permissions to create new namespace, likely because", "sysctl kernel.", "docker run"},
        {"bwrap: setting up uid map: Permission denied", "sysctl kernel.", "docker run"},
        {"bwrap: Can't mount proc on /newroot/proc: Operation not permitted", "docker run", "docker run"},
        {"bwrap: Failed to make / slave: Permission denied", "docker run", "docker run"},
        {"bwrap: Creating new namespace failed: nesting depth or /proc/sys/user/max_*_namespaces exceeded (ENOSPC)",
         "sysctl user", "sysctl user"},
    };
    for (const auto& [complaint, user, root] : cases) {
        const std::string begin = "cannot make the program's view of the files, namespaces are not allowed here (" +
                                  std::string(complaint) + "); ";
        const Ending users = describeNoView(complaint, false);
        EXPECT_EQ(users.status, 125);
        EXPECT_FALSE(users.ran);
        EXPECT_EQ(users.sentence.substr(0, begin.size()), begin);
        EXPECT_NE(users.sentence.find(user), std::string::npos) << users.sentence;
        EXPECT_NE(describeNoView(complaint, true).sentence.find(root), std::string::npos) << complaint;
    }
}

TEST(NoView, PassesOnWhatElseBubblewrapSays) {
    EXPECT_EQ(
        describeNoView("bwrap: Can't find source path /x: No such file or directory", false).sentence,
        "cannot make the program's view of the files: bwrap: Can't find source path /x: No such file or directory");
    EXPECT_EQ(
        describeNoView("", true).sentence,
        "cannot make the program's view of the files: bubblewrap ended without a word");
}

TEST(Ending, TellsAHiddenProgramFromOneWithoutALoader) {
    const TemporaryDirectory directory;
    const auto sentence = [&](const std::string& path) {
        return describeEnding(path, {LaunchEvent::ExecFailed, ENOENT}, "/state").sentence;
    };
    EXPECT_EQ(
        sentence("/data/gallery"), "cannot run /data/gallery: inside, /data is the router's own; copy the program to "
                                   "another folder");
    std::ofstream(directory.file("x")) << "#! /no/python -u\n";
    EXPECT_EQ(
        sentence(directory.file("x")),
        "cannot run " + directory.file("x") + ": its interpreter /no/python is not on this machine");
    EXPECT_EQ(
        sentence("/nowhere/x"), "cannot run /nowhere/x: its dynamic loader is not on this machine; compile it here");
}

// The router's own programs are the ones that a desk can emulate with the simulator's devices.
TEST(Ending, SaysHowAProgramOfTheRouterIsRun) {
    const TemporaryDirectory directory;
    const std::string program = directory.file("x");
    const auto sentenceFor = [&](char machine) {
        std::string header(
            "\x7f"
            "ELF\x01\x01\x01",
            7);
        header.resize(64);
        header[16] = 2;
        header[18] = machine;
        std::ofstream(program, std::ios::binary) << header;
        return describeEnding(program, {LaunchEvent::ExecFailed, ENOEXEC}, "/state").sentence;
    };
    EXPECT_EQ(
        sentenceFor('\x28'), "cannot run " + program +
                                 ": it is a program for ARM; compile it for this machine, or run it under 'qemu-arm -L "
                                 "ROOT', where ROOT has its libraries");
    EXPECT_EQ(
        sentenceFor('\xf3'), "cannot run " + program + ": it is a program for RISC-V; compile it for this machine");
}

std::string whyNotResolved(const std::string& name, int& status) {
    try {
        return resolveProgram(name);
    } catch (const Failure& failure) {
        status = failure.status;
        return failure.what();
    }
}

TEST(ResolveProgram, TellsMissingFromNotExecutable) {
    const TemporaryDirectory directory;
    int status = 0;
    EXPECT_EQ(
        whyNotResolved(directory.file("x"), status),
        "there is no program " + directory.file("x") + ": No such file or directory");
    EXPECT_EQ(status, 127);
    std::ofstream(directory.file("x")) << "text";
    chmod(directory.file("x").c_str(), 0600);
    EXPECT_EQ(
        whyNotResolved(directory.file("x"), status), directory.file("x") + " is not executable; chmod +x makes it so");
    EXPECT_EQ(status, 126);
    EXPECT_EQ(whyNotResolved(directory.path + "/", status), directory.path + "/ is a directory, not a program");
    EXPECT_EQ(status, 126);
}

TEST(ResolveProgram, LooksAlongThePath) {
    int status = 0;
    EXPECT_EQ(whyNotResolved("true", status).substr(0, 1), "/");
    EXPECT_EQ(whyNotResolved("no-such-program", status), "there is no program no-such-program on the PATH");
    EXPECT_EQ(status, 127);
}

} // namespace
