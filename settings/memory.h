// Memory: the router's settings by section, in batches, and the restart of what acts on them.
//
// Plain operations work on section 1, the main settings, those with Rtdev in their name on section 2. Names and values
// are bytes, UTF-8 where they are words, at most 1023 of them; longer ones are cut there. A null name or value to store
// is an empty one.
//
// No operation reports a failure. A read that fails gives an empty text; what could not be written is simply not
// there: read it back where it matters. Every operation makes its requests at once and keeps nothing, so any number of
// objects may exist, and any thread may call.
//
// To change several settings: addValue for each, saveValues once for each section that changed, then commit once.
#ifndef OSTREL_SETTINGS_MEMORY_H
#define OSTREL_SETTINGS_MEMORY_H

#include "settings/nvram.h"

class OSTREL_API Memory {
  public:
    ~Memory();

    // Copies the setting's text and its terminator into `value`. The buffer must hold the longest value that the
    // setting may have: NVRAM_TEXT_LENGTH bytes hold any. Never more than these are written, and nothing behind the
    // terminator. getNoSaveSetting is the same as getSetting.
    void getSetting(char* name, char* value);
    void getSetting(const char* name, char* value) { getSetting(const_cast<char*>(name), value); }
    void getNoSaveSetting(char* name, char* value);
    void getNoSaveSetting(const char* name, char* value) { getNoSaveSetting(const_cast<char*>(name), value); }
    void getSettingRtdev(char* name, char* value);
    void getSettingRtdev(const char* name, char* value) { getSettingRtdev(const_cast<char*>(name), value); }

    // Store a value in the section's working copy: at once there for every program, lost with the power until saved.
    void addValue(const char* name, const char* value);
    void addValueRtdev(const char* name, const char* value);

    // Keep the section's working copy for good, with everything that was added to it, by this program or another.
    void saveValues();
    void saveValuesRtdev();

    // Add and save in one: for a single setting.
    void saveSetting(const char* name, const char* value);
    void saveSettingRtdev(const char* name, const char* value);

    // Restarts the settings daemon and the system services, so that they act on what was saved; it saves nothing
    // itself. Returns once the restart has begun: it goes on in the background for some twenty seconds, which the
    // caller tells the user.
    void commit();

    // Do nothing: `out` is left as it was.
    void getMac(char* out);
    void getCloudID(char* out);
};

#endif
