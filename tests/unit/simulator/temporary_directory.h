// A directory of a test's own, gone with the test.
#ifndef OSTREL_TESTS_SIMULATOR_TEMPORARY_DIRECTORY_H
#define OSTREL_TESTS_SIMULATOR_TEMPORARY_DIRECTORY_H

#include <cstdlib>
#include <filesystem>
#include <string>

class TemporaryDirectory {
  public:
    TemporaryDirectory() {
        std::string name = (std::filesystem::temp_directory_path() / "ostrel-test-XXXXXX").string();
        path = mkdtemp(name.data());
    }
    ~TemporaryDirectory() { std::filesystem::remove_all(path); }
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

    std::string file(const std::string& name) const { return path + "/" + name; }

    std::string path;
};

#endif
