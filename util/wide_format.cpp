#include "util/wide_format.h"

#include "util/number.h"
#include "util/utf8_sequence.h"

#include <algorithm>
#include <cstdarg>
#include <cstring>
#include <cwchar>

namespace {

// In a record of its own, since va_list may be an array: passed by itself, one machine hands over a copy, another not.
struct Arguments {
    va_list list;
};

wchar_t* appendCharacter(wchar_t* to, wchar_t character) {
    *to = character;
    return character == 0 ? to : to + 1;
}

wchar_t* appendWide(wchar_t* to, const wchar_t* text) {
    if (text == nullptr)
        return to;
    return std::copy_n(text, std::wcslen(text), to);
}

wchar_t* appendBytes(wchar_t* to, const char* text) {
    if (text == nullptr)
        return to;
    const auto* bytes = reinterpret_cast<const unsigned char*>(text);
    const auto* const end = bytes + std::strlen(text);
    while (bytes < end) {
        const ostrel::Utf8Sequence sequence = ostrel::readUtf8(bytes, static_cast<size_t>(end - bytes));
        const bool valid = ostrel::isUnicode(sequence);
        if (valid)
            *to++ = static_cast<wchar_t>(sequence.value);
        bytes += valid ? sequence.length : 1;
    }
    return to;
}

// The list was begun by aswprintf, where the analyser does not look.
// NOLINTBEGIN(clang-analyzer-valist.Uninitialized)
wchar_t* appendConversion(wchar_t* to, const ostrel::FormatConversion& conversion, Arguments& arguments) {
    char text[DTOA_LENGTH];
    switch (conversion.letter) {
    case L'c':
        if (conversion.isLong)
            return appendCharacter(to, static_cast<wchar_t>(va_arg(arguments.list, wint_t)));
        text[0] = static_cast<char>(va_arg(arguments.list, int));
        text[1] = 0;
        return appendBytes(to, text);
    case L'd':
        itoa(conversion.isLong ? static_cast<int>(va_arg(arguments.list, long)) : va_arg(arguments.list, int), text);
        return appendBytes(to, text);
    case L'u':
        uitoa(
            conversion.isLong ? static_cast<unsigned int>(va_arg(arguments.list, unsigned long))
                              : va_arg(arguments.list, unsigned int),
            text);
        return appendBytes(to, text);
    case L's':
        return conversion.isLong ? appendWide(to, va_arg(arguments.list, const wchar_t*))
                                 : appendBytes(to, va_arg(arguments.list, const char*));
    case L'f':
        return appendBytes(to, dtoa(va_arg(arguments.list, double), text));
    case L'x':
    case L'X':
        return appendBytes(to, utoxa(va_arg(arguments.list, unsigned int), text));
    default:
        return to;
    }
}
// NOLINTEND(clang-analyzer-valist.Uninitialized)

} // namespace

int aswprintf(wchar_t* buf, int size, wchar_t* format, ...) {
    if (size < 0)
        return 0;
    std::wmemset(buf, 0, static_cast<size_t>(size) + 1);
    Arguments arguments;
    va_start(arguments.list, format);
    wchar_t* to = buf;
    for (const wchar_t* at = format; at != nullptr && *at != 0;) {
        if (*at != L'%' || at[1] == L'%') {
            *to++ = *at;
            at += *at == L'%' ? 2 : 1;
            continue;
        }
        const ostrel::FormatConversion conversion = ostrel::readConversion(at + 1);
        to = appendConversion(to, conversion, arguments);
        at = conversion.rest;
    }
    va_end(arguments.list);
    *to = 0;
    buf[size] = 0;
    return 0;
}
