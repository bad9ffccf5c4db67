// The settings as the text of a backup: what is written is read again, and nothing else is.
#include "apps/settings/backup_file.h"

#include <cstdio>
#include <cstring>
#include <gtest/gtest.h>
#include <zlib.h>

namespace {

const char* const WRITTEN = "ostrel-backup 1\n"
                            "made 2026-11-20 17:03\n"
                            "main Language=greek\n"
                            "main ScreenLock=1\n"
                            "main PIN=4711\n"
                            "main WifiName=Καφέ \\x5c 24=7\n"
                            "main WifiSecurity=wpa3\n"
                            "main WifiPassword= two\\x0alines \n"
                            "main DHCP=0\n"
                            "main IPAddress=192.168.1.9\n"
                            "main NetMask=255.255.255.0\n"
                            "main Gateway=\n"
                            "rtdev ShowPass=0\n"
                            "rtdev ScreenTimeout=31536000\n";

Backup example() {
    return {
        "2026-11-20 17:03",
        {"greek", "1", "4711", "Καφέ \\ 24=7", "wpa3", " two\nlines ", "0", "192.168.1.9", "255.255.255.0", "", "0",
         "31536000"}};
}

bool isRead(const std::string& text) {
    Backup backup;
    return readBackup(text, backup);
}

// The lines with their checksum, by zlib.
std::string withChecksum(const std::string& lines) {
    char line[32];
    const auto* const bytes = reinterpret_cast<const Bytef*>(lines.data());
    snprintf(line, sizeof line, "checksum %08lx\n", crc32(0, bytes, static_cast<uInt>(lines.size())));
    return lines + line;
}

TEST(BackupFile, HasALineForEachSettingAndAChecksum) {
    const std::string text = backupText(example());
    EXPECT_EQ(text.substr(0, text.find("checksum")), WRITTEN);
    EXPECT_EQ(text.substr(text.find("checksum")), "checksum 29a6bf0e\n");
}

TEST(BackupFile, GivesBackWhatWasWritten) {
    Backup backup;
    ASSERT_TRUE(readBackup(backupText(example()), backup));
    EXPECT_EQ(backup.madeAt, "2026-11-20 17:03");
    for (size_t i = 0; i < BACKED_UP_COUNT; ++i)
        EXPECT_EQ(backup.values[i], example().values[i]) << BACKED_UP[i].name;
}

TEST(BackupFile, KeepsEveryByteOfAValue) {
    Backup written;
    for (int byte = 1; byte < 256; ++byte)
        written.values[3] += static_cast<char>(byte);
    written.values[5] = std::string(1023, '\x01');
    Backup backup;
    ASSERT_TRUE(readBackup(backupText(written), backup));
    EXPECT_EQ(backup.values[3], written.values[3]);
    EXPECT_EQ(backup.values[5], written.values[5]);
}

TEST(BackupFile, MayHaveNoDate) {
    Backup written = example();
    written.madeAt = "";
    const std::string text = backupText(written);
    EXPECT_EQ(text.find("made"), std::string::npos);
    Backup backup = example();
    ASSERT_TRUE(readBackup(text, backup));
    EXPECT_EQ(backup.madeAt, "");
}

TEST(BackupFile, IsRefusedWhereverItIsCutOff) {
    const std::string text = backupText(example());
    for (size_t length = 0; length < text.size(); ++length)
        EXPECT_FALSE(isRead(text.substr(0, length))) << length;
}

TEST(BackupFile, IsRefusedWithAnyBitChanged) {
    const std::string text = backupText(example());
    for (size_t at = 0; at < text.size(); ++at)
        for (int bit = 0; bit < 8; ++bit) {
            std::string changed = text;
            changed[at] = static_cast<char>(changed[at] ^ (1 << bit));
            EXPECT_FALSE(isRead(changed)) << "byte " << at << ", bit " << bit;
        }
}

TEST(BackupFile, IsRefusedWithAnythingBehindOrMissing) {
    const std::string text = backupText(example());
    EXPECT_FALSE(isRead(text + "\n"));
    EXPECT_FALSE(isRead(text + text));
    EXPECT_FALSE(isRead(text + std::string(1, '\0')));
    EXPECT_FALSE(isRead(""));
    EXPECT_FALSE(isRead("\n"));
    EXPECT_FALSE(isRead(std::string(70000, 'x')));
}

// With checksums that are right: texts that this program never writes.
TEST(BackupFile, IsRefusedInAnotherFormWithTheRightChecksum) {
    EXPECT_TRUE(isRead(withChecksum(WRITTEN)));
    struct Change {
        const char* what;
        const char* from;
        const char* to;
    };
    const Change changes[] = {
        {"another format", "ostrel-backup 1\n", "ostrel-backup 2\n"},
        {"a setting missing", "main DHCP=0\n", ""},
        {"a setting twice", "main DHCP=0\n", "main DHCP=0\nmain DHCP=0\n"},
        {"another order", "main DHCP=0\nmain IPAddress=192.168.1.9\n", "main IPAddress=192.168.1.9\nmain DHCP=0\n"},
        {"an unknown setting", "main DHCP=0\n", "main DHCP=0\nmain Other=1\n"},
        {"another section", "rtdev ShowPass=0", "main ShowPass=0"},
        {"no date", "made 2026-11-20 17:03\n", "made \n"},
        {"a date of letters", "made 2026-11-20 17:03\n", "made someday or other\n"},
        {"a date too long", "made 2026-11-20 17:03\n", "made 2026-11-20 17:03:59\n"},
        {"another sign in the date", "made 2026-11-20 17:03\n", "made 2026/11/20 17:03\n"},
        {"a digit too large", "made 2026-11-20 17:03\n", "made 2026-11-20 17:0:\n"},
        {"a control character", "main DHCP=0\n", "main DHCP=0\t\n"},
        {"a carriage return", "main DHCP=0\n", "main DHCP=0\r\n"},
        {"an escape cut off", "main DHCP=0\n", "main DHCP=\\x0\n"},
        {"a bare backslash", "main DHCP=0\n", "main DHCP=\\\n"},
        {"a large hexadecimal digit", "\\x5c", "\\x5C"},
        {"no hexadecimal digit", "\\x5c", "\\x5g"},
        {"another escape", "\\x5c", "\\n5c"},
        {"an escaped letter", "main DHCP=0\n", "main DHCP=\\x30\n"},
        {"an escaped terminator", "main DHCP=0\n", "main DHCP=\\x00\n"},
    };
    for (const Change& change : changes) {
        std::string lines = WRITTEN;
        ASSERT_NE(lines.find(change.from), std::string::npos) << change.what;
        EXPECT_FALSE(isRead(withChecksum(lines.replace(lines.find(change.from), strlen(change.from), change.to))))
            << change.what;
    }
}

TEST(BackupFile, IsRefusedWhenItWouldLockThePanelForGood) {
    for (const char* const pin : {"", "471", "47111", "471a", "４７１１"}) {
        Backup written = example();
        written.values[2] = pin;
        EXPECT_FALSE(isRead(backupText(written))) << pin;
        written.values[1] = "0";
        EXPECT_TRUE(isRead(backupText(written))) << pin;
    }
}

TEST(BackupFile, LeavesWhatWasThereWhenItIsRefused) {
    Backup backup = example();
    EXPECT_FALSE(readBackup("ostrel-backup 1\n", backup));
    EXPECT_EQ(backup.madeAt, "2026-11-20 17:03");
    EXPECT_EQ(backup.values[2], "4711");
}

} // namespace
