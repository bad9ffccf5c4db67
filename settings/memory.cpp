#include "settings/memory.h"

#include "settings/nvram_device.h"
#include "util/allocate.h"
#include "util/bounded_copy.h"
#include "util/shell.h"

using namespace ostrel;

namespace {

enum Section : int32_t { MAIN = 1, RTDEV = 2 };

void read(Section section, const char* name, char* value) {
    NvramRequest request = {};
    request.name = newNvramText(name);
    request.index = section;
    request.value = newNvramText("");
    const int device = openNvram();
    sendNvram(device, NVRAM_IOCTL_GET, request);
    copyText(value, NVRAM_TEXT_LENGTH, request.value);
    closeNvram(device);
    release(request.name);
    release(request.value);
}

void add(Section section, const char* name, const char* value) {
    NvramRequest request = {};
    request.name = newNvramText(name);
    request.index = section;
    request.value = newNvramText(value);
    const int device = openNvram();
    sendNvram(device, NVRAM_IOCTL_SET, request);
    closeNvram(device);
    release(request.name);
    release(request.value);
}

void save(Section section) {
    NvramRequest request = {};
    request.index = section;
    const int device = openNvram();
    sendNvram(device, NVRAM_IOCTL_COMMIT, request);
    closeNvram(device);
}

} // namespace

Memory::~Memory() = default;

void Memory::getSetting(char* name, char* value) {
    read(MAIN, name, value);
}

void Memory::getNoSaveSetting(char* name, char* value) {
    read(MAIN, name, value);
}

void Memory::getSettingRtdev(char* name, char* value) {
    read(RTDEV, name, value);
}

void Memory::addValue(const char* name, const char* value) {
    add(MAIN, name, value);
}

void Memory::addValueRtdev(const char* name, const char* value) {
    add(RTDEV, name, value);
}

void Memory::saveValues() {
    save(MAIN);
}

void Memory::saveValuesRtdev() {
    save(RTDEV);
}

void Memory::saveSetting(const char* name, const char* value) {
    addValue(name, value);
    saveValues();
}

void Memory::saveSettingRtdev(const char* name, const char* value) {
    addValueRtdev(name, value);
    saveValuesRtdev();
}

void Memory::commit() {
    runShell("killall nvram_daemon");
    runShell("nvram_daemon &");
    runShell("init_system restart&");
}

void Memory::getMac(char*) {}

void Memory::getCloudID(char*) {}
