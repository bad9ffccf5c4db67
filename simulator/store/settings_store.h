// What the settings driver does for its three requests, on the files of a state directory. Any number of threads and
// processes may do so at once: changes follow one another, and a read sees a section before or after a change.
#ifndef OSTREL_SIMULATOR_STORE_SETTINGS_STORE_H
#define OSTREL_SIMULATOR_STORE_SETTINGS_STORE_H

#include "simulator/store/store_text.h"

namespace ostrel {

// All return 0 or a negative errno; what was set and committed before is still there after a failure. -EIO: the
// section's file is missing or damaged, and is left for whoever can repair it. -ENOSPC: the section or the disk is
// full.

// Reads from the working copy. An unknown setting has an empty value.
int getStored(const char* directory, Section section, const char* name, char (&value)[SETTING_SIZE]);

// Changes the working copy. -EINVAL: the name is empty.
int setStored(const char* directory, Section section, const char* name, const char* value);

// Makes the working copy the committed one. What was committed survives the end of any process at any moment, and once
// this has returned 0 also the end of the machine.
int commitStored(const char* directory, Section section);

} // namespace ostrel

#endif
