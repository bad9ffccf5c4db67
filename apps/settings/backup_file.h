// What a backup of the settings is as a file:
//
//     ostrel-backup 1
//     made 2026-11-20 17:03
//     main Language=english
//     ...
//     rtdev ScreenTimeout=300
//     checksum 3075ff6e
//
// Every setting of BACKED_UP stands there once, in that order, so for the same settings there is only this one text.
// Control characters and backslashes are written as \x and two hexadecimal digits. The checksum is the CRC-32 of all
// lines before it. The second line is left out when the router did not know the date.
#ifndef OSTREL_APPS_SETTINGS_BACKUP_FILE_H
#define OSTREL_APPS_SETTINGS_BACKUP_FILE_H

#include "store.h"

#include <cstddef>
#include <iterator>
#include <string>

constexpr Setting BACKED_UP[] = {
    setting::LANGUAGE,       setting::SCREEN_LOCK,    setting::PIN,     setting::WIFI_NAME, setting::WIFI_SECURITY,
    setting::WIFI_PASSWORD,  setting::DHCP,           setting::ADDRESS, setting::MASK,      setting::GATEWAY,
    setting::SHOW_PASSWORDS, setting::SCREEN_TIMEOUT,
};
constexpr size_t BACKED_UP_COUNT = std::size(BACKED_UP);

struct Backup {
    std::string madeAt; // "2026-11-20 17:03"; empty: not known
    std::string values[BACKED_UP_COUNT];
};

std::string backupText(const Backup& backup);

// Reads what backupText wrote. False, and `backup` is unchanged, for a text that differs from that in any byte, and for
// settings that would lock the panel without a PIN that opens it again.
bool readBackup(const std::string& text, Backup& backup);

#endif
