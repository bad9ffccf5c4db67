// The settings driver: one record a request, whose layout and numbers programs and driver share.
#include "simulator/shim/device.h"
#include "simulator/shim/program_memory.h"
#include "simulator/shim/requests.h"
#include "simulator/shim/uninterrupted.h"
#include "simulator/store/log.h"
#include "simulator/store/settings_store.h"

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>

namespace ostrel {
namespace {

constexpr unsigned long REQUEST_GET = 0x1001;
constexpr unsigned long REQUEST_SET = 0x1003;
constexpr unsigned long REQUEST_COMMIT = 0x1004;

struct Record {
    int32_t index;
    int32_t reserved;
    char* name;
    char* value;
};
static_assert(sizeof(Record) == 8 + 2 * sizeof(char*) && offsetof(Record, name) == 8, "the driver's layout");

int refuse(const char* what, int error) {
    logLine(stateDirectory(), "nvram %s: refused with %s", what, strerrorname_np(-error));
    return error;
}

void logResult(const char* request, Section section, const char* setting, int error) {
    if (error == 0)
        logLine(stateDirectory(), "nvram %s %s%s", request, sectionName(section), setting);
    else
        logLine(
            stateDirectory(), "nvram %s %s%s: refused with %s", request, sectionName(section), setting,
            strerrorname_np(-error));
}

void logSetting(const char* request, Section section, const char* name, const char* value, int error) {
    char shown[SHOWN_SIZE];
    char setting[SHOWN_SIZE + 128];
    showValue(shown, name, value);
    snprintf(setting, sizeof setting, " %.100s: %s", name, shown);
    logResult(request, section, setting, error);
}

int get(Section section, const Record& record) {
    char name[SETTING_SIZE];
    char value[SETTING_SIZE];
    int error = copyTextFromProgram(name, sizeof name, record.name);
    if (error != 0)
        return refuse("get", error);
    error = getStored(stateDirectory(), section, name, value);
    if (error == 0)
        error = copyToProgram(record.value, value, strlen(value) + 1);
    logSetting("get", section, name, value, error);
    return error;
}

int set(Section section, const Record& record) {
    char name[SETTING_SIZE];
    char value[SETTING_SIZE];
    int error = copyTextFromProgram(name, sizeof name, record.name);
    if (error == 0)
        error = copyTextFromProgram(value, sizeof value, record.value);
    if (error != 0)
        return refuse("set", error);
    error = setStored(stateDirectory(), section, name, value);
    logSetting("set", section, name, value, error);
    return error;
}

int commit(Section section) {
    const int error = commitStored(stateDirectory(), section);
    logResult("commit", section, "", error);
    return error;
}

} // namespace

int requestSettings(unsigned long request, void* argument) {
    const Uninterrupted uninterrupted;
    Record record = {};
    if (request != REQUEST_GET && request != REQUEST_SET && request != REQUEST_COMMIT)
        return refuse("request of another number", -ENOTTY);
    const int error = copyFromProgram(&record, argument, sizeof record);
    if (error != 0)
        return refuse("request", error);
    if (!isSection(record.index))
        return refuse("request for an unknown section", -EINVAL);
    const auto section = static_cast<Section>(record.index);
    switch (request) {
    case REQUEST_GET:
        return get(section, record);
    case REQUEST_SET:
        return set(section, record);
    default:
        return commit(section);
    }
}

} // namespace ostrel
