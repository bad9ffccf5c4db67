#include "simulator/store/log.h"

#include "simulator/state.h"
#include "simulator/store/store_files.h"
#include "simulator/store/store_system.h"

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <iterator>
#include <sys/stat.h>
#include <unistd.h>

namespace ostrel {
namespace {

constexpr size_t LINE_SIZE = 400;
constexpr off_t LOG_BYTES = 8 << 20;

size_t writePrefix(char (&line)[LINE_SIZE]) {
    constexpr long S_PER_DAY = 86400;
    constexpr long NS_PER_MS = 1000000;
    timespec now = {};
    clock_gettime(CLOCK_REALTIME, &now);
    const long second = static_cast<long>(now.tv_sec % S_PER_DAY);
    return static_cast<size_t>(snprintf(
        line, LINE_SIZE, "%02ld:%02ld:%02ld.%03ld %.60s[%d] ", second / 3600, second / 60 % 60, second % 60,
        static_cast<long>(now.tv_nsec) / NS_PER_MS, program_invocation_short_name, static_cast<int>(getpid())));
}

void startAnew(const char* path) {
    char old[STORE_PATH_SIZE];
    const int length = snprintf(old, sizeof old, "%s.old", path);
    if (length > 0 && static_cast<size_t>(length) < sizeof old)
        storeRename(path, old);
}

bool endsWith(const char* text, const char* ending) {
    const size_t length = strlen(text);
    const size_t endingLength = strlen(ending);
    return length >= endingLength && strcasecmp(text + length - endingLength, ending) == 0;
}

} // namespace

void logLine(const char* directory, const char* format, ...) {
    char path[STORE_PATH_SIZE];
    char line[LINE_SIZE];
    const int pathLength = snprintf(path, sizeof path, "%s/%s", directory, state::LOG);
    if (pathLength < 0 || static_cast<size_t>(pathLength) >= sizeof path)
        return;
    size_t length = writePrefix(line);
    va_list arguments;
    va_start(arguments, format);
    // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized): va_start stands right above
    const int wanted = vsnprintf(line + length, sizeof line - length, format, arguments);
    va_end(arguments);
    length += wanted > 0 ? static_cast<size_t>(wanted) : 0;
    if (length > sizeof line - 1)
        length = sizeof line - 1;
    for (size_t i = 0; i < length; ++i)
        if (static_cast<unsigned char>(line[i]) < 0x20 || line[i] == 0x7F)
            line[i] = '?';
    line[length++] = '\n';
    const int fd = storeOpen(path, O_WRONLY | O_CREAT | O_APPEND);
    if (fd < 0)
        return;
    struct stat status = {};
    if (storeWrite(fd, line, length) > 0 && fstat(fd, &status) == 0 && status.st_size > LOG_BYTES)
        startAnew(path);
    storeClose(fd);
}

bool isSecret(const char* name) {
    static constexpr const char* PARTS[] = {"password", "passphrase", "psk", "secret"};
    static constexpr const char* ENDINGS[] = {"pin", "key"};
    return std::any_of(
               std::begin(PARTS), std::end(PARTS),
               [&](const char* part) { return strcasestr(name, part) != nullptr; }) ||
           std::any_of(
               std::begin(ENDINGS), std::end(ENDINGS), [&](const char* ending) { return endsWith(name, ending); });
}

void showValue(char (&shown)[SHOWN_SIZE], const char* name, const char* value) {
    if (isSecret(name))
        snprintf(shown, sizeof shown, "%s", value[0] != '\0' ? "****" : "(empty)");
    else if (strlen(value) + 2 < sizeof shown)
        snprintf(shown, sizeof shown, "\"%s\"", value);
    else
        snprintf(shown, sizeof shown, "\"%.*s...\"", static_cast<int>(sizeof shown - 6), value);
}

} // namespace ostrel
