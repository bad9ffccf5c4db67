#include "backup_store.h"

#include "flash.h"

namespace {

constexpr const char* FILE_NAME = "settings.backup";
constexpr const char* NEW_FILE_NAME = "settings.backup.new";

} // namespace

bool keepBackup(const Backup& backup, void (*onStep)()) {
    const std::string text = backupText(backup);
    Flash flash;
    onStep();
    const bool isSafe = flash.write(NEW_FILE_NAME, text);
    onStep();
    const bool isInPlace = isSafe && flash.write(FILE_NAME, text);
    onStep();
    if (isInPlace || !isSafe) // otherwise it may be the only one that is whole
        flash.remove(NEW_FILE_NAME);
    onStep();
    return isInPlace;
}

Found findBackup(Backup& backup, void (*onStep)()) {
    Flash flash;
    onStep();
    std::string text = flash.read(FILE_NAME);
    bool isThere = !text.empty();
    bool isWhole = readBackup(text, backup);
    if (!isWhole) {
        text = flash.read(NEW_FILE_NAME);
        isThere = isThere || !text.empty();
        isWhole = readBackup(text, backup);
    }
    onStep();
    if (isWhole)
        return Found::Backup;
    if (isThere)
        return Found::Damaged;
    return flash.isUsable() ? Found::Nothing : Found::NoFlash;
}
