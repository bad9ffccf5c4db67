// A flash partition in this process, behind the shell commands that copy to and from it. It may be full, or not be
// there. Checks that what is copied lies in files that their owner alone can read, and that these are gone in the end.
#ifndef OSTREL_TESTS_UNIT_SETTINGS_FAKE_FLASH_H
#define OSTREL_TESTS_UNIT_SETTINGS_FAKE_FLASH_H

#include "tests/support/fake_system.h"

#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <map>
#include <regex>
#include <sstream>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

class FakeFlash {
  public:
    FakeFlash() {
        fakeSystem().run = [this](const std::string& command) { return run(command); };
    }
    ~FakeFlash() {
        for (const std::string& path : temporary)
            EXPECT_NE(access(path.c_str(), F_OK), 0) << path;
    }
    FakeFlash(const FakeFlash&) = delete;
    FakeFlash& operator=(const FakeFlash&) = delete;

    // A log with the temporary files' random names replaced.
    static std::string withoutNames(const std::string& log) {
        return std::regex_replace(log, std::regex("/tmp/ostrel-settings-[A-Za-z0-9]{6}"), "TEMPORARY");
    }

    std::map<std::string, std::string> files; // by the path that they have while the partition is mounted
    size_t room = 1000000;
    bool canBeMounted = true;

  private:
    int run(const std::string& command) {
        std::istringstream words(command);
        const std::vector<std::string> word(std::istream_iterator<std::string>(words), {});
        if (word[0] == "mount") {
            isMounted = canBeMounted;
            return isMounted ? 0 : 32;
        }
        if (word[0] == "umount")
            isMounted = false;
        else if (word[0] == "cp" && word[1].rfind("/tmp/", 0) == 0)
            return copyIn(word[1], word[2]);
        else if (word[0] == "cp")
            return copyOut(word[1], word[2]);
        else if (word[0] == "rm")
            return isMounted && files.erase(word[1]) == 1 ? 0 : 1;
        return 0;
    }

    int copyIn(const std::string& from, const std::string& to) {
        checkTemporary(from);
        if (!isMounted)
            return 1;
        std::ifstream file(from, std::ios::binary);
        const std::string content(std::istreambuf_iterator<char>(file), {});
        const size_t taken = room < content.size() ? room : content.size();
        room -= taken;
        files[to] = content.substr(0, taken);
        return taken == content.size() ? 0 : 1;
    }

    int copyOut(const std::string& from, const std::string& to) {
        checkTemporary(to);
        if (!isMounted || files.count(from) == 0)
            return 1;
        std::ofstream(to, std::ios::binary) << files[from];
        return 0;
    }

    void checkTemporary(const std::string& path) {
        struct stat status = {};
        EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
        EXPECT_EQ(status.st_mode & 07777, 0600U) << path;
        temporary.push_back(path);
    }

    std::vector<std::string> temporary;
    bool isMounted = false;
};

#endif
