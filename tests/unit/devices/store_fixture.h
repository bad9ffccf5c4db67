// A state directory of its own for a test, and the store's texts in the words of a test.
#ifndef OSTREL_TESTS_UNIT_DEVICES_STORE_FIXTURE_H
#define OSTREL_TESTS_UNIT_DEVICES_STORE_FIXTURE_H

#include "simulator/store/settings_store.h"
#include "simulator/store/store_files.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace ostrel {

class StoreDirectory {
  public:
    StoreDirectory() {
        std::string name = (std::filesystem::temp_directory_path() / "ostrel-store-XXXXXX").string();
        path = mkdtemp(name.data());
    }
    ~StoreDirectory() { std::filesystem::remove_all(path); }
    StoreDirectory(const StoreDirectory&) = delete;
    StoreDirectory& operator=(const StoreDirectory&) = delete;

    const char* c_str() const { return path.c_str(); }
    std::string file(const std::string& name) const { return path + "/" + name; }

    std::string path;
};

inline std::string contents(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

inline void write(const std::string& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
}

// A section's two copies as they are after a first start without factory settings.
inline void writeEmptyStore(const std::string& directory) {
    static char text[STORE_SIZE];
    for (const Section section : SECTIONS) {
        const size_t size = emptyStore(section, text);
        writeCopy(directory.c_str(), section, Copy::Committed, text, size);
    }
}

inline std::string stored(const std::string& directory, Section section, const std::string& name) {
    char value[SETTING_SIZE];
    const int error = getStored(directory.c_str(), section, name.c_str(), value);
    return error == 0 ? value : "error " + std::to_string(error);
}

inline std::string committed(const std::string& directory, Section section, const std::string& name) {
    static char text[STORE_SIZE];
    char value[SETTING_SIZE];
    size_t size = 0;
    const int error = readCopy(directory.c_str(), section, Copy::Committed, text, size);
    if (error != 0)
        return "error " + std::to_string(error);
    findSetting(text, size, name.c_str(), value);
    return value;
}

} // namespace ostrel

#endif
