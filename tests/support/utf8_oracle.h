// The two conversions once more, one rule after the other and without a thought for speed. Tests and fuzz targets hold
// the real ones to them.
#ifndef OSTREL_TESTS_SUPPORT_UTF8_ORACLE_H
#define OSTREL_TESTS_SUPPORT_UTF8_ORACLE_H

#include <cstddef>
#include <cstdint>

namespace oracle {

inline bool isSurrogate(int64_t value) {
    return value >= 55296 && value < 57344;
}

inline size_t decode(const char* in, size_t insize, wchar_t* out, size_t outsize, int flags) {
    if (in == nullptr || insize == 0)
        return 0;
    if (out != nullptr && outsize == 0)
        return 0;
    size_t count = 0;
    wchar_t* write = out;
    const char* p = in;
    while (p < in + insize) {
        const unsigned b = static_cast<unsigned char>(*p);
        if ((b == 0xC0 || b == 0xC1 || b == 0xF5 || b == 0xFF) && (flags & 1) == 0)
            return 0;
        size_t n = 0;
        int64_t value = 0;
        if (b < 0x80) {
            n = 1;
            value = b;
        } else if ((b & 0xE0) == 0xC0) {
            n = 2;
            value = b & 0x1F;
        } else if ((b & 0xF0) == 0xE0) {
            n = 3;
            value = b & 0x0F;
        } else if ((b & 0xF8) == 0xF0) {
            n = 4;
            value = b & 0x07;
        } else if ((b & 0xFC) == 0xF8) {
            n = 5;
            value = b & 0x03;
        } else if ((b & 0xFE) == 0xFC) {
            n = 6;
            value = b & 0x01;
        }
        bool valid = n != 0 && n <= static_cast<size_t>(in + insize - p);
        for (size_t i = 1; valid && i < n; ++i) {
            const unsigned c = static_cast<unsigned char>(p[i]);
            if (c < 0x80 || c > 0xBF)
                valid = false;
            value = value * 64 + (c % 64);
        }
        if (!valid) {
            if ((flags & 1) == 0)
                return 0;
            p += 1;
            continue;
        }
        ++count;
        if (out == nullptr) {
            p += n;
            continue;
        }
        if (write == out + outsize)
            return 0;
        if (isSurrogate(value)) {
            if ((flags & 1) == 0)
                return 0;
            --count;
        } else if (value == 0xFEFF && (flags & 2) != 0) {
            --count;
        } else {
            *write++ = static_cast<wchar_t>(value);
        }
        p += n;
    }
    return count;
}

inline size_t encode(const wchar_t* in, size_t insize, char* out, size_t outsize, int flags) {
    if (in == nullptr || insize == 0)
        return 0;
    if (out != nullptr && outsize == 0)
        return 0;
    size_t count = 0;
    for (size_t at = 0; at < insize; ++at) {
        const int64_t c = static_cast<int32_t>(in[at]);
        if (isSurrogate(c) || c < 0) {
            if ((flags & 1) == 0)
                return 0;
            continue;
        }
        if (c == 0xFEFF && (flags & 2) != 0)
            continue;
        char text[6] = {};
        size_t n = 0;
        const auto tail = [c](int shift) { return static_cast<char>(0x80 + (c >> shift) % 64); };
        if (c < 0x80) {
            text[n++] = static_cast<char>(c);
        } else if (c < 0x800) {
            text[n++] = static_cast<char>(0xC0 + (c >> 6));
            text[n++] = tail(0);
        } else if (c < 0x10000) {
            text[n++] = static_cast<char>(0xE0 + (c >> 12));
            text[n++] = tail(6);
            text[n++] = tail(0);
        } else if (c < 0x200000) {
            text[n++] = static_cast<char>(0xF0 + (c >> 18));
            text[n++] = tail(12);
            text[n++] = tail(6);
            text[n++] = tail(0);
        } else if (c < 0x4000000) {
            text[n++] = static_cast<char>(0xF8 + (c >> 24));
            text[n++] = tail(18);
            text[n++] = tail(12);
            text[n++] = tail(6);
            text[n++] = tail(0);
        } else {
            text[n++] = static_cast<char>(0xFC + (c >> 30));
            text[n++] = tail(24);
            text[n++] = tail(18);
            text[n++] = tail(12);
            text[n++] = tail(6);
            text[n++] = tail(0);
        }
        if (out != nullptr) {
            if (outsize - count < n)
                return 0;
            for (size_t i = 0; i < n; ++i)
                out[count + i] = text[i];
        }
        count += n;
    }
    return count;
}

} // namespace oracle

#endif
