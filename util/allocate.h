// Where the toolkit's own memory blocks come from, so that a test can let one be refused. Blocks are malloc's: one
// that is handed to a program is released with free.
#ifndef OSTREL_UTIL_ALLOCATE_H
#define OSTREL_UTIL_ALLOCATE_H

#include <cstddef>

namespace ostrel {

// A block of `size` bytes, all zero, or null when there is no memory.
void* allocateCleared(size_t size);

// Gives a block back; null is none.
void release(void* block);

} // namespace ostrel

#endif
