#include "tests/support/fake_settings.h"

#include "tests/support/call_log.h"
#include "tests/support/fake_device.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <sstream>

FakeSettings& fakeSettings() {
    static FakeSettings* const settings = new FakeSettings;
    return *settings;
}

namespace {

constexpr unsigned long GET = 0x1001;
constexpr unsigned long SET = 0x1003;
constexpr unsigned long COMMIT = 0x1004;
constexpr size_t BUFFER_BYTES = 1024;

// As the driver reads it from the program's memory.
struct Record {
    int32_t index;
    int32_t reserved;
    char* name;
    char* value;
};

bool isAllZero(const char* buffer) {
    return std::all_of(buffer, buffer + BUFFER_BYTES, [](char byte) { return byte == 0; });
}

std::string describe(unsigned long request, void* argument) {
    const Record& record = *static_cast<const Record*>(argument);
    std::ostringstream text;
    text << "index " << record.index;
    if (record.reserved != 0)
        text << " reserved " << record.reserved;
    if (request != COMMIT)
        text << ", " << quotedBytes(record.name);
    if (request == SET)
        text << ", " << quotedBytes(record.value);
    if (request == GET && !isAllZero(record.value))
        text << ", value buffer not cleared";
    return text.str();
}

// Both buffers are as long as the driver takes them to be.
void touchWhole(const char* buffer) {
    const volatile char* const last = buffer + BUFFER_BYTES - 1;
    (void)*last;
}

int answer(unsigned long request, void* argument) {
    FakeSettings& settings = fakeSettings();
    const Record& record = *static_cast<const Record*>(argument);
    if (settings.refusal != 0)
        return settings.refusal;
    FakeSettings::Section& section = settings.working[record.index];
    switch (request) {
    case GET:
        touchWhole(record.name);
        if (settings.unterminated)
            std::memset(record.value, 'x', BUFFER_BYTES);
        else
            std::strncpy(record.value, section[record.name].c_str(), BUFFER_BYTES);
        return 0;
    case SET:
        touchWhole(record.name);
        touchWhole(record.value);
        section[record.name] = record.value;
        return 0;
    case COMMIT:
        settings.committed[record.index] = section;
        return 0;
    default:
        return ENOTTY;
    }
}

} // namespace

void restartFakeSettings() {
    callLog() = {};
    fakeSettings() = {};
    fakeDevices() = {};
    FakeDevice driver;
    driver.answer = answer;
    driver.describe = describe;
    fakeDevices().byPath["/dev/apsoc_nvram"] = driver;
}
