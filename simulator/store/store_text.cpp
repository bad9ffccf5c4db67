#include "simulator/store/store_text.h"

#include "simulator/store/escaped.h"

#include <cstdint>
#include <cstdio>
#include <cstring>

namespace ostrel {
namespace {

constexpr char CHECKSUM[] = "checksum ";
constexpr size_t CHECKSUM_LINE = sizeof CHECKSUM - 1 + 8 + 1;

struct Crc32 {
    uint32_t of[256];
};

constexpr Crc32 makeCrc32() {
    Crc32 table = {};
    for (uint32_t byte = 0; byte < 256; ++byte) {
        uint32_t value = byte;
        for (int bit = 0; bit < 8; ++bit)
            value = (value & 1) != 0 ? value >> 1 ^ 0xEDB88320 : value >> 1;
        table.of[byte] = value;
    }
    return table;
}

uint32_t crc32(const char* text, size_t size) {
    static constexpr Crc32 TABLE = makeCrc32();
    uint32_t sum = 0xFFFFFFFF;
    for (size_t i = 0; i < size; ++i)
        sum = sum >> 8 ^ TABLE.of[(sum ^ static_cast<unsigned char>(text[i])) & 0xFF];
    return ~sum;
}

size_t writeHeader(char* to, Section section) {
    return static_cast<size_t>(snprintf(to, STORE_SIZE, "ostrel-settings 1 %s\n", sectionName(section)));
}

size_t writeChecksum(char (&text)[STORE_SIZE], size_t size) {
    char line[CHECKSUM_LINE + 1];
    snprintf(line, sizeof line, "%s%08x\n", CHECKSUM, static_cast<unsigned>(crc32(text, size)));
    memcpy(text + size, line, CHECKSUM_LINE);
    return size + CHECKSUM_LINE;
}

size_t firstSetting(const char* text, size_t size) {
    return static_cast<size_t>(static_cast<const char*>(memchr(text, '\n', size)) - text) + 1;
}

// Reads one "name=value" line and steps behind it. Null when it is one, else the reason why not.
const char*
readLine(const char* text, size_t size, size_t& at, char (&name)[SETTING_SIZE], char (&value)[SETTING_SIZE]) {
    size_t end = readEscaped(text, size, at, '=', name);
    if (end == at)
        return "a setting without a name";
    if (end >= size)
        return "neither a setting nor the checksum";
    end = readEscaped(text, size, end + 1, '\n', value);
    if (end >= size)
        return "a value that is too long, cut off or holds a character that has to be escaped";
    at = end + 1;
    return nullptr;
}

// The lines between the header and the checksum, which begins at `end`.
StoreFault checkSettings(const char* text, size_t at, size_t end) {
    char name[SETTING_SIZE];
    char value[SETTING_SIZE];
    char before[SETTING_SIZE] = "";
    for (int line = 2; at < end; ++line) {
        const char* const reason = readLine(text, end, at, name, value);
        if (reason != nullptr)
            return {line, reason};
        if (strcmp(before, name) >= 0)
            return {line, "names are not in order"};
        memcpy(before, name, sizeof before);
    }
    return {0, nullptr};
}

} // namespace

const char* sectionName(Section section) {
    return section == Section::Main ? "main" : "rtdev";
}

bool isSection(int index) {
    return index == static_cast<int>(Section::Main) || index == static_cast<int>(Section::Rtdev);
}

StoreFault checkStore(const char* text, size_t size, Section section) {
    char header[64];
    const size_t headerSize =
        static_cast<size_t>(snprintf(header, sizeof header, "ostrel-settings 1 %s\n", sectionName(section)));
    if (size > STORE_SIZE)
        return {1, "it is longer than the section can be"};
    if (size < headerSize || memcmp(text, header, headerSize) != 0)
        return {1, "it does not begin as this section's settings do"};
    if (size < headerSize + CHECKSUM_LINE)
        return {2, "it has no checksum"};
    const size_t end = size - CHECKSUM_LINE;
    const StoreFault fault = checkSettings(text, headerSize, end);
    if (fault.reason != nullptr)
        return fault;
    char line[CHECKSUM_LINE + 1];
    snprintf(line, sizeof line, "%s%08x\n", CHECKSUM, static_cast<unsigned>(crc32(text, end)));
    if (memcmp(text + end, line, CHECKSUM_LINE) == 0)
        return {0, nullptr};
    int last = 1;
    for (size_t i = 0; i < end; ++i)
        last += text[i] == '\n';
    return {last, "the checksum does not fit"};
}

size_t emptyStore(Section section, char (&text)[STORE_SIZE]) {
    return writeChecksum(text, writeHeader(text, section));
}

bool nextSetting(const char* text, size_t size, size_t& at, char (&name)[SETTING_SIZE], char (&value)[SETTING_SIZE]) {
    if (at == 0)
        at = firstSetting(text, size);
    return at < size - CHECKSUM_LINE && readLine(text, size, at, name, value) == nullptr;
}

bool findSetting(const char* text, size_t size, const char* name, char (&value)[SETTING_SIZE]) {
    char candidate[SETTING_SIZE];
    for (size_t at = 0; nextSetting(text, size, at, candidate, value);)
        if (strcmp(candidate, name) == 0)
            return true;
    value[0] = '\0';
    return false;
}

size_t putSetting(const char* text, size_t size, const char* name, const char* value, char (&changed)[STORE_SIZE]) {
    char oldName[SETTING_SIZE];
    char oldValue[SETTING_SIZE];
    size_t before = firstSetting(text, size); // where the setting's line goes
    size_t behind = before;                   // where the lines after it begin
    for (size_t at = before; nextSetting(text, size, at, oldName, oldValue);) {
        const int order = strcmp(oldName, name);
        if (order <= 0)
            behind = at;
        if (order >= 0)
            break;
        before = at;
    }
    char line[2 * (ESCAPED_SIZE + 1)];
    size_t lineSize = writeEscaped(line, name, '=');
    line[lineSize++] = '=';
    lineSize += writeEscaped(line + lineSize, value, '\n');
    line[lineSize++] = '\n';
    const size_t rest = size - CHECKSUM_LINE - behind;
    if (before + lineSize + rest + CHECKSUM_LINE > STORE_SIZE)
        return 0;
    memcpy(changed, text, before);
    memcpy(changed + before, line, lineSize);
    memcpy(changed + before + lineSize, text + behind, rest);
    return writeChecksum(changed, before + lineSize + rest);
}

} // namespace ostrel
