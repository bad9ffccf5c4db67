// The grammar of aswprintf's formats, and a check of a format against its arguments: compilers know printf's formats
// only.
#ifndef OSTREL_UTIL_FORMAT_CHECK_H
#define OSTREL_UTIL_FORMAT_CHECK_H

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <type_traits>

namespace ostrel {

// What stands behind a "%".
struct FormatConversion {
    wchar_t letter;      // 0: the format ends before it
    bool isLong;         // an "l" stands before the letter
    const wchar_t* rest; // of the format, behind the letter
};

// `format` points behind the "%".
inline FormatConversion readConversion(const wchar_t* format) {
    FormatConversion conversion = {0, *format == L'l', nullptr};
    if (*format == L'l' || *format == L'h')
        ++format;
    conversion.letter = *format;
    conversion.rest = *format == 0 ? format : format + 1;
    return conversion;
}

// Which argument the conversion takes: 'i' one of int's size, 'l' one of long's size, 's' bytes, 'w' wide text,
// 'f' a floating-point number, 0 none.
inline char expectedKind(const FormatConversion& conversion) {
    switch (conversion.letter) {
    case L'c':
    case L'x':
    case L'X':
        return 'i';
    case L'd':
    case L'u':
        return conversion.isLong ? 'l' : 'i';
    case L's':
        return conversion.isLong ? 'w' : 's';
    case L'f':
        return 'f';
    default:
        return 0;
    }
}

// The kind of an argument of this type. 'p' is a null pointer constant, which fits both kinds of text.
template<typename Argument>
constexpr char argumentKind() {
    static_assert(std::is_scalar<Argument>::value, "aswprintf takes numbers, characters and texts");
    using Pointee = typename std::remove_cv<typename std::remove_pointer<Argument>::type>::type;
    return std::is_same<Argument, std::nullptr_t>::value ? 'p'
           : std::is_pointer<Argument>::value
               ? (std::is_same<Pointee, char>::value ? 's' : (std::is_same<Pointee, wchar_t>::value ? 'w' : '?'))
           : std::is_floating_point<Argument>::value ? (sizeof(Argument) <= sizeof(double) ? 'f' : '?')
           : sizeof(Argument) <= sizeof(int)         ? 'i'
           : sizeof(Argument) == sizeof(long)        ? 'l'
                                                     : '?';
}

// Ends the program when the format's conversions do not take just the arguments of these kinds, or when one of them is
// not known. A width is not a conversion either.
inline void checkFormat(const wchar_t* format, const char* kinds) {
    const wchar_t* at = format;
    const char* kind = kinds;
    while (at != nullptr && *at != 0) {
        if (*at++ != L'%')
            continue;
        const FormatConversion conversion = readConversion(at);
        const bool isPercent = *at == L'%';
        at = conversion.rest;
        if (isPercent)
            continue;
        const char expected = expectedKind(conversion);
        // Where long is as wide as int one stands for the other.
        const bool sameWidth = sizeof(long) == sizeof(int) && expected == 'l' && *kind == 'i';
        const bool nullText = (expected == 's' || expected == 'w') && *kind == 'p';
        if (expected == 0 || !(*kind == expected || sameWidth || nullText)) {
            std::fprintf(stderr, "aswprintf: \"%ls\" does not fit its arguments (%s)\n", format, kinds);
            std::abort();
        }
        ++kind;
    }
    if (*kind != 0) {
        std::fprintf(stderr, "aswprintf: \"%ls\" has too few conversions for its arguments (%s)\n", format, kinds);
        std::abort();
    }
}

} // namespace ostrel

#endif
