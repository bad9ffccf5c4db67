// Reading and writing a program's memory as a driver does: an address that the program may not use gives EFAULT
// instead of ending the program.
#ifndef OSTREL_SIMULATOR_SHIM_PROGRAM_MEMORY_H
#define OSTREL_SIMULATOR_SHIM_PROGRAM_MEMORY_H

#include <cstddef>

namespace ostrel {

// Both return 0, or -EFAULT when part of the program's memory cannot be used (what was copied until then is not
// taken back), or the negative errno for which no probe could be made.
int copyFromProgram(void* to, const void* programAddress, size_t size);
int copyToProgram(void* programAddress, const void* from, size_t size);

// Copies a text of the program with its terminator. -EINVAL when no terminator lies in the first `size` bytes.
int copyTextFromProgram(char* to, size_t size, const char* programAddress);

} // namespace ostrel

#endif
