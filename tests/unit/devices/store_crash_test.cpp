// Kills whoever writes the store, at any moment and inside each of its system calls, and looks at what is left. The
// store's writing, syncing and renaming are taken over here: they tell where the writer is, and write in small parts.
#include "simulator/store/power_on.h"
#include "simulator/store/store_system.h"
#include "tests/unit/devices/small_disk.h"
#include "tests/unit/devices/store_fixture.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <ctime>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <random>
#include <sched.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace ostrel {
namespace {

enum class Call { None, Write, Sync, Rename };
constexpr Call CALLS[] = {Call::Write, Call::Sync, Call::Rename};

// Shared by the writer and who kills it.
struct Shared {
    std::atomic<Call> inside;    // the call that the writer is in
    std::atomic<Call> waitFor;   // the call in which the writer waits to be watched
    std::atomic<int> callsFirst; // after so many of them
    std::atomic<bool> watched;   // go on: the kill is on its way
    std::atomic<long> begun;     // the last value whose commit was begun
    std::atomic<long> committed; // the last value whose commit had returned
};

Shared* shared = nullptr;

class Inside {
  public:
    explicit Inside(Call call) {
        if (shared == nullptr)
            return;
        shared->inside = call;
        if (shared->waitFor == call && shared->callsFirst-- == 0) {
            shared->waitFor = Call::None;
            while (!shared->watched)
                sched_yield();
        }
    }
    ~Inside() {
        if (shared != nullptr)
            shared->inside = Call::None;
    }
    Inside(const Inside&) = delete;
    Inside& operator=(const Inside&) = delete;
};

// Writes this many bytes, then the disk is full. Negative: it never is.
long bytesUntilFull = -1;
int syncsUntilFailure = -1;
int renamesUntilFailure = -1;

bool failsNow(int& countdown) {
    return countdown >= 0 && countdown-- == 0;
}

} // namespace

int storeOpen(const char* path, int flags) {
    return open(path, flags | O_CLOEXEC | O_NOFOLLOW, 0600);
}

long storeRead(int fd, void* buffer, size_t size) {
    return read(fd, buffer, size);
}

long storeWrite(int fd, const void* bytes, size_t size) {
    constexpr size_t PART = 50;
    const Inside inside(Call::Write);
    size_t part = std::min(size, PART);
    if (bytesUntilFull >= 0) {
        part = std::min(part, static_cast<size_t>(bytesUntilFull));
        bytesUntilFull -= static_cast<long>(part);
    }
    if (part == 0) {
        errno = ENOSPC;
        return -1;
    }
    return ::write(fd, bytes, part);
}

int storeSync(int fd) {
    const Inside inside(Call::Sync);
    if (failsNow(syncsUntilFailure)) {
        errno = EIO;
        return -1;
    }
    return fsync(fd);
}

int storeRename(const char* from, const char* to) {
    const Inside inside(Call::Rename);
    if (failsNow(renamesUntilFailure)) {
        errno = EROFS;
        return -1;
    }
    return rename(from, to);
}

int storeUnlink(const char* path) {
    return unlink(path);
}

int storeLock(int fd) {
    return flock(fd, LOCK_EX);
}

int storeClose(int fd) {
    return close(fd);
}

namespace {

// The values of one commit belong together. They have different lengths, so that no offset in the file stays.
const char* const NAMES[] = {"First", "Middle", "Zlast"};

std::string valueOf(long number, const char* name) {
    return std::string(static_cast<size_t>(number % 97), name[0]) + std::to_string(number);
}

// What a writer does until it is killed: the power comes on, and settings are changed and committed, over and over.
[[noreturn]] void writeForEver(const std::string& directory, const std::string& factory) {
    const char* const path = directory.c_str();
    std::vector<std::string> messages;
    powerOnStore(directory, factory, messages);
    for (long number = shared->begun + 1;; ++number) {
        bool set = true;
        for (const char* name : NAMES)
            set = setStored(path, Section::Main, name, valueOf(number, name).c_str()) == 0 && set;
        if (!set)
            continue; // the disk is full: nothing new to commit
        shared->begun = number;
        if (commitStored(path, Section::Main) == 0)
            shared->committed = number;
    }
}

struct Kills {
    int all = 0;
    int inside[4] = {};
};

// Starts a writer and kills it: when it is in its n-th `call`, or at any moment for Call::None.
void killOne(const std::string& directory, const std::string& factory, Call call, std::mt19937& random, Kills& kills) {
    shared->inside = Call::None;
    shared->watched = false;
    shared->callsFirst = static_cast<int>(random() % 12);
    shared->waitFor = call;
    const pid_t writer = fork();
    if (writer == 0)
        writeForEver(directory, factory);
    if (call == Call::None) {
        timespec begin = {};
        timespec now = {};
        const long delayNs = static_cast<long>(random() % 8000000);
        clock_gettime(CLOCK_MONOTONIC, &begin);
        do {
            clock_gettime(CLOCK_MONOTONIC, &now);
        } while ((now.tv_sec - begin.tv_sec) * 1000000000 + now.tv_nsec - begin.tv_nsec < delayNs);
    } else {
        while (shared->waitFor != Call::None)
            sched_yield();
        shared->watched = true;
        for (unsigned long spin = random() % 2000; spin > 0; --spin)
            std::atomic_signal_fence(std::memory_order_seq_cst);
    }
    kill(writer, SIGKILL);
    waitpid(writer, nullptr, 0);
    ++kills.all;
    ++kills.inside[static_cast<int>(shared->inside.load())];
}

// The committed copy holds one whole commit: the last that returned, or one that was begun after it.
void expectOneWholeCommit(const std::string& directory) {
    const std::string first = committed(directory, Section::Main, NAMES[0]);
    const size_t digits = first.find_first_of("0123456789");
    if (first.empty()) {
        EXPECT_EQ(shared->committed, 0);
        return;
    }
    ASSERT_NE(digits, std::string::npos) << first;
    const long number = std::stol(first.substr(digits));
    EXPECT_GE(number, shared->committed);
    EXPECT_LE(number, shared->begun);
    for (const char* name : NAMES)
        EXPECT_EQ(committed(directory, Section::Main, name), valueOf(number, name));
    EXPECT_EQ(committed(directory, Section::Rtdev, "ScreenTimeout"), "300");
    shared->committed = number; // whoever has seen it may rely on it
}

Kills killUntilEnough(const std::string& directory, int least, int leastInside, unsigned seed) {
    constexpr int MOST = 5000;
    const std::string factory = directory + "/factory-settings";
    write(factory, "[main]\nLanguage=english\n[rtdev]\nScreenTimeout=300\n");
    std::vector<std::string> messages;
    EXPECT_TRUE(powerOnStore(directory, factory, messages));
    shared->begun = 0;
    shared->committed = 0;
    std::mt19937 random(seed);
    Kills kills;
    const auto enough = [&] {
        return kills.all >= least && std::all_of(std::begin(CALLS), std::end(CALLS), [&](Call call) {
                   return kills.inside[static_cast<int>(call)] >= leastInside;
               });
    };
    constexpr Call PLAN[] = {Call::None, Call::Write, Call::None, Call::Sync, Call::None, Call::Rename};
    while (!enough() && kills.all < MOST && !testing::Test::HasFailure()) {
        killOne(directory, factory, PLAN[kills.all % 6], random, kills);
        expectOneWholeCommit(directory);
    }
    EXPECT_TRUE(enough());
    std::printf(
        "seed %u: %d kills, %d inside write, %d inside fsync, %d inside rename, %ld commits begun\n", seed, kills.all,
        kills.inside[1], kills.inside[2], kills.inside[3], shared->begun.load());
    return kills;
}

struct StoreCrash : testing::Test {
    StoreCrash() {
        void* const memory = mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
        shared = new (memory) Shared();
        bytesUntilFull = -1;
        syncsUntilFailure = -1;
        renamesUntilFailure = -1;
    }
    ~StoreCrash() override {
        munmap(shared, sizeof(Shared));
        shared = nullptr;
    }
    StoreCrash(const StoreCrash&) = delete;
    StoreCrash& operator=(const StoreCrash&) = delete;

    StoreDirectory directory;
};

TEST_F(StoreCrash, AKillAtAnyMomentLeavesTheOldOrTheNewCommit) {
    killUntilEnough(directory.path, 330, 35, 41);
}

TEST_F(StoreCrash, AKillOnAFullDiskLeavesTheOldOrTheNewCommit) {
    // Room for the files as they begin and for some of their successors: many changes fail, some do not.
    onSmallDisk(24 * 1024, [](const std::string& disk) {
        std::ofstream filler(disk + "/filler");
        filler << std::string(4096, 'f') << std::flush;
        killUntilEnough(disk, 120, 10, 42);
    });
}

TEST_F(StoreCrash, AFullDiskRefusesAndKeepsWhatWasCommitted) {
    onSmallDisk(32 * 1024, [](const std::string& disk) {
        writeEmptyStore(disk);
        const char* const path = disk.c_str();
        EXPECT_EQ(setStored(path, Section::Main, "Language", "greek"), 0);
        EXPECT_EQ(commitStored(path, Section::Main), 0);
        EXPECT_EQ(setStored(path, Section::Main, "Language", "polish"), 0);
        std::ofstream filler(disk + "/filler");
        while (filler << std::string(512, 'f') << std::flush) {
        }
        EXPECT_EQ(setStored(path, Section::Main, "Motto", std::string(1000, 'm').c_str()), -ENOSPC);
        EXPECT_EQ(commitStored(path, Section::Main), -ENOSPC);
        EXPECT_EQ(committed(disk, Section::Main, "Language"), "greek");
        EXPECT_EQ(stored(disk, Section::Main, "Language"), "polish");
        EXPECT_EQ(stored(disk, Section::Main, "Motto"), "");
        filler.close();
        std::filesystem::remove(disk + "/filler");
        EXPECT_EQ(commitStored(path, Section::Main), 0);
        EXPECT_EQ(committed(disk, Section::Main, "Language"), "polish");
    });
}

// Every file of the store, by name.
std::string filesOf(const std::string& directory) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(directory))
        names.push_back(entry.path().filename());
    std::sort(names.begin(), names.end());
    std::string all;
    for (const std::string& name : names)
        all += name + " ";
    return all;
}

TEST_F(StoreCrash, ADiskThatIsFullAfterAnyNumberOfBytesLosesNothing) {
    writeEmptyStore(directory.path);
    setStored(directory.c_str(), Section::Main, "Language", "greek");
    commitStored(directory.c_str(), Section::Main);
    const std::string before = contents(directory.file("settings.main"));
    for (long bytes = 0;; ++bytes) {
        bytesUntilFull = bytes;
        const int error = setStored(directory.c_str(), Section::Main, "Language", "polish");
        bytesUntilFull = -1;
        if (error == 0)
            break;
        ASSERT_EQ(error, -ENOSPC);
        ASSERT_EQ(stored(directory.path, Section::Main, "Language"), "greek");
        ASSERT_EQ(filesOf(directory.path), "settings.lock settings.main settings.rtdev ");
    }
    for (long bytes = 0;; ++bytes) {
        bytesUntilFull = bytes;
        const int error = commitStored(directory.c_str(), Section::Main);
        bytesUntilFull = -1;
        if (error == 0)
            break;
        ASSERT_EQ(error, -ENOSPC);
        ASSERT_EQ(contents(directory.file("settings.main")), before);
        ASSERT_EQ(stored(directory.path, Section::Main, "Language"), "polish");
    }
    EXPECT_EQ(committed(directory.path, Section::Main, "Language"), "polish");
}

TEST_F(StoreCrash, AFailingSyncOrRenameIsReportedAndLosesNothing) {
    writeEmptyStore(directory.path);
    setStored(directory.c_str(), Section::Main, "Language", "greek");
    syncsUntilFailure = 0; // the file's: it never gets its name
    EXPECT_EQ(commitStored(directory.c_str(), Section::Main), -EIO);
    EXPECT_EQ(committed(directory.path, Section::Main, "Language"), "");
    renamesUntilFailure = 0;
    EXPECT_EQ(commitStored(directory.c_str(), Section::Main), -EROFS);
    EXPECT_EQ(committed(directory.path, Section::Main, "Language"), "");
    EXPECT_EQ(filesOf(directory.path), "settings.lock settings.main settings.main.working settings.rtdev ");
    syncsUntilFailure = 1; // the directory's: committed, but perhaps not for ever
    EXPECT_EQ(commitStored(directory.c_str(), Section::Main), -EIO);
    EXPECT_EQ(stored(directory.path, Section::Main, "Language"), "greek");
    EXPECT_EQ(commitStored(directory.c_str(), Section::Main), 0);
    EXPECT_EQ(committed(directory.path, Section::Main, "Language"), "greek");
}

} // namespace
} // namespace ostrel
