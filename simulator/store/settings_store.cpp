#include "simulator/store/settings_store.h"

#include "simulator/store/scratch.h"
#include "simulator/store/store_files.h"

#include <cerrno>
#include <cstring>

namespace ostrel {
namespace {

struct Texts {
    char current[STORE_SIZE];
    char changed[STORE_SIZE];
};

} // namespace

int getStored(const char* directory, Section section, const char* name, char (&value)[SETTING_SIZE]) {
    const Scratch<Texts> texts;
    value[0] = '\0';
    if (!texts)
        return -ENOMEM;
    size_t size = 0;
    const int error = readCurrent(directory, section, texts->current, size);
    if (error == 0)
        findSetting(texts->current, size, name, value);
    return error;
}

int setStored(const char* directory, Section section, const char* name, const char* value) {
    const Scratch<Texts> texts;
    const StoreLock lock(directory);
    if (!texts)
        return -ENOMEM;
    if (lock.error() != 0)
        return lock.error();
    if (name[0] == '\0')
        return -EINVAL;
    size_t size = 0;
    const int error = readCurrent(directory, section, texts->current, size);
    if (error != 0)
        return error;
    const size_t newSize = putSetting(texts->current, size, name, value, texts->changed);
    if (newSize == 0)
        return -ENOSPC;
    if (newSize == size && memcmp(texts->current, texts->changed, size) == 0)
        return 0;
    return writeCopy(directory, section, Copy::Working, texts->changed, newSize);
}

int commitStored(const char* directory, Section section) {
    const Scratch<Texts> texts;
    const StoreLock lock(directory);
    if (!texts)
        return -ENOMEM;
    if (lock.error() != 0)
        return lock.error();
    size_t size = 0;
    int error = readCopy(directory, section, Copy::Working, texts->current, size);
    if (error == -ENOENT)
        return 0; // nothing was set since the last commit
    if (error == 0)
        error = writeCopy(directory, section, Copy::Committed, texts->current, size, Durable::Yes);
    if (error == 0)
        removeCopy(directory, section, Copy::Working); // should it stay, it says the same
    return error;
}

} // namespace ostrel
