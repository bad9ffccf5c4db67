// One section of the settings store as text: what its file holds, byte for byte. A section has exactly one text:
//
//     ostrel-settings 1 main
//     Language=english
//     PIN=1234
//     checksum 3f6a90c1
//
// Names ascend by their bytes and are not empty. A control character, a backslash, and "=" in a name are written as
// \x and two lower-case hexadecimal digits, everything else as it is. The checksum is the CRC-32 of all lines before
// it. What differs from this in any byte is not a section's text.
#ifndef OSTREL_SIMULATOR_STORE_STORE_TEXT_H
#define OSTREL_SIMULATOR_STORE_STORE_TEXT_H

#include <cstddef>

namespace ostrel {

// The driver's sections.
enum class Section : int { Main = 1, Rtdev = 2 };
constexpr Section SECTIONS[] = {Section::Main, Section::Rtdev};
const char* sectionName(Section section);
bool isSection(int index);

constexpr size_t SETTING_SIZE = 1024;  // a name or a value with its terminator
constexpr size_t STORE_SIZE = 0x10000; // the longest text of a section, as big as its part of the flash

// Why a text is not a section's: a line, counted from 1, and a reason; reason null when it is one.
struct StoreFault {
    int line;
    const char* reason;
};

// Accepts any bytes.
StoreFault checkStore(const char* text, size_t size, Section section);

// Writes the text of a section without settings and returns its size.
size_t emptyStore(Section section, char (&text)[STORE_SIZE]);

// The following take texts that checkStore found faultless.

// Copies the value of `name`, an empty one when there is no such setting, and tells whether there is.
bool findSetting(const char* text, size_t size, const char* name, char (&value)[SETTING_SIZE]);

// Writes `text` with `name` set to `value` to `changed`; both are non-empty or empty texts shorter than SETTING_SIZE,
// but a name has at least one byte. Returns the new size, or 0 when the section would become too big.
size_t putSetting(const char* text, size_t size, const char* name, const char* value, char (&changed)[STORE_SIZE]);

// Walks through the settings: start with at = 0; false behind the last one.
bool nextSetting(const char* text, size_t size, size_t& at, char (&name)[SETTING_SIZE], char (&value)[SETTING_SIZE]);

} // namespace ostrel

#endif
