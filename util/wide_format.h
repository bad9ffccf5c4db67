// aswprintf: composes a wide text from a format and its arguments.
#ifndef OSTREL_UTIL_WIDE_FORMAT_H
#define OSTREL_UTIL_WIDE_FORMAT_H

#include "util/api.h"
#include "util/format_check.h"

// Formats into `buf`, which holds `size` + 1 wide characters, and returns 0. First all of them are set to zero, then
// the whole result is written, also when it is longer: `buf` must have room for it with its terminator. Last
// buf[size] is set to zero, which cuts the text there. A negative size writes nothing.
//
//   %c %hc     int       one byte of UTF-8, so only ASCII characters show
//   %lc        wint_t    one wide character
//   %d %hd     int       decimal, as itoa
//   %ld        long      likewise: only the lower 32 bits count, all there are on the router
//   %u %hu     unsigned  decimal, as uitoa
//   %lu        unsigned long, likewise the lower 32 bits
//   %s %hs     char*     UTF-8 whatever the process's locale; bytes that are not UTF-8 are left out
//   %ls        wchar_t*  as it is
//   %f %hf %lf double    two digits behind the point, as dtoa
//   %x %X      unsigned  lower-case hexadecimal, as utoxa, with h and l too
//   %%                   a percent sign
//
// A zero character and a null text add nothing. There are no flags, widths or precisions. Any other letter is skipped
// with its "%" and its "h" or "l" and takes no argument; so is what stands unfinished at the end of the format.
// Texts are only read during the call and must not lie in `buf`. Nothing is allocated; the stack takes 1.2 KiB.
OSTREL_API int aswprintf(wchar_t* buf, int size, wchar_t* format, ...);

// The same for constant formats and with checked arguments: a value of a class does not compile, and without NDEBUG a
// format that does not fit its arguments ends the program with a message.
template<typename... Arguments>
int aswprintf(wchar_t* buf, int size, const wchar_t* format, Arguments... arguments) {
    int (*const print)(wchar_t*, int, wchar_t*, ...) = aswprintf;
#ifndef NDEBUG
    const char kinds[] = {ostrel::argumentKind<Arguments>()..., '\0'};
    ostrel::checkFormat(format, kinds);
#endif
    return print(buf, size, const_cast<wchar_t*>(format), arguments...);
}
template<typename... Arguments>
int aswprintf(wchar_t* buf, int size, wchar_t* format, Arguments... arguments) {
    return aswprintf(buf, size, const_cast<const wchar_t*>(format), arguments...);
}

#endif
