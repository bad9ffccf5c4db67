// Numbers to text, the same whatever the process's locale.
//
// `out` must have room for the text and its terminator; nothing is checked. Each function returns `out`. They allocate
// nothing, keep no state and may be called from any thread.
#ifndef OSTREL_UTIL_NUMBER_H
#define OSTREL_UTIL_NUMBER_H

#include "util/api.h"

// Room for the longest text of each function, its terminator included.
enum : int {
    ITOA_LENGTH = 12,  // "-2147483648"
    UITOA_LENGTH = 11, // "4294967295"
    UTOXA_LENGTH = 9,  // "ffffffff"
    DTOA_LENGTH = 314, // the lowest double: a sign, 309 digits, the point and two more digits
};

// Decimal, with a leading "-" for negative values.
OSTREL_API char* itoa(int value, char* out);

// Decimal.
OSTREL_API char* uitoa(unsigned int value, char* out);

// Lower-case hexadecimal digits without prefix or leading zeros; "0" for 0.
OSTREL_API char* utoxa(unsigned int value, char* out);

// Fixed point with exactly two digits behind the point, rounded to the nearest (a tie to the even digit), no digit
// grouping: "1.50", "-0.00", "inf", "-inf", "nan", "-nan".
OSTREL_API char* dtoa(double value, char* out);

#endif
