#include "simulator/store/store_files.h"

#include "simulator/state.h"
#include "simulator/store/store_system.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>

namespace ostrel {
namespace {

bool formatPath(char (&path)[STORE_PATH_SIZE], const char* directory, const char* name, const char* ending) {
    const int length = snprintf(path, STORE_PATH_SIZE, "%s/%s.%s%s", directory, state::STORE, name, ending);
    return length > 0 && static_cast<size_t>(length) < STORE_PATH_SIZE;
}

int readAll(int fd, char* buffer, size_t room, size_t& size) {
    for (size = 0; size < room;) {
        const long part = storeRead(fd, buffer + size, room - size);
        if (part < 0 && errno == EINTR)
            continue;
        if (part <= 0)
            return part < 0 ? -errno : 0;
        size += static_cast<size_t>(part);
    }
    return -EIO; // longer than any section
}

int writeAll(int fd, const char* text, size_t size) {
    while (size > 0) {
        const long part = storeWrite(fd, text, size);
        if (part < 0 && errno == EINTR)
            continue;
        if (part <= 0)
            return part < 0 ? -errno : -EIO;
        text += part;
        size -= static_cast<size_t>(part);
    }
    return 0;
}

int writeNew(const char* path, const char* text, size_t size, Durable durable) {
    const int fd = storeOpen(path, O_WRONLY | O_CREAT | O_TRUNC);
    if (fd < 0)
        return -errno;
    int error = writeAll(fd, text, size);
    if (error == 0 && durable == Durable::Yes && storeSync(fd) != 0)
        error = -errno;
    if (storeClose(fd) != 0 && error == 0)
        error = -errno;
    return error;
}

// A renamed file is safe once its directory is.
int syncDirectory(const char* directory) {
    const int fd = storeOpen(directory, O_RDONLY | O_DIRECTORY);
    if (fd < 0)
        return -errno;
    const int error = storeSync(fd) == 0 ? 0 : -errno;
    storeClose(fd);
    return error;
}

} // namespace

bool storePath(char (&path)[STORE_PATH_SIZE], const char* directory, Section section, Copy copy) {
    return formatPath(path, directory, sectionName(section), copy == Copy::Working ? ".working" : "");
}

int readCopy(const char* directory, Section section, Copy copy, char (&text)[STORE_SIZE], size_t& size) {
    char path[STORE_PATH_SIZE];
    if (!storePath(path, directory, section, copy))
        return -ENAMETOOLONG;
    const int fd = storeOpen(path, O_RDONLY | O_NONBLOCK);
    if (fd < 0)
        return -errno;
    const int error = readAll(fd, text, STORE_SIZE, size);
    storeClose(fd);
    if (error != 0)
        return error;
    return checkStore(text, size, section).reason == nullptr ? 0 : -EIO;
}

int writeCopy(const char* directory, Section section, Copy copy, const char* text, size_t size, Durable durable) {
    char path[STORE_PATH_SIZE];
    char fresh[STORE_PATH_SIZE];
    if (!storePath(path, directory, section, copy) || !formatPath(fresh, directory, sectionName(section), ".new"))
        return -ENAMETOOLONG;
    int error = writeNew(fresh, text, size, durable);
    if (error == 0 && storeRename(fresh, path) != 0)
        error = -errno;
    if (error != 0) {
        storeUnlink(fresh);
        return error;
    }
    return durable == Durable::Yes ? syncDirectory(directory) : 0;
}

int removeCopy(const char* directory, Section section, Copy copy) {
    char path[STORE_PATH_SIZE];
    if (!storePath(path, directory, section, copy))
        return -ENAMETOOLONG;
    return storeUnlink(path) == 0 || errno == ENOENT ? 0 : -errno;
}

int readCurrent(const char* directory, Section section, char (&text)[STORE_SIZE], size_t& size) {
    int error = readCopy(directory, section, Copy::Working, text, size);
    if (error == -ENOENT)
        error = readCopy(directory, section, Copy::Committed, text, size);
    return error == -ENOENT ? -EIO : error;
}

StoreLock::StoreLock(const char* directory) {
    char path[STORE_PATH_SIZE];
    if (!formatPath(path, directory, "lock", "")) {
        lockError = -ENAMETOOLONG;
        return;
    }
    fd = storeOpen(path, O_RDWR | O_CREAT);
    if (fd < 0) {
        lockError = -errno;
        return;
    }
    int result = 0;
    do {
        result = storeLock(fd);
    } while (result != 0 && errno == EINTR);
    lockError = result == 0 ? 0 : -errno;
}

StoreLock::~StoreLock() {
    if (fd >= 0)
        storeClose(fd);
}

} // namespace ostrel
