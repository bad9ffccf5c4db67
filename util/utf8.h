// Conversion between UTF-8 and wide text, one code point a wide character.
//
// The limits of what counts as UTF-8 are those of the language files and of the settings store, wider than today's
// standard: five- and six-byte sequences and overlong forms are read, and code points up to 0x7FFFFFFF are written.
// Both functions are one pass over the input, allocate nothing, keep no state and may be called from any thread.
#ifndef OSTREL_UTIL_UTF8_H
#define OSTREL_UTIL_UTF8_H

#include "util/api.h"

#include <cstddef>

// Flags of both functions, to be added up. Other bits change nothing.
enum : int {
    UTF8_DROP_INVALID = 1, // leave invalid input out, instead of failing
    UTF8_DROP_BOM = 2,     // leave the byte-order mark, U+FEFF, out
};

// Decodes `insize` bytes at `in` and returns how many wide characters that makes; no terminator is written, and a zero
// byte is a character like any other. `outsize` is the room at `out` in wide characters. With `out` null nothing is
// written and the characters are only counted: surrogates and byte-order marks count too then, so the number can be
// larger than that of the conversion that follows.
//
// 0 is returned for no input, for no room, and for failure: invalid input, or an output that is full before the input
// ends (`out` then holds what was decoded so far). Invalid is a byte that begins no sequence, a sequence that is cut
// off, a surrogate (U+D800 to U+DFFF), and any of the bytes C0, C1, F5 and FF. With UTF8_DROP_INVALID a bad byte is
// left out alone and the bytes behind it are looked at afresh, surrogates are left out whole, and C0, C1 and F5 begin
// sequences like their neighbours do.
OSTREL_API size_t utf8_to_wchar(const char* in, size_t insize, wchar_t* out, size_t outsize, int flags);

// Encodes `insize` wide characters at `in` and returns how many bytes that makes; no terminator is written, and a zero
// is a character like any other. `outsize` is the room at `out` in bytes. With `out` null nothing is written and the
// bytes are only counted, exactly.
//
// 0 is returned for no input, for no room, and for failure: a surrogate or a negative value without UTF8_DROP_INVALID,
// or an output without room for a whole sequence (`out` then holds the sequences before it).
OSTREL_API size_t wchar_to_utf8(const wchar_t* in, size_t insize, char* out, size_t outsize, int flags);

#endif
