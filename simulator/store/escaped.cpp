#include "simulator/store/escaped.h"

#include <cstring>

namespace ostrel {
namespace {

constexpr char DIGITS[] = "0123456789abcdef";

bool isEscaped(unsigned char byte, char end) {
    return byte < 0x20 || byte == 0x7F || byte == '\\' || byte == static_cast<unsigned char>(end);
}

int digit(char character) {
    const char* const found = character != '\0' ? strchr(DIGITS, character) : nullptr;
    return found != nullptr ? static_cast<int>(found - DIGITS) : -1;
}

// The byte that the four characters "\xHH" stand for, 0 when they stand for none that has to be written so.
char escapedByte(const char* from, size_t left, char end) {
    if (left < 4 || from[0] != '\\' || from[1] != 'x')
        return '\0';
    const int high = digit(from[2]);
    const int low = digit(from[3]);
    if (high < 0 || low < 0)
        return '\0';
    const auto byte = static_cast<unsigned char>(high * 16 + low);
    return isEscaped(byte, end) ? static_cast<char>(byte) : '\0';
}

} // namespace

size_t writeEscaped(char* to, const char* text, char end) {
    size_t size = 0;
    for (; *text != '\0'; ++text) {
        const auto byte = static_cast<unsigned char>(*text);
        if (isEscaped(byte, end)) {
            to[size++] = '\\';
            to[size++] = 'x';
            to[size++] = DIGITS[byte >> 4];
            to[size++] = DIGITS[byte & 15];
        } else {
            to[size++] = *text;
        }
    }
    return size;
}

size_t readEscaped(const char* from, size_t size, size_t at, char end, char (&text)[SETTING_SIZE]) {
    size_t length = 0;
    for (; at < size && from[at] != end; ++length) {
        const bool plain = !isEscaped(static_cast<unsigned char>(from[at]), end);
        const char byte = plain ? from[at] : escapedByte(from + at, size - at, end);
        if (byte == '\0' || length + 1 == SETTING_SIZE)
            return size;
        text[length] = byte;
        at += plain ? 1 : 4;
    }
    text[length] = '\0';
    return at;
}

} // namespace ostrel
