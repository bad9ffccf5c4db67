// The router's devices and commands as whole programs meet them in the simulator.
#include "tests/unit/devices/store_fixture.h"

#include <cerrno>
#include <csignal>
#include <ctime>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <set>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace ostrel {
namespace {

using Words = std::vector<std::string>;

struct Devices : testing::Test {
    // Starts ostrel-sim with `words` behind its state directory; what it and the program print goes to files.
    pid_t start(const Words& words) {
        Words all = {OSTREL_SIM};
        all.insert(all.end(), words.begin(), words.end());
        std::vector<char*> arguments;
        for (std::string& word : all)
            arguments.push_back(word.data());
        arguments.push_back(nullptr);
        posix_spawn_file_actions_t files;
        posix_spawn_file_actions_init(&files);
        constexpr int FLAGS = O_WRONLY | O_CREAT | O_TRUNC;
        posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, directory.file("out").c_str(), FLAGS, 0600);
        posix_spawn_file_actions_addopen(&files, STDERR_FILENO, directory.file("err").c_str(), FLAGS, 0600);
        pid_t child = -1;
        EXPECT_EQ(posix_spawn(&child, OSTREL_SIM, &files, nullptr, arguments.data(), environ), 0);
        posix_spawn_file_actions_destroy(&files);
        return child;
    }

    // Runs ostrel-sim to its end and returns what was printed, standard error last.
    std::string run(const Words& words) {
        int status = -1;
        waitpid(start(words), &status, 0);
        const std::string ending =
            WIFEXITED(status) && WEXITSTATUS(status) == 0 ? "" : "status " + std::to_string(status);
        return contents(directory.file("out")) + contents(directory.file("err")) + ending;
    }

    // Runs the program in the simulator.
    std::string simulate(const Words& program, const Words& options = {}) {
        Words words = {"--headless", "--state", state()};
        words.insert(words.end(), options.begin(), options.end());
        words.insert(words.end(), program.begin(), program.end());
        return run(words);
    }

    std::string nvram(Words words) {
        words.insert(words.begin(), {"nvram", "--state", state()});
        return run(words);
    }

    std::string state() const { return directory.file("state"); }

    // What the log tells of settings and commands, without times and process numbers.
    std::string log() const {
        std::string lines;
        std::ifstream file(state() + "/log");
        for (std::string line; std::getline(file, line);) {
            const std::string told = line.substr(line.find("] ") + 2);
            if (told.rfind("nvram ", 0) == 0 || told.rfind("command ", 0) == 0)
                lines += told + "\n";
        }
        return lines;
    }

    StoreDirectory directory;
};

TEST_F(Devices, AProgramFindsFactorySettingsAndCommitsItsOwn) {
    EXPECT_EQ(
        simulate(
            {SETTINGS_PROBE, "get", "1", "Language", "set", "1", "Language", "greek", "commit", "1", "get", "2",
             "ScreenTimeout"}),
        "Language=english\nScreenTimeout=300\n");
    EXPECT_EQ(simulate({SETTINGS_PROBE, "get", "1", "Language"}), "Language=greek\n");
    EXPECT_EQ(nvram({"get", "main", "Language"}), "greek\n");
}

TEST_F(Devices, WhatWasNotCommittedIsGoneWhenThePowerIsBack) {
    EXPECT_EQ(
        simulate({SETTINGS_PROBE, "set", "1", "Language", "greek", "set", "2", "ShowPass", "1", "commit", "2"}), "");
    EXPECT_EQ(
        simulate({SETTINGS_PROBE, "get", "1", "Language", "get", "2", "ShowPass"}), "Language=english\nShowPass=1\n");
}

TEST_F(Devices, ProgramsThatAProgramStartsShareItsWorkingCopy) {
    const std::string probe = SETTINGS_PROBE;
    EXPECT_EQ(
        simulate({probe, "set", "1", "PIN", "1234", "shell", probe + " get 1 PIN set 1 PIN 5678", "get", "1", "PIN"}),
        "PIN=1234\nPIN=5678\n");
}

TEST_F(Devices, ThreeProgramsAtOnceLoseNoWrite) {
    const std::string many = SETTINGS_PROBE " many ";
    EXPECT_EQ(
        simulate(
            {"/bin/sh", "-c", many + "a 40 & " + many + "b 40 & " + many + "c 40; wait; " SETTINGS_PROBE " commit 1"}),
        "");
    for (const char* prefix : {"a", "b", "c"})
        for (int i = 0; i < 40; ++i) {
            const std::string name = prefix + std::to_string(i);
            EXPECT_EQ(committed(state(), Section::Main, name), name);
        }
}

TEST_F(Devices, APowerCutLosesOnlyWhatWasNotCommitted) {
    const std::string told = directory.file("told");
    const pid_t simulator = start(
        {"--headless", "--state", state(), SETTINGS_PROBE, "set", "1", "Language", "greek", "commit", "1", "set", "1",
         "Language", "polish", "told", told});
    const time_t begin = time(nullptr);
    while (!std::filesystem::exists(told) && time(nullptr) - begin < 60)
        sched_yield();
    EXPECT_EQ(nvram({"get", "main", "Language"}), "polish\n");
    EXPECT_EQ(nvram({"get", "main", "Language", "--committed"}), "greek\n");
    kill(simulator, SIGKILL);
    waitpid(simulator, nullptr, 0);
    EXPECT_EQ(nvram({"get", "main", "Language"}), "greek\n");
    EXPECT_EQ(simulate({SETTINGS_PROBE, "get", "1", "Language"}), "Language=greek\n");
}

TEST_F(Devices, ADamagedStoreIsSaidOnceAndTheProgramStarts) {
    simulate({SETTINGS_PROBE});
    const std::string path = state() + "/settings.main";
    write(path, "scribble");
    EXPECT_EQ(
        simulate({SETTINGS_PROBE, "get", "1", "Language"}),
        "Language=english\nostrel-sim: " + path +
            " is damaged: line 1: it does not begin as this section's settings do; it is kept as " + path +
            ".damaged and the factory settings are used.\n");
    EXPECT_EQ(simulate({SETTINGS_PROBE, "get", "1", "Language"}), "Language=english\n");
}

TEST_F(Devices, AFilePersistsOverTwoRunsAndDataIsNeverLeftMounted) {
    const std::string note = directory.file("note");
    const std::string copy = directory.file("copy");
    write(note, "remember the milk\n");
    EXPECT_EQ(simulate({FLASH_PROBE, "persist", note, "note.txt"}), "");
    EXPECT_EQ(simulate({FLASH_PROBE, "copy", "note.txt", copy, "depersist", "note.txt"}), "");
    EXPECT_EQ(contents(copy), "remember the milk\n");
    const std::string complaint = simulate({FLASH_PROBE, "copy", "note.txt", copy});
    EXPECT_NE(complaint.find("/data/apps/shop-notes/note.txt"), std::string::npos) << complaint;
    EXPECT_EQ(complaint.find("mounted"), std::string::npos) << complaint;
}

TEST_F(Devices, TheLogTellsWhatDevicesAndCommandsDid) {
    const std::string note = directory.file("note");
    write(note, "x");
    EXPECT_EQ(simulate({FLASH_PROBE, "persist", note, "n", "save", "PIN", "1234"}), "");
    const std::string lines = log();
    EXPECT_EQ(
        lines.substr(0, lines.find("command nvram_daemon")).substr(0, lines.find("command init_system")),
        "nvram get main Language: \"english\"\n" // by the toolkit while it is loaded
        "command mount -t jffs2 /dev/mtdblock5 /data\n"
        "command umount /data\n"
        "command mount -t jffs2 /dev/mtdblock5 /data\n"
        "command umount /data\n"
        "nvram set main PIN: ****\n"
        "nvram commit main\n"
        "command killall nvram_daemon\n");
}

TEST_F(Devices, TheFlashIsMountedAsTheRoutersIs) {
    EXPECT_EQ(
        simulate(
            {"/bin/sh", "-c",
             "exec 2>&1; mount -t jffs2 /dev/mtdblock5 /data; echo $?; echo kept >/data/file; "
             "mount -t jffs2 /dev/mtdblock5 /data; echo $?; cd /data; umount /data; echo $?; cd /; umount /data; "
             "echo $?; ls /data; umount /data; echo $?; mount -t ext4 /dev/mtdblock5 /data; echo $?; "
             "mount -t jffs2 -o ro /dev/mtdblock5 /data; cat /data/file; rm /data/file; umount /dev/mtdblock5; "
             "echo $?"}),
        "0\n"
        "mount: /data: /dev/mtdblock5 already mounted on /data.\n32\n"
        "umount: /data: target is busy.\n32\n"
        "0\n"
        "umount: /data: not mounted.\n32\n"
        "mount: /data: wrong fs type, bad option, bad superblock on /dev/mtdblock5; it is a jffs2 partition.\n32\n"
        "kept\n"
        "rm: cannot remove '/data/file': Read-only file system\n"
        "0\n");
}

TEST_F(Devices, KillallEndsProgramsAndKnowsTheServices) {
    EXPECT_EQ(
        simulate(
            {"/bin/sh", "-c",
             "exec 2>&1; killall nvram_daemon; echo $?; killall nobody-here; echo $?; " SETTINGS_PROBE
             " shell 'true' told " +
                 directory.file("told") + " & while ! test -e " + directory.file("told") +
                 "; do sleep 0.01; done; killall settings_probe; echo $?; " +
                 // A shell that sees the death only here tells of it; one that saw it before does not.
                 "wait $! 2>/dev/null; echo $?; init_system; echo $?"}),
        "0\n"
        "nobody-here: no process found\n1\n"
        "0\n143\n"
        "init_system: Usage: init_system start|stop|restart\n1\n");
}

TEST_F(Devices, SleepsFollowTheSpeed) {
    timespec begin = {};
    timespec end = {};
    clock_gettime(CLOCK_MONOTONIC, &begin);
    EXPECT_EQ(simulate({SETTINGS_PROBE, "sleep", "1000"}, {"--speed", "1000"}), "");
    clock_gettime(CLOCK_MONOTONIC, &end);
    const double seconds =
        static_cast<double>(end.tv_sec - begin.tv_sec) + 1e-9 * static_cast<double>(end.tv_nsec - begin.tv_nsec);
    EXPECT_GE(seconds, 1);
    EXPECT_LT(seconds, 100);
}

#ifdef ARMHF_PROBE
TEST_F(Devices, AnEmulatedProgramUsesTheSameStore) {
    simulate({SETTINGS_PROBE, "set", "1", "From", "the desk", "commit", "1"});
    EXPECT_EQ(
        simulate(
            {QEMU_ARM, "-L", ARMHF_ROOT, ARMHF_PROBE, "get", "1", "From", "set", "1", "From", "the router", "commit",
             "1", "backlight", "11", "backlight", "12"}),
        "From=the desk\nbacklight: Inappropriate ioctl for device\n");
    EXPECT_EQ(simulate({SETTINGS_PROBE, "get", "1", "From"}), "From=the router\n");
}

TEST_F(Devices, AnEmulatedProgramRunsTheRoutersCommands) {
    EXPECT_EQ(
        simulate(
            {QEMU_ARM, "-L", ARMHF_ROOT, ARMHF_PROBE, "shell",
             "mount -t jffs2 /dev/mtdblock5 /data && echo kept >/data/file && umount /data"}),
        "");
    EXPECT_EQ(contents(state() + "/mtdblock5/file"), "kept\n");
}

TEST_F(Devices, AnEmulatedProgramStartsAnotherThroughAWrapper) {
    const std::string wrapper = directory.file("picker");
    write(wrapper, "#!/bin/sh\nexec " QEMU_ARM " -L " ARMHF_ROOT " " ARMHF_PROBE " \"$@\"\n");
    std::filesystem::permissions(wrapper, std::filesystem::perms::owner_all);
    EXPECT_EQ(
        simulate(
            {QEMU_ARM, "-L", ARMHF_ROOT, ARMHF_PROBE, "set", "1", "From", "the first", "shell",
             wrapper + " get 1 From set 1 From 'the second'", "get", "1", "From"}),
        "From=the first\nFrom=the second\n");
}
#endif

} // namespace
} // namespace ostrel
