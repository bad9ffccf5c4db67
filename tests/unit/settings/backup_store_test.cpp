// Keeping and finding a backup on a flash partition that is whole, empty, full, cut off or not there at all.
#include "apps/settings/backup_store.h"
#include "tests/support/call_log.h"
#include "tests/support/fake_system.h"

#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <regex>
#include <sstream>
#include <sys/stat.h>
#include <vector>

namespace {

constexpr const char* PLACE = "/data/apps/ostrel-settings/settings.backup";
constexpr const char* NEW_PLACE = "/data/apps/ostrel-settings/settings.backup.new";

std::string contentOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

int steps = 0;
void countStep() {
    ++steps;
}

class BackupStore : public testing::Test {
  protected:
    BackupStore() {
        callLog() = {};
        fakeSystem() = {};
        fakeSystem().run = [this](const std::string& command) { return run(command); };
        steps = 0;
    }

    // Every temporary file that was named is readable by its owner alone, and is gone in the end.
    ~BackupStore() override {
        for (const std::string& path : temporary)
            EXPECT_NE(access(path.c_str(), F_OK), 0) << path;
    }

    int run(const std::string& command) {
        std::istringstream words(command);
        const std::vector<std::string> word(std::istream_iterator<std::string>(words), {});
        if (word[0] == "mount") {
            isMounted = canBeMounted;
            return isMounted ? 0 : 32;
        }
        if (word[0] == "umount")
            isMounted = false;
        else if (word[0] == "cp" && word[1].rfind("/tmp/", 0) == 0)
            return copyToFlash(word[1], word[2]);
        else if (word[0] == "cp")
            return copyFromFlash(word[1], word[2]);
        else if (word[0] == "rm")
            return isMounted && files.erase(word[1]) == 1 ? 0 : 1;
        return 0;
    }

    int copyToFlash(const std::string& from, const std::string& to) {
        checkTemporary(from);
        if (!isMounted)
            return 1;
        const std::string content = contentOf(from);
        const size_t taken = room < content.size() ? room : content.size();
        room -= taken;
        files[to] = content.substr(0, taken);
        return taken == content.size() ? 0 : 1;
    }

    int copyFromFlash(const std::string& from, const std::string& to) {
        checkTemporary(to);
        if (!isMounted || files.count(from) == 0)
            return 1;
        std::ofstream(to, std::ios::binary) << files[from];
        return 0;
    }

    void checkTemporary(const std::string& path) {
        struct stat status = {};
        EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
        EXPECT_EQ(status.st_mode & 07777, 0600U) << path;
        temporary.push_back(path);
    }

    // The log with the temporary files' random names replaced.
    static std::string takeLog() {
        return std::regex_replace(callLog().take(), std::regex("/tmp/ostrel-settings-[A-Za-z0-9]{6}"), "TEMPORARY");
    }

    Found find() { return findBackup(found, countStep); }

    Backup written = {"2026-11-20 17:03", {"greek", "0", "4711"}};
    Backup found = {"", {"english", "0", ""}};
    std::map<std::string, std::string> files;
    std::vector<std::string> temporary;
    size_t room = 1000000;
    bool canBeMounted = true;
    bool isMounted = false;
};

TEST_F(BackupStore, WritesBesideTheOldBackupFirstAndReadsEachCopyBack) {
    fakeSystem().directories = {"/data/apps", "/data/apps/ostrel-settings"};
    EXPECT_TRUE(keepBackup(written, countStep));
    const std::string mount = "system(\"mount -t jffs2 /dev/mtdblock5 /data\")\n";
    const std::string umount = "system(\"umount /data\")\n";
    EXPECT_EQ(
        takeLog(), mount +
                       "opendir(\"/data/apps\")\n"
                       "closedir(\"/data/apps\")\n"
                       "opendir(\"/data/apps/ostrel-settings\")\n"
                       "closedir(\"/data/apps/ostrel-settings\")\n" +
                       umount + mount + "system(\"cp TEMPORARY /data/apps/ostrel-settings/settings.backup.new\")\n" +
                       umount + mount + "system(\"cp /data/apps/ostrel-settings/settings.backup.new  TEMPORARY \")\n" +
                       umount + mount + "system(\"cp TEMPORARY /data/apps/ostrel-settings/settings.backup\")\n" +
                       umount + mount + "system(\"cp /data/apps/ostrel-settings/settings.backup  TEMPORARY \")\n" +
                       umount + mount + "system(\"rm /data/apps/ostrel-settings/settings.backup.new\")\n" + umount);
    EXPECT_EQ(files, (std::map<std::string, std::string>{{PLACE, backupText(written)}}));
    EXPECT_EQ(steps, KEEP_STEPS);
}

TEST_F(BackupStore, FindsWhatItKept) {
    ASSERT_TRUE(keepBackup(written, countStep));
    steps = 0;
    EXPECT_EQ(find(), Found::Backup);
    EXPECT_EQ(found.madeAt, "2026-11-20 17:03");
    EXPECT_EQ(found.values[2], "4711");
    EXPECT_EQ(steps, FIND_STEPS);
}

TEST_F(BackupStore, LeavesTheOldBackupWhenTheFlashIsFull) {
    files[PLACE] = backupText(written);
    Backup newer = written;
    newer.values[2] = "0815";
    for (const size_t bytes : {size_t{0}, size_t{1}, backupText(newer).size() - 1}) {
        room = bytes;
        EXPECT_FALSE(keepBackup(newer, countStep)) << bytes;
        EXPECT_EQ(files, (std::map<std::string, std::string>{{PLACE, backupText(written)}})) << bytes;
    }
}

TEST_F(BackupStore, LeavesAWholeBackupWhenTheFlashIsFullAtTheSecondCopy) {
    files[PLACE] = backupText(written);
    Backup newer = written;
    newer.values[2] = "0815";
    room = backupText(newer).size() + 10;
    EXPECT_FALSE(keepBackup(newer, countStep));
    EXPECT_EQ(find(), Found::Backup);
    EXPECT_EQ(found.values[2], "0815");
}

TEST_F(BackupStore, FindsTheNewBackupWhenThePowerWasCutInTheSecondCopy) {
    files[PLACE] = backupText(written).substr(0, 100);
    files[NEW_PLACE] = backupText(written);
    EXPECT_EQ(find(), Found::Backup);
    EXPECT_EQ(found.values[2], "4711");
}

TEST_F(BackupStore, FindsTheOldBackupWhenThePowerWasCutInTheFirstCopy) {
    files[PLACE] = backupText(written);
    files[NEW_PLACE] = "ostrel-backup 1\nmain Lang";
    EXPECT_EQ(find(), Found::Backup);
    EXPECT_EQ(found.values[2], "4711");
}

TEST_F(BackupStore, FindsNothingOnAnEmptyFlash) {
    EXPECT_EQ(find(), Found::Nothing);
    EXPECT_EQ(found.values[0], "english");
    EXPECT_TRUE(files.empty()); // nothing is left of trying it out
}

TEST_F(BackupStore, TellsADamagedBackupFromNone) {
    for (const std::string& content : {std::string("x"), backupText(written) + "x", std::string(100000, 'x')}) {
        files[PLACE] = content;
        EXPECT_EQ(find(), Found::Damaged) << content.size();
        EXPECT_EQ(found.values[0], "english");
    }
    files = {{NEW_PLACE, "ostrel-backup 1\n"}};
    EXPECT_EQ(find(), Found::Damaged);
}

TEST_F(BackupStore, TellsAFlashThatCannotBeMounted) {
    files[PLACE] = backupText(written);
    canBeMounted = false;
    EXPECT_FALSE(keepBackup(written, countStep));
    EXPECT_EQ(find(), Found::NoFlash);
    EXPECT_EQ(files[PLACE], backupText(written));
}

TEST_F(BackupStore, TellsAFlashThatTakesNothing) {
    room = 0;
    EXPECT_EQ(find(), Found::NoFlash);
}

TEST_F(BackupStore, WorksWhateverTheUsersMask) {
    const mode_t before = umask(0);
    EXPECT_TRUE(keepBackup(written, countStep));
    EXPECT_EQ(find(), Found::Backup);
    umask(before);
}

} // namespace
