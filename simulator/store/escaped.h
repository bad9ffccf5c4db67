// Texts of any bytes in one readable line: a control character, a backslash and the byte that ends the text are written
// as \x and two lower-case hexadecimal digits.
#ifndef OSTREL_SIMULATOR_STORE_ESCAPED_H
#define OSTREL_SIMULATOR_STORE_ESCAPED_H

#include "simulator/store/store_text.h"

namespace ostrel {

constexpr size_t ESCAPED_SIZE = 4 * (SETTING_SIZE - 1); // the longest setting text when every byte is escaped

// Writes `text`, shorter than SETTING_SIZE, without a terminator, and returns the bytes written: ESCAPED_SIZE at most.
size_t writeEscaped(char* to, const char* text, char end);

// Reads the text that begins at `at` and ends before the byte `end`, and returns that byte's position; `size` when the
// text does not end, is too long, or is not written as writeEscaped does.
size_t readEscaped(const char* from, size_t size, size_t at, char end, char (&text)[SETTING_SIZE]);

} // namespace ostrel

#endif
