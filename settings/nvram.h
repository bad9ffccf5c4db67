// The router's settings, one at a time: texts by name, kept by the settings driver in numbered sections.
//
// Section 1 is the main one, section 2 the "Rtdev" one. The four functions take 0 and 1 both for section 2 and reach
// the main section by no number: programs read and write it with Memory. Any other number is handed to the driver as
// it is. Names and values are bytes, UTF-8 where they are words, at most 1023 of them; longer ones are cut there. A
// null text is an empty one.
//
// Each call opens the driver's device, makes one request and closes it; nothing is kept in between. They may be called
// from any thread; the driver puts requests into an order.
#ifndef OSTREL_SETTINGS_NVRAM_H
#define OSTREL_SETTINGS_NVRAM_H

#include "util/api.h"

// Bytes of a setting's name or value, its terminator included.
enum : int { NVRAM_TEXT_LENGTH = 1024 };

// The value of `name` in a block of NVRAM_TEXT_LENGTH bytes of its own, which the caller releases with free. An unknown
// name, a refused request and a missing device all give an empty text. Null when the machine is out of memory: test
// it before reading.
OSTREL_API char* nvram_get(int index, char* name);

// The same as nvram_get, index rule included; says at the call that the Rtdev section is meant.
OSTREL_API char* nvram_getRtdev(int index, char* name);

// Stores `value` under `name` in the section's working copy: at once there for every program, but lost with the power
// until the section is committed (Memory::saveValues, Memory::saveValuesRtdev). 0, or -1 when the device could not be
// opened or memory lacks. A request that the driver refuses gives 0 all the same: read the value back where it matters.
OSTREL_API int nvram_set(int index, char* name, char* value);

// The same as nvram_set, index rule included.
OSTREL_API int nvram_setRtdev(int index, char* name, char* value);

// The same for names and values that are constant, both of them or one.
inline char* nvram_get(int index, const char* name) {
    return nvram_get(index, const_cast<char*>(name));
}
inline char* nvram_getRtdev(int index, const char* name) {
    return nvram_getRtdev(index, const_cast<char*>(name));
}
template<typename Name, typename Value>
int nvram_set(int index, Name name, Value value) {
    const char* const texts[] = {name, value};
    return nvram_set(index, const_cast<char*>(texts[0]), const_cast<char*>(texts[1]));
}
template<typename Name, typename Value>
int nvram_setRtdev(int index, Name name, Value value) {
    const char* const texts[] = {name, value};
    return nvram_setRtdev(index, const_cast<char*>(texts[0]), const_cast<char*>(texts[1]));
}

#endif
