// Changing the store from outside the router, as somebody with a hand on the flash would.
#ifndef OSTREL_SIMULATOR_STORE_LASTING_H
#define OSTREL_SIMULATOR_STORE_LASTING_H

#include "simulator/store/store_text.h"

namespace ostrel {

// Sets one value in both copies of a section, at once and to last, and commits nothing else of what programs have set.
// 0 or a negative errno, as setStored.
int setLasting(const char* directory, Section section, const char* name, const char* value);

} // namespace ostrel

#endif
