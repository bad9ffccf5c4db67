#include "util/utf8.h"

#include "util/utf8_sequence.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr uint32_t BYTE_ORDER_MARK = 0xFEFF;
constexpr ptrdiff_t BLOCK = 8;

bool isAsciiBlock(const unsigned char* in) {
    uint64_t block = 0;
    std::memcpy(&block, in, BLOCK);
    return (block & 0x8080808080808080U) == 0;
}

// A lead byte of C2 to DF and a continuation byte of 80 to BF, by one comparison each.
bool isTwoByteLetter(const unsigned char* in) {
    return in[0] - 0xC2U < 0x1E && static_cast<signed char>(in[1]) < -0x40;
}

// A block of four pairs of these bytes.
uint64_t fourPairs(unsigned char lead, unsigned char next) {
    const unsigned char bytes[BLOCK] = {lead, next, lead, next, lead, next, lead, next};
    uint64_t block = 0;
    std::memcpy(&block, bytes, BLOCK);
    return block;
}

// Four letters of two bytes: the marking bits are right, and no lead byte has a payload below 2, as C0 and C1 have;
// adding 7E carries all others into the top bit.
bool isLetterBlock(const unsigned char* in) {
    uint64_t block = 0;
    std::memcpy(&block, in, BLOCK);
    const uint64_t carried = (block & fourPairs(0x1F, 0)) + fourPairs(0x7E, 0);
    return (block & fourPairs(0xE0, 0xC0)) == fourPairs(0xC0, 0x80) &&
           (carried & fourPairs(0x80, 0)) == fourPairs(0x80, 0);
}

// Both payloads together: what is subtracted are the marking bits.
wchar_t twoByteLetter(const unsigned char* in) {
    return static_cast<wchar_t>((in[0] << 6) + in[1] - ((0xC0 << 6) + 0x80));
}

// Where the next byte is read and the next character written.
struct Places {
    const unsigned char* in;
    wchar_t* out;
};

// Most texts are runs of ASCII and runs of letters of two bytes. Decodes what there is of them, up to another character
// or the last byte. There must be room for as many characters as there are bytes, so that only the input's end counts.
Places decodeCommonText(const unsigned char* in, const unsigned char* end, wchar_t* out) {
    for (;;) {
        for (; end - in >= BLOCK && isAsciiBlock(in); in += BLOCK, out += BLOCK)
            for (ptrdiff_t i = 0; i < BLOCK; ++i)
                out[i] = in[i];
        while (in < end && *in < 0x80)
            *out++ = *in++;
        if (end - in < 2 || !isTwoByteLetter(in))
            return {in, out};
        *out++ = twoByteLetter(in);
        in += 2;
        for (; end - in >= BLOCK && isLetterBlock(in); in += BLOCK, out += BLOCK / 2)
            for (ptrdiff_t i = 0; i < BLOCK / 2; ++i)
                out[i] = twoByteLetter(in + 2 * i);
        for (; end - in >= 2 && isTwoByteLetter(in); in += 2)
            *out++ = twoByteLetter(in);
    }
}

// The sequence at `in`; length 0: none that is accepted.
ostrel::Utf8Sequence nextSequence(const unsigned char* in, const unsigned char* end, bool dropInvalid) {
    if (__utf8_forbitten(*in) != 0 && !dropInvalid)
        return {0, 0};
    return ostrel::readUtf8(in, static_cast<size_t>(end - in));
}

size_t countCharacters(const unsigned char* in, const unsigned char* end, bool dropInvalid) {
    size_t count = 0;
    while (in < end) {
        const ostrel::Utf8Sequence sequence = nextSequence(in, end, dropInvalid);
        if (sequence.length == 0 && !dropInvalid)
            return 0;
        in += std::max(sequence.length, size_t{1});
        count += sequence.length != 0;
    }
    return count;
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
    const auto* const begin = reinterpret_cast<const unsigned char*>(in);
    const auto* const end = begin + insize;
    if (out == nullptr)
        return countCharacters(begin, end, dropInvalid);
    Places at = {begin, out};
    const wchar_t* const outEnd = out + outsize;
    for (;;) {
        at = decodeCommonText(at.in, at.in + std::min(end - at.in, outEnd - at.out), at.out);
        if (at.in == end)
            return static_cast<size_t>(at.out - out);
        const ostrel::Utf8Sequence sequence = nextSequence(at.in, end, dropInvalid);
        if (sequence.length == 0) {
            if (!dropInvalid)
                return 0;
            ++at.in;
            continue;
        }
        at.in += sequence.length;
        if (at.out == outEnd)
            return 0;
        const auto character = static_cast<wchar_t>(sequence.value);
        if (__wchar_forbitten(character) != 0) {
            if (!dropInvalid)
                return 0;
        } else if (!(sequence.value == BYTE_ORDER_MARK && dropBom)) {
            *at.out++ = character;
        }
    }
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
