// The core dump of a program that crashed.
#ifndef OSTREL_SIMULATOR_CORE_DUMP_H
#define OSTREL_SIMULATOR_CORE_DUMP_H

#include <string>

namespace ostrel {

// Copies the newest file of `directory` that is named like a core dump, and lies on that directory's own file system,
// to `file`. False when there is none or it cannot be copied whole; then `file` is not there.
bool keepCoreDump(const std::string& directory, const std::string& file);

} // namespace ostrel

#endif
