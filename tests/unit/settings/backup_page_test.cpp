// The Backup page: all settings into a flash partition of this process and back, and everything that can go wrong.
// The About and the Restart page.
#include "apps/settings/backup_store.h"
#include "tests/unit/settings/fake_flash.h"
#include "tests/unit/settings/pages_desk.h"
#include "util/api.h"

#include <cerrno>
#include <ctime>

namespace {

constexpr time_t LONG_AGO = 100; // what a router counts from that was not told the date
constexpr time_t SOME_DAY = 1795194180;
time_t now = SOME_DAY;

} // namespace

extern "C" OSTREL_API time_t timeTaken(time_t* result) __asm__("time");
extern "C" time_t timeTaken(time_t* result) {
    if (result != nullptr)
        *result = now;
    return now;
}

namespace {

constexpr const char* PLACE = "/data/apps/ostrel-settings/settings.backup";

class BackupPage : public PagesDesk {
  protected:
    BackupPage() {
        now = SOME_DAY;
        setenv("TZ", "UTC", 1);
        fakeSettings().working[1]["ScreenLock"] = "1";
        fakeSettings().working[1]["PIN"] = "2580";
        fakeSettings().committed = fakeSettings().working;
        touch(238, 141);
        display().calls.clear();
    }
    ~BackupPage() override {
        speakEnglish();
        cntEn = 0;
    }

    static void speakEnglish() {
        std::snprintf(lang.file, sizeof lang.file, "%s", OSTREL_LANGUAGES "/english.xml");
        for (const Page* const page : allPages())
            page->retext();
    }

    // The texts of the message that the touch brings up. There is no language file where the router has them.
    static std::string saidAfter(int x, int y) {
        display().calls.clear();
        tapAwayNext();
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        touch(x, y);
        testing::internal::GetCapturedStdout();
        testing::internal::GetCapturedStderr();
        const std::string texts = said();
        const size_t last = texts.rfind("80, 130, 1, 0, 17"); // the first line of the last message
        return last == std::string::npos ? "" : texts.substr(texts.rfind("drawText", last), std::string::npos);
    }
    static std::string saidAfterSave() { return saidAfter(160, 158); }
    static std::string saidAfterRestore() { return saidAfter(160, 210); }
    static std::string saidAfterYes() { return saidAfter(160, 163); }

    static std::string message(const char* line1, const char* line2, const char* line3) {
        return std::string("drawText(\"") + line1 + "\", 130, 80, 130, 1, 0, 17, 65535, 1)\ndrawText(\"" + line2 +
               "\", 130, 100, 130, 1, 0, 17, 65535, 1)\ndrawText(\"" + line3 +
               "\", 130, 120, 130, 1, 0, 17, 65535, 1)\n";
    }

    FakeFlash flash;
};

TEST_F(BackupPage, SavesAllSettingsWithTheDate) {
    EXPECT_EQ(saidAfterSave(), message("The settings", "are saved and", "checked."));
    const std::string text = flash.files[PLACE];
    EXPECT_EQ(
        text.substr(0, text.find("checksum")), "ostrel-backup 1\n"
                                               "made 2026-11-20 17:03\n"
                                               "main Language=english\n"
                                               "main ScreenLock=1\n"
                                               "main PIN=2580\n"
                                               "main WifiName=Ostrel\n"
                                               "main WifiSecurity=wpa2\n"
                                               "main WifiPassword=change-me-soon\n"
                                               "main DHCP=0\n"
                                               "main IPAddress=192.168.1.1\n"
                                               "main NetMask=255.255.255.0\n"
                                               "main Gateway=192.168.1.254\n"
                                               "rtdev ShowPass=0\n"
                                               "rtdev ScreenTimeout=300\n");
    EXPECT_EQ(&shownPage(), &backupPage);
}

TEST_F(BackupPage, LeavesOutADateThatTheRouterDoesNotKnow) {
    now = LONG_AGO;
    saidAfterSave();
    EXPECT_EQ(flash.files[PLACE].find("made"), std::string::npos);
    fakeSettings().working[1]["WifiName"] = "Other";
    touch(160, 210);
    EXPECT_EQ(&shownPage(), &confirmPage);
    EXPECT_EQ(callsWith({"drawWidget"}).find("Saved on"), std::string::npos);
}

TEST_F(BackupPage, ShowsHowFarItIsAndTakesNoTouchMeanwhile) {
    fakeSystem().directories = {"/data/apps", "/data/apps/ostrel-settings"};
    display().calls.clear();
    tapAwayNext();
    touch(160, 158);
    const std::string mount = "system(\"mount -t jffs2 /dev/mtdblock5 /data\")\n";
    const std::string umount = "system(\"umount /data\")\n";
    const std::string place = "/data/apps/ostrel-settings/settings.backup";
    EXPECT_EQ(
        FakeFlash::withoutNames(callsWith({"system(", "disableTouch(", "fillRect("})),
        "disableTouch(1)\n" + mount + umount + "fillRect(72, 132, 116, 148, 65535)\n" + mount +
            "system(\"cp TEMPORARY " + place + ".new\")\n" + umount + mount + "system(\"cp " + place +
            ".new  TEMPORARY \")\n" + umount + "fillRect(72, 132, 160, 148, 65535)\n" + mount +
            "system(\"cp TEMPORARY " + place + "\")\n" + umount + mount + "system(\"cp " + place + "  TEMPORARY \")\n" +
            umount + "fillRect(72, 132, 204, 148, 65535)\n" + mount + "system(\"rm " + place + ".new\")\n" + umount +
            "fillRect(72, 132, 248, 148, 65535)\ndisableTouch(0)\n");
}

TEST_F(BackupPage, AsksBeforeItReplacesSettings) {
    saidAfterSave();
    fakeSettings().working[1]["WifiName"] = "Other";
    fakeSettings().committed = fakeSettings().working;
    display().calls.clear();
    touch(160, 210);
    EXPECT_EQ(&shownPage(), &confirmPage);
    EXPECT_NE(callsWith({"drawWidget"}).find("\"Saved on\t2026-11-20 17:03\""), std::string::npos);
    touch(160, 211); // keep
    EXPECT_EQ(&shownPage(), &backupPage);
    EXPECT_EQ(stored(), "");
}

TEST_F(BackupPage, StoresWhatDiffersAsOneBatch) {
    saidAfterSave();
    fakeSettings().working[1]["WifiName"] = "Other";
    fakeSettings().working[1]["PIN"] = "1111";
    fakeSettings().working[2]["ScreenTimeout"] = "31536000";
    fakeSettings().committed = fakeSettings().working;
    touch(160, 210);
    display().calls.clear();
    tapAwayNext();
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    touch(160, 163);
    testing::internal::GetCapturedStdout();
    testing::internal::GetCapturedStderr();
    EXPECT_EQ(
        stored(), "ioctl(700, 0x1003, index 1, \"PIN\", \"2580\")\n"
                  "ioctl(700, 0x1003, index 1, \"WifiName\", \"Ostrel\")\n"
                  "ioctl(700, 0x1003, index 2, \"ScreenTimeout\", \"300\")\n"
                  "ioctl(700, 0x1004, index 1)\n"
                  "ioctl(700, 0x1004, index 2)\n" +
                      std::string(RESTART));
    EXPECT_EQ(&shownPage(), &backupPage);
    EXPECT_EQ(ScreenTime, 300);
    EXPECT_EQ(cntEn, 1);
}

TEST_F(BackupPage, ComesBackInTheRestoredLanguage) {
    fakeSettings().working[1]["Language"] = "greek";
    saidAfterSave();
    speakEnglish();
    fakeSettings().working[1]["Language"] = "english";
    fakeSettings().committed = fakeSettings().working;
    touch(160, 210);
    EXPECT_EQ(saidAfterYes(), message("backup_restored_l1", "backup_restored_l2", "backup_restored_l3"));
    EXPECT_STREQ(lang.file, "/ostrel/greek.xml");
    EXPECT_EQ(fakeSettings().committed[1]["Language"], "greek");
}

TEST_F(BackupPage, SaysThatNothingWouldChange) {
    saidAfterSave();
    EXPECT_EQ(saidAfterRestore(), message("The settings are", "those of the", "backup already."));
    EXPECT_EQ(stored(), "");
    EXPECT_EQ(&shownPage(), &backupPage);
}

TEST_F(BackupPage, SaysThatThereIsNoBackup) {
    EXPECT_EQ(saidAfterRestore(), message("There is no", "backup yet. Save", "one first."));
}

TEST_F(BackupPage, RefusesADamagedBackupAndChangesNothing) {
    saidAfterSave();
    fakeSettings().working[1]["WifiName"] = "Other";
    fakeSettings().committed = fakeSettings().working;
    const std::string whole = flash.files[PLACE];
    for (const size_t length : {size_t{1}, size_t{16}, whole.size() / 2, whole.size() - 1}) {
        flash.files[PLACE] = whole.substr(0, length);
        EXPECT_EQ(saidAfterRestore(), message("The backup is", "damaged. Nothing", "was changed.")) << length;
    }
    flash.files[PLACE] = std::string(whole).replace(whole.find("2580"), 4, "2581");
    EXPECT_EQ(saidAfterRestore(), message("The backup is", "damaged. Nothing", "was changed."));
    EXPECT_EQ(fakeSettings().working, fakeSettings().committed);
    EXPECT_EQ(fakeSettings().committed[1]["WifiName"], "Other");
}

TEST_F(BackupPage, SaysThatTheFlashIsFullOrCannotBeUsed) {
    flash.room = 100;
    EXPECT_EQ(saidAfterSave(), message("Not saved. The", "flash memory is", "full or fails."));
    EXPECT_EQ(saidAfterRestore(), message("The flash memory", "is full or cannot", "be read."));
    flash.room = 100000;
    EXPECT_EQ(saidAfterRestore(), message("There is no", "backup yet. Save", "one first."));
    flash.canBeMounted = false;
    EXPECT_EQ(saidAfterSave(), message("Not saved. The", "flash memory is", "full or fails."));
    EXPECT_EQ(saidAfterRestore(), message("The flash memory", "is full or cannot", "be read."));
}

TEST_F(BackupPage, SaysWhenTheRouterCouldNotStoreWhatWasRestored) {
    saidAfterSave();
    fakeSettings().working[1]["WifiName"] = "Other";
    fakeSettings().committed = fakeSettings().working;
    touch(160, 210);
    fakeSettings().refusal = EIO;
    EXPECT_EQ(saidAfterYes(), message("common_failed_l1", "common_failed_l2", "common_failed_l3"));
    fakeSettings().refusal = 0;
    EXPECT_EQ(fakeSettings().working[1]["WifiName"], "Other");
}

TEST_F(BackupPage, SavesAndRestoresWithoutASettingsDriver) {
    fakeSettings().refusal = ENODEV;
    saidAfterSave();
    EXPECT_EQ(saidAfterRestore(), message("The settings are", "those of the", "backup already."));
}

class AboutPage : public PagesDesk {
  protected:
    static std::string shown() {
        goHome();
        display().calls.clear();
        touch(82, 205);
        return callsWith({"type 7"});
    }
};

TEST_F(AboutPage, TellsVersionLanguageAndAddress) {
    EXPECT_EQ(
        shown(), "drawWidget(type 7 at 18,52 294x40 selected 1 \"Software version\t" OSTREL_VERSION "\")\n"
                 "drawWidget(type 7 at 18,96 294x40 selected 1 \"Language\tEnglish\")\n"
                 "drawWidget(type 7 at 18,140 294x40 selected 1 \"IP address\t192.168.1.1\")\n");
}

TEST_F(AboutPage, NamesNoAddressThatItDoesNotKnow) {
    fakeSettings().working[1]["DHCP"] = "1";
    EXPECT_NE(shown().find("\"IP address\tautomatic\""), std::string::npos);
}

class RestartPage : public PagesDesk {};

TEST_F(RestartPage, RestartsTheServicesOnTheSecondTouchOnly) {
    touch(238, 205);
    EXPECT_EQ(&shownPage(), &restartPage);
    EXPECT_EQ(stored(), "");
    touch(27, 22);
    EXPECT_EQ(&shownPage(), &homePage);
    EXPECT_EQ(stored(), "");
    touch(238, 205);
    touch(160, 201);
    EXPECT_EQ(stored(), RESTART);
    EXPECT_EQ(&shownPage(), &homePage);
}

TEST_F(RestartPage, ShowsTwentySecondsOfProgressOnceTheRestartHasBegun) {
    touch(238, 205);
    display().calls.clear();
    fakeSleep().sleptUs = 0;
    touch(160, 201);
    EXPECT_EQ(fakeSleep().sleptUs, 20'000'000U);
    const std::string calls = callsWith({"drawText(", "system(", "disableTouch("});
    EXPECT_EQ(
        calls, "drawText(\"Restarting. The\", 130, 65, 130, 1, 0, 17, 65535, 1)\n"
               "drawText(\"network is back\", 130, 85, 130, 1, 0, 17, 65535, 1)\n"
               "drawText(\"in half a minute.\", 130, 105, 130, 1, 0, 17, 65535, 1)\n" +
                   std::string(RESTART) + "disableTouch(1)\ndisableTouch(0)\n");
}

} // namespace
