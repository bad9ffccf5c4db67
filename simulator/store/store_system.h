// The system calls with which the store changes files, each behind one function that a test can take over. They go to
// the kernel directly, since in a program under the simulator the C library's names may be the program's own.
#ifndef OSTREL_SIMULATOR_STORE_STORE_SYSTEM_H
#define OSTREL_SIMULATOR_STORE_STORE_SYSTEM_H

#include <cstddef>

namespace ostrel {

// All return what the call returns, with errno set on failure.
int storeOpen(const char* path, int flags);
long storeRead(int fd, void* buffer, size_t size);
long storeWrite(int fd, const void* bytes, size_t size);
int storeSync(int fd);
int storeRename(const char* from, const char* to);
int storeUnlink(const char* path);
int storeLock(int fd);
int storeClose(int fd);

} // namespace ostrel

#endif
