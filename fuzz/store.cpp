// The settings store's file. Any bytes are either refused, or are exactly what the store itself would write for the
// settings that it finds in them. The first byte chooses how the rest is taken: as a file as it is, as the lines of one
// whose header and checksum are right, or as the factory settings.
#include "simulator/store/power_on.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <string>
#include <sys/mman.h>
#include <unistd.h>
#include <vector>

using namespace ostrel;

namespace {

char text[STORE_SIZE];
char changed[STORE_SIZE];

void require(bool condition, const char* what) {
    if (condition)
        return;
    std::fprintf(stderr, "%s\n", what);
    std::abort();
}

// The checksum bit by bit, as its definition says it.
uint32_t slowCrc32(const std::string& bytes) {
    uint32_t sum = 0xFFFFFFFF;
    for (const char byte : bytes) {
        sum ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit)
            sum = sum >> 1 ^ ((sum & 1) != 0 ? 0xEDB88320 : 0);
    }
    return ~sum;
}

std::string asFile(const std::string& lines) {
    std::string file = "ostrel-settings 1 main\n" + lines;
    char line[32];
    std::snprintf(line, sizeof line, "checksum %08x\n", static_cast<unsigned>(slowCrc32(file)));
    return file + line;
}

void checkSettingsOf(const std::string& file) {
    std::map<std::string, std::string> settings;
    char name[SETTING_SIZE];
    char value[SETTING_SIZE];
    for (size_t at = 0; nextSetting(file.data(), file.size(), at, name, value);)
        require(settings.emplace(name, value).second, "a name is found twice");
    std::string again(text, emptyStore(Section::Main, text));
    for (const auto& setting : settings) {
        require(findSetting(file.data(), file.size(), setting.first.c_str(), value), "a setting is not found");
        require(setting.second == value, "a setting has two values");
        const size_t size =
            putSetting(again.data(), again.size(), setting.first.c_str(), setting.second.c_str(), changed);
        require(size != 0, "what fitted does not fit");
        again.assign(changed, size);
    }
    require(again == file, "the store would write it differently");
}

void checkFile(const std::string& file) {
    const StoreFault fault = checkStore(file.data(), file.size(), Section::Main);
    require(checkStore(file.data(), file.size(), Section::Rtdev).reason != nullptr, "it belongs to two sections");
    if (fault.reason == nullptr)
        checkSettingsOf(file);
    else
        require(fault.line > 0, "a fault without a line");
}

void checkFactory(const std::string& file) {
    static const int memory = memfd_create("factory", MFD_CLOEXEC);
    static const std::string path = "/proc/self/fd/" + std::to_string(memory);
    require(ftruncate(memory, 0) == 0, "no memory file");
    require(pwrite(memory, file.data(), file.size(), 0) == static_cast<ssize_t>(file.size()), "no memory file");
    std::vector<std::string> messages;
    const size_t size = readFactory(path, Section::Main, changed, messages);
    require((size == 0) == (messages.size() == 1), "a refusal without its reason");
    if (size != 0)
        checkFile(std::string(changed, size));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    constexpr size_t LONGEST = STORE_SIZE + 100;
    if (size == 0 || size > LONGEST)
        return 0;
    const std::string rest(reinterpret_cast<const char*>(data) + 1, size - 1);
    switch (data[0] % 3) {
    case 0:
        checkFile(rest);
        break;
    case 1:
        checkFile(asFile(rest));
        break;
    default:
        checkFactory(rest);
    }
    return 0;
}
