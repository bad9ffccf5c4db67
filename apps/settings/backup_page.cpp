// Backup: all settings into the flash partition and back.
#include "backup_store.h"
#include "confirm.h"
#include "idle.h"
#include "notice.h"
#include "pages.h"
#include "texts.h"

#include <ctime>

namespace {

enum { TEXT_LINES = 3, SAVE = TEXT_LINES, RESTORE };
Widget widgets[] = {
    {wType.kind7, 18, 48, 0, 0, 0, 294, 24, 17, 1, L""}, {wType.kind7, 18, 72, 0, 0, 0, 294, 24, 17, 1, L""},
    {wType.kind7, 18, 96, 0, 0, 0, 294, 24, 17, 1, L""}, {wType.kind0, 8, 136, 0, 0, 0, 304, 44, 20, 1, L""},
    {wType.kind0, 8, 188, 0, 0, 0, 304, 44, 20, 1, L""},
};
Screen screen(L"");

Batch batch; // what a restore changes

constexpr int BOXED_NOTE = 1;
constexpr unsigned short BAR_LEFT = 70; // where Modal::time has its bar
constexpr unsigned short BAR_TOP = 130;
constexpr unsigned short BAR_WIDTH = 180;
constexpr unsigned short BAR_HEIGHT = 20;
constexpr int WHITE = 0xFFFF;

struct Work {
    int steps;
    int done;
};
Work work;

// A message with a bar that grows with the work. Taps meanwhile are not for what comes after it.
void beginWork(const std::string& key, int steps) {
    work = {steps, 0};
    disableTouch(1);
    Modal message;
    message.setLine1(textOf((key + "_l1").c_str()));
    message.setLine2(textOf((key + "_l2").c_str()));
    message.setLine3(textOf((key + "_l3").c_str()));
    message.drawTimed(BOXED_NOTE);
    drawRect(BAR_LEFT, BAR_TOP, BAR_LEFT + BAR_WIDTH, BAR_TOP + BAR_HEIGHT, WHITE);
}

void finishStep() {
    constexpr int GAP = 2;
    constexpr int LENGTH = BAR_WIDTH - 2 * GAP;
    ++work.done;
    const auto end = static_cast<unsigned short>(BAR_LEFT + GAP + LENGTH * work.done / work.steps);
    fillRect(BAR_LEFT + GAP, BAR_TOP + GAP, end, BAR_TOP + BAR_HEIGHT - GAP, WHITE);
}

void endWork() {
    disableTouch(0);
    redrawPage();
}

// Empty on a router that does not know the date: it begins long ago.
std::string dateNow() {
    constexpr int FIRST_YEAR = 2024;
    constexpr int YEARS_FROM = 1900;
    const std::time_t now = std::time(nullptr);
    std::tm parts = {};
    char text[32] = "";
    if (localtime_r(&now, &parts) != nullptr && parts.tm_year + YEARS_FROM >= FIRST_YEAR)
        std::strftime(text, sizeof text, "%Y-%m-%d %H:%M", &parts);
    return text;
}

void save() {
    Backup backup;
    backup.madeAt = dateNow();
    for (size_t i = 0; i < BACKED_UP_COUNT; ++i)
        backup.values[i] = readSetting(BACKED_UP[i]);
    beginWork("backup_saving", KEEP_STEPS);
    const bool isKept = keepBackup(backup, finishStep);
    endWork();
    if (isKept)
        tell("backup_saved");
    else
        refuse("backup_no_room");
    redrawPage();
}

// The settings may bring another language, another timeout and other passwords.
void replaceSettings() {
    const bool isStored = batch.store();
    showPage(backupPage);
    changeLanguage();
    followTimeout();
    if (isStored)
        tell("backup_restored");
    else
        refuse("common_failed");
    redrawPage();
}

void askToReplace(const Backup& backup) {
    static constexpr Question DATED{"backup_restore", "backup", 3, "backup_replace", "backup_keep", true};
    static constexpr Question UNDATED{"backup_restore", "backup", 2, "backup_replace", "backup_keep", true};
    batch.discard();
    for (size_t i = 0; i < BACKED_UP_COUNT; ++i)
        batch.set(BACKED_UP[i], backup.values[i]);
    if (batch.changed()) {
        ask(backup.madeAt.empty() ? UNDATED : DATED, replaceSettings, backup.madeAt);
    } else {
        tell("backup_same");
        redrawPage();
    }
}

void restore() {
    Backup backup;
    beginWork("backup_reading", FIND_STEPS);
    const Found found = findBackup(backup, finishStep);
    endWork();
    switch (found) {
    case Found::Backup:
        askToReplace(backup);
        return;
    case Found::Nothing:
        refuse("backup_nothing");
        break;
    case Found::Damaged:
        refuse("backup_damaged");
        break;
    case Found::NoFlash:
        refuse("backup_no_flash");
        break;
    }
    redrawPage();
}

void prepare() {
    preparePage(screen, linked(widgets));
    widgets[SAVE].callback = save;
    widgets[RESTORE].callback = restore;
}

void retext() {
    entitle(screen, "backup_title");
    label(widgets[0], "backup_text1");
    label(widgets[1], "backup_text2");
    label(widgets[2], "backup_text3");
    label(widgets[SAVE], "backup_save");
    label(widgets[RESTORE], "backup_restore");
}

} // namespace

const Page backupPage{&screen, prepare, retext, nullptr, nullptr, nullptr, nullptr};
