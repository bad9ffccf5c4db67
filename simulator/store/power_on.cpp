#include "simulator/store/power_on.h"

#include "simulator/store/store_files.h"
#include "simulator/store/store_system.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <memory>

namespace ostrel {
namespace {

struct Text {
    char bytes[STORE_SIZE];
};

std::string pathOf(const std::string& directory, Section section) {
    char path[STORE_PATH_SIZE];
    return storePath(path, directory.c_str(), section, Copy::Committed) ? path : directory;
}

// "settings.main.damaged", or the first free one of "settings.main.damaged2" and so on. Empty when none is left.
std::string freeNameBeside(const std::string& path) {
    constexpr int MOST_KEPT = 1000;
    for (int number = 1; number <= MOST_KEPT; ++number) {
        std::string kept = path + ".damaged" + (number > 1 ? std::to_string(number) : "");
        const int fd = storeOpen(kept.c_str(), O_WRONLY | O_CREAT | O_EXCL);
        if (fd < 0 && errno == EEXIST)
            continue;
        if (fd < 0)
            break;
        storeClose(fd);
        return kept;
    }
    return "";
}

int keepDamaged(const std::string& directory, Section section, std::vector<std::string>& messages) {
    const std::string path = pathOf(directory, section);
    const std::string damage = describeDamage(directory, section);
    const std::string kept = freeNameBeside(path);
    if (kept.empty() || storeRename(path.c_str(), kept.c_str()) != 0)
        return -errno;
    messages.push_back(damage + "; it is kept as " + kept + " and the factory settings are used.");
    return 0;
}

int writeFactory(
    const std::string& directory, Section section, const std::string& factory, std::vector<std::string>& messages) {
    const auto text = std::make_unique<Text>();
    size_t size = readFactory(factory, section, text->bytes, messages);
    if (size == 0)
        size = emptyStore(section, text->bytes);
    return writeCopy(directory.c_str(), section, Copy::Committed, text->bytes, size, Durable::Yes);
}

int powerOnSection(
    const std::string& directory, Section section, const std::string& factory, std::vector<std::string>& messages) {
    const auto text = std::make_unique<Text>();
    size_t size = 0;
    int error = removeCopy(directory.c_str(), section, Copy::Working);
    if (error != 0)
        return error;
    error = readCopy(directory.c_str(), section, Copy::Committed, text->bytes, size);
    if (error == -EIO)
        error = keepDamaged(directory, section, messages);
    else if (error != -ENOENT)
        return error;
    return error == 0 || error == -ENOENT ? writeFactory(directory, section, factory, messages) : error;
}

} // namespace

bool powerOnStore(const std::string& directory, const std::string& factory, std::vector<std::string>& messages) {
    const StoreLock lock(directory.c_str());
    int error = lock.error();
    for (const Section section : SECTIONS)
        if (error == 0)
            error = powerOnSection(directory, section, factory, messages);
    if (error != 0)
        messages.push_back("the settings in " + directory + " cannot be used: " + strerror(-error));
    return error == 0;
}

int resetSection(
    const std::string& directory, Section section, const std::string& factory, std::vector<std::string>& messages) {
    const StoreLock lock(directory.c_str());
    const auto text = std::make_unique<Text>();
    if (lock.error() != 0)
        return lock.error();
    size_t size = 0;
    const int state = readCopy(directory.c_str(), section, Copy::Committed, text->bytes, size);
    int error = state == -EIO ? keepDamaged(directory, section, messages) : 0;
    if (error == 0)
        error = writeFactory(directory, section, factory, messages);
    return error == 0 ? removeCopy(directory.c_str(), section, Copy::Working) : error;
}

std::string describeDamage(const std::string& directory, Section section) {
    const std::string path = pathOf(directory, section);
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return path + " cannot be read: " + strerror(errno);
    const std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    const StoreFault fault = checkStore(text.data(), text.size(), section);
    return fault.reason == nullptr ? ""
                                   : path + " is damaged: line " + std::to_string(fault.line) + ": " + fault.reason;
}

} // namespace ostrel
