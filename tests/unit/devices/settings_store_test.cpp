#include "tests/support/scale.h"
#include "tests/unit/devices/store_fixture.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace ostrel {
namespace {

struct SettingsStore : testing::Test {
    SettingsStore() { writeEmptyStore(directory.path); }

    int set(const char* name, const char* value, Section section = Section::Main) {
        return setStored(directory.c_str(), section, name, value);
    }
    int commit(Section section = Section::Main) { return commitStored(directory.c_str(), section); }

    StoreDirectory directory;
};

TEST_F(SettingsStore, ASetValueIsReadButNotCommitted) {
    EXPECT_EQ(set("Language", "greek"), 0);
    EXPECT_EQ(stored(directory.path, Section::Main, "Language"), "greek");
    EXPECT_EQ(committed(directory.path, Section::Main, "Language"), "");
}

TEST_F(SettingsStore, ACommitMakesAllThatWasSetLast) {
    set("Language", "greek");
    set("PIN", "1234");
    EXPECT_EQ(commit(), 0);
    EXPECT_EQ(committed(directory.path, Section::Main, "Language"), "greek");
    EXPECT_EQ(committed(directory.path, Section::Main, "PIN"), "1234");
    EXPECT_EQ(stored(directory.path, Section::Main, "PIN"), "1234");
    EXPECT_FALSE(std::filesystem::exists(directory.file("settings.main.working")));
}

TEST_F(SettingsStore, SectionsAreSeparate) {
    set("Same", "one", Section::Main);
    set("Same", "two", Section::Rtdev);
    commit(Section::Rtdev);
    EXPECT_EQ(stored(directory.path, Section::Main, "Same"), "one");
    EXPECT_EQ(stored(directory.path, Section::Rtdev, "Same"), "two");
    EXPECT_EQ(committed(directory.path, Section::Main, "Same"), "");
    EXPECT_EQ(committed(directory.path, Section::Rtdev, "Same"), "two");
}

TEST_F(SettingsStore, ACommitWithNothingToCommitSucceedsAndWritesNothing) {
    const auto before = std::filesystem::last_write_time(directory.file("settings.main"));
    EXPECT_EQ(commit(), 0);
    EXPECT_EQ(std::filesystem::last_write_time(directory.file("settings.main")), before);
}

TEST_F(SettingsStore, SettingTheSameValueWritesNothing) {
    set("Language", "greek");
    commit();
    EXPECT_EQ(set("Language", "greek"), 0);
    EXPECT_FALSE(std::filesystem::exists(directory.file("settings.main.working")));
}

TEST_F(SettingsStore, ASettingNeedsAName) {
    EXPECT_EQ(set("", "value"), -EINVAL);
    EXPECT_EQ(stored(directory.path, Section::Main, ""), "");
}

TEST_F(SettingsStore, AFullSectionRefusesMoreAndKeepsWhatItHas) {
    const std::string value(1023, 'v');
    int number = 0;
    int error = 0;
    for (; error == 0; ++number)
        error = set(("name" + std::to_string(number)).c_str(), value.c_str());
    EXPECT_EQ(error, -ENOSPC);
    EXPECT_EQ(number, 64); // 63 such lines fit into 65,536 bytes
    EXPECT_EQ(stored(directory.path, Section::Main, "name62"), value);
    EXPECT_EQ(stored(directory.path, Section::Main, "name63"), "");
    EXPECT_EQ(set("name62", ""), 0);
}

TEST_F(SettingsStore, ADamagedSectionIsRefusedAndLeftAlone) {
    write(directory.file("settings.main"), "scribble");
    EXPECT_EQ(stored(directory.path, Section::Main, "PIN"), "error " + std::to_string(-EIO));
    EXPECT_EQ(set("PIN", "1234"), -EIO);
    EXPECT_EQ(commit(), 0);
    EXPECT_EQ(contents(directory.file("settings.main")), "scribble");
    EXPECT_EQ(set("ShowPass", "1", Section::Rtdev), 0);
}

TEST_F(SettingsStore, ADamagedWorkingCopyIsNeverCommitted) {
    set("PIN", "1234");
    commit();
    write(directory.file("settings.main.working"), "scribble");
    EXPECT_EQ(commit(), -EIO);
    EXPECT_EQ(committed(directory.path, Section::Main, "PIN"), "1234");
}

TEST_F(SettingsStore, AMissingSectionIsAnError) {
    std::filesystem::remove(directory.file("settings.main"));
    EXPECT_EQ(stored(directory.path, Section::Main, "PIN"), "error " + std::to_string(-EIO));
    EXPECT_EQ(set("PIN", "1234"), -EIO);
}

TEST_F(SettingsStore, AFileThatIsNoFileIsAnError) {
    std::filesystem::remove(directory.file("settings.main"));
    std::filesystem::create_directory(directory.file("settings.main"));
    EXPECT_EQ(stored(directory.path, Section::Main, "PIN"), "error " + std::to_string(-EISDIR));
    EXPECT_EQ(set("PIN", "1234"), -EISDIR);
}

TEST_F(SettingsStore, AMissingStateDirectoryIsAnError) {
    EXPECT_EQ(setStored("/nowhere/at/all", Section::Main, "PIN", "1"), -ENOENT);
    EXPECT_EQ(commitStored("/nowhere/at/all", Section::Main), -ENOENT);
    const std::string tooLong(5000, 'd');
    EXPECT_EQ(setStored(tooLong.c_str(), Section::Main, "PIN", "1"), -ENAMETOOLONG);
}

TEST_F(SettingsStore, NoDescriptorStaysOpenWhateverHappens) {
    const auto open = [] {
        int count = 0;
        for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator("/proc/self/fd"))
            ++count;
        return count;
    };
    const int before = open();
    set("PIN", "1234");
    commit();
    stored(directory.path, Section::Main, "PIN");
    setStored("/nowhere", Section::Main, "PIN", "1");
    write(directory.file("settings.main"), "scribble");
    set("PIN", "5678");
    stored(directory.path, Section::Main, "PIN");
    EXPECT_EQ(open(), before);
}

TEST_F(SettingsStore, ProcessesAndThreadsAtOnceLoseNoWrite) {
    constexpr int PROCESSES = 6;
    constexpr int THREADS = 2;
    const long writes = scaled(60);
    std::vector<pid_t> processes;
    for (int process = 0; process < PROCESSES; ++process) {
        processes.push_back(fork());
        if (processes.back() != 0)
            continue;
        std::atomic<int> failures = 0;
        const auto writeAll = [&](int thread) {
            for (long i = 0; i < writes; ++i) {
                const std::string name =
                    std::to_string(process) + "." + std::to_string(thread) + "." + std::to_string(i);
                failures += set(name.c_str(), name.c_str()) != 0;
                failures += i % 10 == 9 && commit() != 0;
            }
        };
        std::thread second(writeAll, 1);
        writeAll(0);
        second.join();
        _exit(failures == 0 ? 0 : 1);
    }
    for (const pid_t process : processes) {
        int status = -1;
        waitpid(process, &status, 0);
        EXPECT_EQ(status, 0);
    }
    EXPECT_EQ(commit(), 0);
    for (int process = 0; process < PROCESSES; ++process)
        for (int thread = 0; thread < THREADS; ++thread)
            for (long i = 0; i < writes; ++i) {
                const std::string name =
                    std::to_string(process) + "." + std::to_string(thread) + "." + std::to_string(i);
                EXPECT_EQ(committed(directory.path, Section::Main, name), name);
            }
}

TEST_F(SettingsStore, AReaderNeverSeesHalfAChange) {
    set("Letters", "aaaaaaaa");
    const pid_t writer = fork();
    if (writer == 0) {
        for (int i = 0;; ++i) {
            set("Letters", i % 2 == 0 ? "bbbbbbbbbbbbbbbb" : "aaaaaaaa");
            if (i % 5 == 0)
                commit();
        }
    }
    for (long i = 0; i < scaled(5000); ++i) {
        const std::string value = stored(directory.path, Section::Main, "Letters");
        EXPECT_TRUE(value == "aaaaaaaa" || value == "bbbbbbbbbbbbbbbb") << value;
    }
    kill(writer, SIGKILL);
    waitpid(writer, nullptr, 0);
}

} // namespace
} // namespace ostrel
