// A language file that exists in memory only, under a path that can be opened.
#ifndef OSTREL_TESTS_SUPPORT_LANGUAGE_FILE_H
#define OSTREL_TESTS_SUPPORT_LANGUAGE_FILE_H

#include <string>

#include <sys/mman.h>
#include <unistd.h>

class LanguageTextFile {
  public:
    explicit LanguageTextFile(const std::string& bytes) : descriptor(memfd_create("language", MFD_CLOEXEC)) {
        write(bytes);
    }
    LanguageTextFile(const LanguageTextFile&) = delete;
    LanguageTextFile& operator=(const LanguageTextFile&) = delete;
    ~LanguageTextFile() { close(descriptor); }

    // Replaces the contents. False when that fails.
    bool write(const std::string& bytes) {
        return ftruncate(descriptor, 0) == 0 &&
               pwrite(descriptor, bytes.data(), bytes.size(), 0) == static_cast<ssize_t>(bytes.size());
    }

    std::string path() const { return "/proc/self/fd/" + std::to_string(descriptor); }

  private:
    int descriptor;
};

#endif
