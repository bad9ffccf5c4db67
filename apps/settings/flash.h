// The program's own small files in the router's flash partition, with the failures that Persistence cannot tell of.
#ifndef OSTREL_APPS_SETTINGS_FLASH_H
#define OSTREL_APPS_SETTINGS_FLASH_H

#include <ostrel.h>

#include <string>

class Flash {
  public:
    Flash();

    // Writes the file, readable by its owner alone, reads it back and compares. False: it is not there as it should be,
    // and what is there instead is of no use. The partition is then full or cannot be mounted.
    bool write(const char* name, const std::string& text);

    // The file's content, at most 64 KiB of it. Empty: there is no such file, or it cannot be read.
    std::string read(const char* name);

    void remove(const char* name);

    // Tries it out with a file that is removed again.
    bool isUsable();

  private:
    bool isBesideFlash(const char* name) const;

    Persistence files;
};

#endif
