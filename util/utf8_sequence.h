// How one code point is laid out in UTF-8. Shared by everything here that reads or writes byte texts.
#ifndef OSTREL_UTIL_UTF8_SEQUENCE_H
#define OSTREL_UTIL_UTF8_SEQUENCE_H

#include <cstddef>
#include <cstdint>

// -1 for the surrogates of UTF-16, which are no characters, else 0.
inline int __wchar_forbitten(wchar_t c) {
    const auto value = static_cast<int32_t>(c); // wchar_t is unsigned on some machines
    return value >= 0xD800 && value < 0xE000 ? -1 : 0;
}

// -1 for the four bytes that are refused wherever a sequence may begin, else 0. F6 to FE are not among them.
inline int __utf8_forbitten(unsigned char b) {
    return b == 0xC0 || b == 0xC1 || b == 0xF5 || b == 0xFF ? -1 : 0;
}

namespace ostrel {

// A sequence of n bytes has the n-th form: a lead byte, of which `mask` tells the marking bits from the payload, then
// n - 1 continuation bytes 10xxxxxx. `end` is the first code point that needs a longer form.
struct Utf8Form {
    unsigned char mask;
    unsigned char lead;
    uint32_t end;
};

constexpr Utf8Form UTF8_FORMS[] = {
    // mask, lead, end
    {0x80, 0x00, 0x80},     {0xE0, 0xC0, 0x800},     {0xF0, 0xE0, 0x10000},
    {0xF8, 0xF0, 0x200000}, {0xFC, 0xF8, 0x4000000}, {0xFE, 0xFC, 0x80000000},
};

struct Utf8Sequence {
    size_t length; // bytes; 0: no whole sequence begins here
    uint32_t value;
};

// Reads the sequence at `bytes`, of which `left` > 0 are there. Overlong forms, surrogates and code points beyond
// Unicode are sequences too: refusing them is up to the caller.
inline Utf8Sequence readUtf8(const unsigned char* bytes, size_t left) {
    size_t length = 0;
    for (const Utf8Form& form : UTF8_FORMS) {
        ++length;
        if ((bytes[0] & form.mask) != form.lead)
            continue;
        if (length > left)
            break;
        uint32_t value = bytes[0] & static_cast<unsigned char>(~form.mask);
        for (size_t i = 1; i < length; ++i) {
            if ((bytes[i] & 0xC0) != 0x80)
                return {0, 0};
            value = value << 6 | (bytes[i] & 0x3FU);
        }
        return {length, value};
    }
    return {0, 0};
}

// Whether the sequence is UTF-8 by today's standard: no overlong form, so that no zero hides in a text and ends it, no
// surrogate and nothing beyond Unicode.
inline bool isUnicode(const Utf8Sequence& sequence) {
    if (sequence.length == 0 || sequence.value > 0x10FFFF)
        return false;
    const bool overlong = sequence.length > 1 && sequence.value < UTF8_FORMS[sequence.length - 2].end;
    return !overlong && __wchar_forbitten(static_cast<wchar_t>(sequence.value)) == 0;
}

} // namespace ostrel

#endif
