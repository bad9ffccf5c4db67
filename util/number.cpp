#include "util/number.h"

#include <charconv>
#include <cstring>

namespace {

// "00", "01", ... "99": two digits for each division.
struct DigitPairs {
    char digits[100][2] = {};
    constexpr DigitPairs() {
        for (int i = 0; i < 100; ++i) {
            digits[i][0] = static_cast<char>('0' + i / 10);
            digits[i][1] = static_cast<char>('0' + i % 10);
        }
    }
};
constexpr DigitPairs PAIRS;

int decimalLength(unsigned int value) {
    for (int length = 4;; length += 4, value /= 10000) {
        if (value < 10)
            return length - 3;
        if (value < 100)
            return length - 2;
        if (value < 1000)
            return length - 1;
        if (value < 10000)
            return length;
    }
}

// The digits from the last to the first, behind them the terminator.
void writeDecimal(unsigned int value, char* out) {
    char* end = out + decimalLength(value);
    *end = 0;
    for (; value >= 100; value /= 100) {
        end -= 2;
        std::memcpy(end, PAIRS.digits[value % 100], 2);
    }
    if (value >= 10)
        std::memcpy(end - 2, PAIRS.digits[value], 2);
    else
        end[-1] = static_cast<char>('0' + value);
}

} // namespace

char* itoa(int value, char* out) {
    const bool negative = value < 0;
    if (negative)
        out[0] = '-';
    // Negated without a sign, which the most negative int stands too.
    const auto magnitude = static_cast<unsigned int>(value);
    writeDecimal(negative ? 0U - magnitude : magnitude, out + negative);
    return out;
}

char* uitoa(unsigned int value, char* out) {
    writeDecimal(value, out);
    return out;
}

char* utoxa(unsigned int value, char* out) {
    const int length = (32 - __builtin_clz(value | 1) + 3) / 4;
    out[length] = 0;
    for (int i = length - 1; i >= 0; --i, value >>= 4)
        out[i] = "0123456789abcdef"[value & 0xFU];
    return out;
}

// to_chars rounds as a text stream does, and knows no locale.
char* dtoa(double value, char* out) {
    *std::to_chars(out, out + DTOA_LENGTH, value, std::chars_format::fixed, 2).ptr = 0;
    return out;
}
