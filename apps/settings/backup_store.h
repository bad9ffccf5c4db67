// Where the backup of the settings is kept: a file in the flash, in place of the one before.
//
// A new backup is written beside the old one first, so that a full flash or a power cut leaves one of them whole.
#ifndef OSTREL_APPS_SETTINGS_BACKUP_STORE_H
#define OSTREL_APPS_SETTINGS_BACKUP_STORE_H

#include "backup_file.h"

// Steps of work that keepBackup and findBackup do, for progress on the panel: each is over when `onStep` is called.
enum { KEEP_STEPS = 4, FIND_STEPS = 2 };

// False: the flash is full or cannot be used. The backup before is still there.
bool keepBackup(const Backup& backup, void (*onStep)());

enum class Found { Backup, Nothing, Damaged, NoFlash };

// Reads the backup; `backup` is unchanged when there is none that is whole.
Found findBackup(Backup& backup, void (*onStep)());

#endif
