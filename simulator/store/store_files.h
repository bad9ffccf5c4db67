// The store's files in a state directory. A file is only ever replaced as a whole, by renaming a complete new one over
// it, so that whoever is stopped at whatever moment leaves the old text or the new one.
#ifndef OSTREL_SIMULATOR_STORE_STORE_FILES_H
#define OSTREL_SIMULATOR_STORE_STORE_FILES_H

#include "simulator/store/store_text.h"

namespace ostrel {

// Each section has two copies. The working copy exists while it may differ from the committed one.
enum class Copy { Committed, Working };

// How much a change has to survive: the end of any process, or also the end of the machine.
enum class Durable { No, Yes };

constexpr size_t STORE_PATH_SIZE = 4096;

// The path of a copy's file in `directory`: "settings.main", "settings.main.working". False when it is too long.
bool storePath(char (&path)[STORE_PATH_SIZE], const char* directory, Section section, Copy copy);

// All return 0 or a negative errno, and writing and removing leave the old file in place then. -EIO: the file is not
// this section's text.
int readCopy(const char* directory, Section section, Copy copy, char (&text)[STORE_SIZE], size_t& size);
int writeCopy(
    const char* directory, Section section, Copy copy, const char* text, size_t size, Durable durable = Durable::No);
int removeCopy(const char* directory, Section section, Copy copy);

// Reads what programs see: the working copy, or the committed one where there is none. -EIO where that is missing too.
int readCurrent(const char* directory, Section section, char (&text)[STORE_SIZE], size_t& size);

// Keeps other threads and processes from changing the store. The lock belongs to the descriptor and ends with it or
// with its process.
class StoreLock {
  public:
    explicit StoreLock(const char* directory);
    ~StoreLock();
    StoreLock(const StoreLock&) = delete;
    StoreLock& operator=(const StoreLock&) = delete;

    // 0, or the negative errno for which the lock could not be had.
    int error() const { return lockError; }

  private:
    int fd = -1;
    int lockError = 0;
};

} // namespace ostrel

#endif
