#include "simulator/store/store_system.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace ostrel {

// Readable by its owner only: the store holds passwords.
constexpr int FILE_MODE = 0600;

int storeOpen(const char* path, int flags) {
    return static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags | O_CLOEXEC | O_NOFOLLOW, FILE_MODE));
}

long storeRead(int fd, void* buffer, size_t size) {
    return syscall(SYS_read, fd, buffer, size);
}

long storeWrite(int fd, const void* bytes, size_t size) {
    return syscall(SYS_write, fd, bytes, size);
}

int storeSync(int fd) {
    return static_cast<int>(syscall(SYS_fsync, fd));
}

int storeRename(const char* from, const char* to) {
    return static_cast<int>(syscall(SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, 0));
}

int storeUnlink(const char* path) {
    return static_cast<int>(syscall(SYS_unlinkat, AT_FDCWD, path, 0));
}

int storeLock(int fd) {
    return static_cast<int>(syscall(SYS_flock, fd, LOCK_EX));
}

int storeClose(int fd) {
    return static_cast<int>(syscall(SYS_close, fd));
}

} // namespace ostrel
