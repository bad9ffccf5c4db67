#include "backup_file.h"

#include "pin_change.h"

#include <cstdint>
#include <cstdio>
#include <cstring>

namespace {

constexpr const char* HEADER = "ostrel-backup 1";
constexpr const char* DATE_BEGIN = "made ";
constexpr const char* DATE_FORM = "0000-00-00 00:00";

// The CRC-32 of zip and PNG.
uint32_t checksum(const std::string& text) {
    constexpr uint32_t POLYNOMIAL = 0xEDB88320;
    uint32_t rest = 0xFFFFFFFF;
    for (const char c : text) {
        rest ^= static_cast<unsigned char>(c);
        for (int bit = 0; bit < 8; ++bit)
            rest = (rest >> 1) ^ ((rest & 1) != 0 ? POLYNOMIAL : 0);
    }
    return ~rest;
}

std::string checksumLine(const std::string& lines) {
    char line[32];
    snprintf(line, sizeof line, "checksum %08x\n", static_cast<unsigned>(checksum(lines)));
    return line;
}

bool isEscaped(char c) {
    constexpr unsigned char DELETE = 0x7F;
    const auto byte = static_cast<unsigned char>(c);
    return byte < ' ' || byte == DELETE || byte == '\\';
}

std::string escaped(const std::string& value) {
    std::string text;
    for (const char c : value) {
        if (isEscaped(c)) {
            char code[8];
            snprintf(code, sizeof code, "\\x%02x", static_cast<unsigned>(static_cast<unsigned char>(c)));
            text += code;
        } else {
            text += c;
        }
    }
    return text;
}

// -1: no hexadecimal digit as `escaped` writes it.
int digitValue(char c) {
    constexpr const char* DIGITS = "0123456789abcdef";
    const char* const at = c != 0 ? strchr(DIGITS, c) : nullptr;
    return at != nullptr ? static_cast<int>(at - DIGITS) : -1;
}

bool unescape(const std::string& text, std::string& value) {
    value.clear();
    for (size_t at = 0; at < text.size(); ++at) {
        if (text[at] != '\\') {
            value += text[at];
            continue;
        }
        if (at + 3 >= text.size() || text[at + 1] != 'x')
            return false;
        const int high = digitValue(text[at + 2]);
        const int low = digitValue(text[at + 3]);
        if (high < 0 || low < 0 || high + low == 0) // no value of a setting contains its terminator
            return false;
        value += static_cast<char>(16 * high + low);
        at += 3;
    }
    return true;
}

bool isDate(const std::string& text) {
    if (text.size() != strlen(DATE_FORM))
        return false;
    for (size_t i = 0; i < text.size(); ++i) {
        const bool isDigit = text[i] >= '0' && text[i] <= '9';
        if (DATE_FORM[i] == '0' ? !isDigit : text[i] != DATE_FORM[i])
            return false;
    }
    return true;
}

// Takes `beginning` and the rest of its line, without the line's end, off the front of `text`.
bool takeLine(std::string& text, const std::string& beginning, std::string& rest) {
    const size_t end = text.find('\n');
    if (end == std::string::npos || text.compare(0, beginning.size(), beginning) != 0)
        return false;
    rest = text.substr(beginning.size(), end - beginning.size());
    text.erase(0, end + 1);
    return true;
}

std::string beginningOf(const Setting& setting) {
    return std::string(setting.section == Section::Main ? "main " : "rtdev ") + setting.name + "=";
}

bool locksOut(const Backup& backup) {
    bool locks = false;
    bool opens = false;
    for (size_t i = 0; i < BACKED_UP_COUNT; ++i) {
        const std::string& value = backup.values[i];
        if (strcmp(BACKED_UP[i].name, "ScreenLock") == 0)
            locks = !value.empty() && value[0] == '1';
        if (strcmp(BACKED_UP[i].name, "PIN") == 0)
            opens = isPin(value);
    }
    return locks && !opens;
}

} // namespace

std::string backupText(const Backup& backup) {
    std::string text = std::string(HEADER) + "\n";
    if (!backup.madeAt.empty())
        text += DATE_BEGIN + backup.madeAt + "\n";
    for (size_t i = 0; i < BACKED_UP_COUNT; ++i)
        text += beginningOf(BACKED_UP[i]) + escaped(backup.values[i]) + "\n";
    return text + checksumLine(text);
}

// What is not looked at here, the checksum above all, shows when the settings are written again.
bool readBackup(const std::string& text, Backup& backup) {
    Backup read;
    std::string left = text;
    std::string rest;
    if (!takeLine(left, HEADER, rest) || !rest.empty())
        return false;
    if (takeLine(left, DATE_BEGIN, read.madeAt) && !isDate(read.madeAt))
        return false;
    for (size_t i = 0; i < BACKED_UP_COUNT; ++i)
        if (!takeLine(left, beginningOf(BACKED_UP[i]), rest) || !unescape(rest, read.values[i]))
            return false;
    if (backupText(read) != text || locksOut(read))
        return false;
    backup = read;
    return true;
}
