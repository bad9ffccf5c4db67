// The settings into the flash and back, over runs of the simulator, and what can be wrong with a backup. About and
// Restart.
#include "tests/e2e/settings/settings_desk.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <zlib.h>

namespace {

constexpr Point BACKUP = {238, 141};
constexpr Point BACKUP_SAVE = {160, 158};
constexpr Point BACKUP_RESTORE = {160, 210};
constexpr Point REPLACE = {160, 163};
constexpr Point KEEP_AS_IT_IS = {160, 211};

class BackupPage : public SettingsDesk {
  protected:
    std::string flash(const std::string& name) const { return desk.file("state/mtdblock5/" + name); }
    std::string place() const { return flash("apps/ostrel-settings/settings.backup"); }

    void writeBackup(const std::string& text) const {
        std::filesystem::create_directories(flash("apps/ostrel-settings"));
        std::ofstream(place(), std::ios::binary) << text;
    }

    // One of a day that is known, with another network.
    std::string earlierBackup() const {
        const std::string lines = std::string("ostrel-backup 1\nmade 2026-11-20 17:03\nmain Language=") + GetParam() +
                                  "\nmain ScreenLock=1\nmain PIN=2580\nmain WifiName=Earlier\nmain WifiSecurity=wpa3\n"
                                  "main WifiPassword=correct horse\nmain DHCP=0\nmain IPAddress=10.1.2.3\n"
                                  "main NetMask=255.0.0.0\nmain Gateway=10.1.2.4\nrtdev ShowPass=0\n"
                                  "rtdev ScreenTimeout=1800\n";
        char checksum[32];
        std::snprintf(
            checksum, sizeof checksum, "checksum %08lx\n",
            crc32(0, reinterpret_cast<const Bytef*>(lines.data()), static_cast<uInt>(lines.size())));
        return lines + checksum;
    }

    // The flash's own commands may complain.
    void playDespiteComplaints(const Story& story) {
        desk.write("script", story.text);
        const Told told = desk.run(
            "--headless --patience 120 --speed 50 --script script '" OSTREL_SETTINGS "'",
            "OSTREL_ASSETS='" OSTREL_STAGED "'");
        EXPECT_EQ(told.status, 0) << told.errors;
    }
};
INSTANTIATE_TEST_SUITE_P(In, BackupPage, testing::Values("english", "greek"), languageOf);

TEST_P(BackupPage, RestoresInALaterRunWhatItSavedInAnEarlierOne) {
    give("main WifiName", "Mine=\\ 24");
    give("main PIN", "2580");
    play(Story().tap(BACKUP).shot("backup").tap(BACKUP_SAVE).shot("backup-saved").tap(ANYWHERE).shot("after"));
    EXPECT_TRUE(shows("backup"));
    EXPECT_TRUE(shows("backup-saved", MESSAGE_BOX));
    EXPECT_TRUE(matchesPicture(picture("after"), picture("backup"), "settings-backup-after"));
    EXPECT_EQ(std::filesystem::status(place()).permissions(), std::filesystem::perms(0600));
    EXPECT_FALSE(std::filesystem::exists(place() + ".new"));
    EXPECT_EQ(stored(), "");

    give("main WifiName", "Other");
    give("main PIN", "1111");
    give("main Language", "german");
    give("rtdev ScreenTimeout", "60");
    play(Story()
             .tap(BACKUP)
             .tap(BACKUP_RESTORE)
             .tap(REPLACE)
             .shot("backup-restored")
             .say(RESTARTED)
             .tap(ANYWHERE)
             .shot("after"));
    EXPECT_TRUE(shows("backup-restored", MESSAGE_BOX)); // in the restored language
    EXPECT_TRUE(matchesPicture(picture("after"), picture("backup"), "settings-backup-after"));
    EXPECT_EQ(
        stored(), "set main Language: \"" + std::string(GetParam()) +
                      "\"\n"
                      "set main PIN: ****\n"
                      "set main WifiName: \"Mine=\\ 24\"\n"
                      "set rtdev ScreenTimeout: \"300\"\n"
                      "commit main\n"
                      "commit rtdev\n");
    EXPECT_EQ(kept("main WifiName"), "Mine=\\ 24\n");
    EXPECT_EQ(kept("main PIN"), "2580\n");
    EXPECT_EQ(kept("rtdev ScreenTimeout"), "300\n");
}

TEST_P(BackupPage, AsksBeforeItReplacesSettings) {
    writeBackup(earlierBackup());
    play(Story()
             .tap(BACKUP)
             .shot("before")
             .tap(BACKUP_RESTORE)
             .shot("backup-ask")
             .tap(KEEP_AS_IT_IS)
             .shot("kept")
             .tap(BACKUP_RESTORE)
             .tap(PAGE_BACK)
             .shot("back"));
    EXPECT_TRUE(shows("backup-ask"));
    EXPECT_TRUE(matchesPicture(picture("kept"), picture("before"), "settings-backup-kept"));
    EXPECT_TRUE(matchesPicture(picture("back"), picture("before"), "settings-backup-back"));
    EXPECT_EQ(stored(), "");
}

TEST_P(BackupPage, SaysThatTheSettingsAreThoseOfTheBackup) {
    play(Story().tap(BACKUP).tap(BACKUP_SAVE).tap(ANYWHERE).tap(BACKUP_RESTORE).shot("backup-same"));
    EXPECT_TRUE(shows("backup-same", MESSAGE_BOX));
    EXPECT_EQ(stored(), "");
}

TEST_P(BackupPage, SaysThatThereIsNothingToRestore) {
    playDespiteComplaints(Story().tap(BACKUP).tap(BACKUP_RESTORE).shot("backup-nothing"));
    EXPECT_TRUE(shows("backup-nothing", MESSAGE_BOX));
    EXPECT_FALSE(std::filesystem::exists(flash("apps/ostrel-settings/probe")));
}

TEST_P(BackupPage, RefusesADamagedBackup) {
    const std::string whole = earlierBackup();
    const std::string damaged[] = {
        whole.substr(0, whole.size() / 2), whole + "\n",
        std::string(whole).replace(whole.find("10.1.2.3"), 8, "10.1.2.9")};
    for (const std::string& text : damaged) {
        writeBackup(text);
        playDespiteComplaints(Story().tap(BACKUP).tap(BACKUP_RESTORE).shot("backup-damaged"));
        EXPECT_TRUE(shows("backup-damaged", MESSAGE_BOX)) << text;
        EXPECT_EQ(stored(), "");
    }
}

// A flash that takes no files: where their folder should be is something else. That holds for root, too.
TEST_P(BackupPage, SaysThatTheFlashCannotBeUsed) {
    std::filesystem::create_directories(flash(""));
    std::ofstream(flash("apps")) << "no folder";
    playDespiteComplaints(Story()
                              .tap(BACKUP)
                              .tap(BACKUP_SAVE)
                              .shot("backup-no-room")
                              .tap(ANYWHERE)
                              .tap(BACKUP_RESTORE)
                              .shot("backup-no-flash"));
    EXPECT_TRUE(shows("backup-no-room", MESSAGE_BOX));
    EXPECT_TRUE(shows("backup-no-flash", MESSAGE_BOX));
    EXPECT_EQ(stored(), "");
}

constexpr Point ABOUT = {82, 205};
constexpr Point RESTART = {238, 205};
constexpr Point RESTART_NOW = {160, 201};
constexpr ostrel::Rect BELOW_THE_VERSION = {0, 94, 320, 240};

class OtherPages : public SettingsDesk {};
INSTANTIATE_TEST_SUITE_P(In, OtherPages, testing::Values("english", "greek"), languageOf);

TEST_P(OtherPages, TellAboutTheRouter) {
    play(Story().shot("home").tap(ABOUT).shot("about-automatic").tap(PAGE_BACK).shot("back"));
    EXPECT_TRUE(shows("about-automatic", BELOW_THE_VERSION));
    EXPECT_TRUE(matchesPicture(picture("back"), picture("home"), "settings-about-back"));
    give("main DHCP", "0");
    play(Story().tap(ABOUT).shot("about-address"));
    EXPECT_TRUE(shows("about-address", BELOW_THE_VERSION));
}

TEST_P(OtherPages, RestartTheServicesOnlyWhenTheRedButtonIsTouched) {
    play(Story().shot("home").tap(RESTART).shot("restart").tap(PAGE_BACK));
    EXPECT_TRUE(shows("restart"));
    EXPECT_EQ(contentOf(desk.file("state/log")).find("init_system"), std::string::npos);
    play(Story().tap(RESTART).tap(RESTART_NOW).shot("after").say(RESTARTED));
    EXPECT_TRUE(matchesPicture(picture("after"), picture("home"), "settings-restarted"));
    EXPECT_EQ(stored(), "");
}

} // namespace
