// Keeping and finding a backup on a flash partition that is whole, empty, full, cut off or not there at all.
#include "apps/settings/backup_store.h"
#include "tests/support/call_log.h"
#include "tests/unit/settings/fake_flash.h"

#include <optional>

namespace {

constexpr const char* PLACE = "/data/apps/ostrel-settings/settings.backup";
constexpr const char* NEW_PLACE = "/data/apps/ostrel-settings/settings.backup.new";

int steps = 0;
void countStep() {
    ++steps;
}

class BackupStore : public testing::Test {
  protected:
    BackupStore() {
        callLog() = {};
        fakeSystem() = {};
        flash.emplace();
        steps = 0;
    }

    Found find() { return findBackup(found, countStep); }

    std::optional<FakeFlash> flash;
    Backup written = {"2026-11-20 17:03", {"greek", "0", "4711"}};
    Backup found = {"", {"english", "0", ""}};
};

TEST_F(BackupStore, WritesBesideTheOldBackupFirstAndReadsEachCopyBack) {
    fakeSystem().directories = {"/data/apps", "/data/apps/ostrel-settings"};
    EXPECT_TRUE(keepBackup(written, countStep));
    const std::string mount = "system(\"mount -t jffs2 /dev/mtdblock5 /data\")\n";
    const std::string umount = "system(\"umount /data\")\n";
    EXPECT_EQ(
        FakeFlash::withoutNames(callLog().take()),
        mount +
            "opendir(\"/data/apps\")\n"
            "closedir(\"/data/apps\")\n"
            "opendir(\"/data/apps/ostrel-settings\")\n"
            "closedir(\"/data/apps/ostrel-settings\")\n" +
            umount + mount + "system(\"cp TEMPORARY /data/apps/ostrel-settings/settings.backup.new\")\n" + umount +
            mount + "system(\"cp /data/apps/ostrel-settings/settings.backup.new  TEMPORARY \")\n" + umount + mount +
            "system(\"cp TEMPORARY /data/apps/ostrel-settings/settings.backup\")\n" + umount + mount +
            "system(\"cp /data/apps/ostrel-settings/settings.backup  TEMPORARY \")\n" + umount + mount +
            "system(\"rm /data/apps/ostrel-settings/settings.backup.new\")\n" + umount);
    EXPECT_EQ(flash->files, (std::map<std::string, std::string>{{PLACE, backupText(written)}}));
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
    flash->files[PLACE] = backupText(written);
    Backup newer = written;
    newer.values[2] = "0815";
    for (const size_t bytes : {size_t{0}, size_t{1}, backupText(newer).size() - 1}) {
        flash->room = bytes;
        EXPECT_FALSE(keepBackup(newer, countStep)) << bytes;
        EXPECT_EQ(flash->files, (std::map<std::string, std::string>{{PLACE, backupText(written)}})) << bytes;
    }
}

TEST_F(BackupStore, LeavesAWholeBackupWhenTheFlashIsFullAtTheSecondCopy) {
    flash->files[PLACE] = backupText(written);
    Backup newer = written;
    newer.values[2] = "0815";
    flash->room = backupText(newer).size() + 10;
    EXPECT_FALSE(keepBackup(newer, countStep));
    EXPECT_EQ(find(), Found::Backup);
    EXPECT_EQ(found.values[2], "0815");
}

TEST_F(BackupStore, FindsTheNewBackupWhenThePowerWasCutInTheSecondCopy) {
    flash->files[PLACE] = backupText(written).substr(0, 100);
    flash->files[NEW_PLACE] = backupText(written);
    EXPECT_EQ(find(), Found::Backup);
    EXPECT_EQ(found.values[2], "4711");
}

TEST_F(BackupStore, FindsTheOldBackupWhenThePowerWasCutInTheFirstCopy) {
    flash->files[PLACE] = backupText(written);
    flash->files[NEW_PLACE] = "ostrel-backup 1\nmain Lang";
    EXPECT_EQ(find(), Found::Backup);
    EXPECT_EQ(found.values[2], "4711");
}

TEST_F(BackupStore, FindsNothingOnAnEmptyFlash) {
    EXPECT_EQ(find(), Found::Nothing);
    EXPECT_EQ(found.values[0], "english");
    EXPECT_TRUE(flash->files.empty()); // nothing is left of trying it out
}

TEST_F(BackupStore, TellsADamagedBackupFromNone) {
    for (const std::string& content : {std::string("x"), backupText(written) + "x", std::string(100000, 'x')}) {
        flash->files[PLACE] = content;
        EXPECT_EQ(find(), Found::Damaged) << content.size();
        EXPECT_EQ(found.values[0], "english");
    }
    flash->files = {{NEW_PLACE, "ostrel-backup 1\n"}};
    EXPECT_EQ(find(), Found::Damaged);
}

TEST_F(BackupStore, TellsAFlashThatCannotBeMounted) {
    flash->files[PLACE] = backupText(written);
    flash->canBeMounted = false;
    EXPECT_FALSE(keepBackup(written, countStep));
    EXPECT_EQ(find(), Found::NoFlash);
    EXPECT_EQ(flash->files[PLACE], backupText(written));
}

TEST_F(BackupStore, TellsAFlashThatTakesNothing) {
    flash->room = 0;
    EXPECT_EQ(find(), Found::NoFlash);
}

TEST_F(BackupStore, WorksWhateverTheUsersMask) {
    const mode_t before = umask(0);
    EXPECT_TRUE(keepBackup(written, countStep));
    EXPECT_EQ(find(), Found::Backup);
    umask(before);
}

} // namespace
