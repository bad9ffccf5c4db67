// Why something could not be had, in words for the person who starts the program.
#ifndef OSTREL_DISPLAY_REASON_H
#define OSTREL_DISPLAY_REASON_H

#include <cstdarg>
#include <cstdio>

namespace ostrel {

struct Reason {
    char text[160] = "";
};

// Writes the reason and returns false, so that a function can end with it.
__attribute__((format(printf, 2, 3))) inline bool refuse(Reason& why, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    vsnprintf(why.text, sizeof why.text, format, arguments);
    va_end(arguments);
    return false;
}

} // namespace ostrel

#endif
