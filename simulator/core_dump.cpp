#include "simulator/core_dump.h"

#include <filesystem>
#include <sys/stat.h>

namespace ostrel {
namespace {

namespace fs = std::filesystem;

// "core", or as core_pattern and core_uses_pid extend it. The host's own files are bound into the directory from
// elsewhere.
bool isDump(const fs::path& path, dev_t device) {
    struct stat status = {};
    return path.filename().string().rfind("core", 0) == 0 && lstat(path.c_str(), &status) == 0 &&
           S_ISREG(status.st_mode) && status.st_dev == device;
}

fs::path newestDump(const std::string& directory) {
    struct stat status = {};
    if (stat(directory.c_str(), &status) != 0)
        return {};
    fs::path newest;
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(directory, error))
        if (isDump(entry.path(), status.st_dev) &&
            (newest.empty() || fs::last_write_time(entry.path(), error) > fs::last_write_time(newest, error)))
            newest = entry.path();
    return newest;
}

} // namespace

bool keepCoreDump(const std::string& directory, const std::string& file) {
    std::error_code error;
    fs::remove(file, error);
    const fs::path dump = newestDump(directory);
    if (dump.empty())
        return false;
    if (fs::copy_file(dump, file, error))
        return true;
    fs::remove(file, error);
    return false;
}

} // namespace ostrel
