#include "simulator/store/lasting.h"

#include "simulator/store/scratch.h"
#include "simulator/store/store_files.h"

#include <cerrno>

namespace ostrel {
namespace {

struct Texts {
    char current[STORE_SIZE];
    char changed[STORE_SIZE];
};

int setInCopy(const char* directory, Section section, Copy copy, const char* name, const char* value, Texts& texts) {
    size_t size = 0;
    const int error = readCopy(directory, section, copy, texts.current, size);
    if (error != 0)
        return error;
    size = putSetting(texts.current, size, name, value, texts.changed);
    return size != 0 ? writeCopy(directory, section, copy, texts.changed, size, Durable::Yes) : -ENOSPC;
}

} // namespace

int setLasting(const char* directory, Section section, const char* name, const char* value) {
    const Scratch<Texts> texts;
    const StoreLock lock(directory);
    if (!texts)
        return -ENOMEM;
    if (lock.error() != 0)
        return lock.error();
    if (name[0] == '\0')
        return -EINVAL;
    const int error = setInCopy(directory, section, Copy::Working, name, value, *texts);
    if (error != 0 && error != -ENOENT)
        return error;
    return setInCopy(directory, section, Copy::Committed, name, value, *texts);
}

} // namespace ostrel
