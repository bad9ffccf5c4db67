#include "util/utf8.h"

#include "util/utf8_sequence.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr uint32_t BYTE_ORDER_MARK = 0xFEFF;
constexpr size_t BLOCK = 8;

bool isAsciiBlock(const unsigned char* bytes) {
    uint64_t block = 0;
    std::memcpy(&block, bytes, BLOCK);
    return (block & 0x8080808080808080U) == 0;
}

// Widens the ASCII characters at the start of `in`, at most `limit`, and returns their number. Most texts on a router
// are one such run, so it is worth going by whole blocks. With `out` null they are only counted.
size_t widenAscii(const unsigned char* in, size_t limit, wchar_t* out) {
    size_t n = 0;
    for (; limit - n >= BLOCK && isAsciiBlock(in + n); n += BLOCK)
        if (out != nullptr)
            for (size_t i = 0; i < BLOCK; ++i)
                out[n + i] = in[n + i];
    for (; n < limit && in[n] < 0x80; ++n)
        if (out != nullptr)
            out[n] = in[n];
    return n;
}

// The sequence's bytes from the last to the first: six bits each, what is left over goes into the lead byte.
void writeUtf8(uint32_t value, size_t length, char* out) {
    for (size_t i = length - 1; i > 0; --i) {
        out[i] = static_cast<char>(0x80U | (value & 0x3FU));
        value >>= 6;
    }
    out[0] = static_cast<char>(ostrel::UTF8_FORMS[length - 1].lead | value);
}

size_t utf8Length(uint32_t value) {
    size_t length = 1;
    while (value >= ostrel::UTF8_FORMS[length - 1].end)
        ++length;
    return length;
}

} // namespace

size_t utf8_to_wchar(const char* in, size_t insize, wchar_t* out, size_t outsize, int flags) {
    if (in == nullptr || insize == 0 || (out != nullptr && outsize == 0))
        return 0;
    const bool dropInvalid = (flags & UTF8_DROP_INVALID) != 0;
    const bool dropBom = (flags & UTF8_DROP_BOM) != 0;
    const auto* bytes = reinterpret_cast<const unsigned char*>(in);
    size_t count = 0; // of characters so far; the next one is written there
    for (size_t at = 0; at < insize;) {
        if (bytes[at] < 0x80) {
            const size_t left = insize - at;
            const size_t run = out == nullptr ? widenAscii(bytes + at, left, nullptr)
                                              : widenAscii(bytes + at, std::min(left, outsize - count), out + count);
            if (run == 0)
                return 0; // the output is full
            at += run;
            count += run;
            continue;
        }
        if (__utf8_forbitten(bytes[at]) != 0 && !dropInvalid)
            return 0;
        const ostrel::Utf8Sequence sequence = ostrel::readUtf8(bytes + at, insize - at);
        if (sequence.length == 0) {
            if (!dropInvalid)
                return 0;
            ++at;
            continue;
        }
        at += sequence.length;
        if (out == nullptr) {
            ++count;
            continue;
        }
        if (count == outsize)
            return 0;
        const auto character = static_cast<wchar_t>(sequence.value);
        if (__wchar_forbitten(character) != 0) {
            if (!dropInvalid)
                return 0;
        } else if (!(sequence.value == BYTE_ORDER_MARK && dropBom)) {
            out[count++] = character;
        }
    }
    return count;
}

size_t wchar_to_utf8(const wchar_t* in, size_t insize, char* out, size_t outsize, int flags) {
    if (in == nullptr || insize == 0 || (out != nullptr && outsize == 0))
        return 0;
    const bool dropInvalid = (flags & UTF8_DROP_INVALID) != 0;
    const bool dropBom = (flags & UTF8_DROP_BOM) != 0;
    size_t count = 0; // of bytes so far; the next sequence is written there
    for (size_t at = 0; at < insize; ++at) {
        const auto value = static_cast<uint32_t>(in[at]);
        if (__wchar_forbitten(in[at]) != 0 || value > 0x7FFFFFFF) {
            if (!dropInvalid)
                return 0;
            continue;
        }
        if (value == BYTE_ORDER_MARK && dropBom)
            continue;
        const size_t length = utf8Length(value);
        if (out != nullptr) {
            if (outsize - count < length)
                return 0;
            writeUtf8(value, length, out + count);
        }
        count += length;
    }
    return count;
}
