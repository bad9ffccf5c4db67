// Memory that may be refused: where a size comes from a file, no memory is an answer like another and not an
// exception.
#ifndef OSTREL_DISPLAY_ALLOCATE_H
#define OSTREL_DISPLAY_ALLOCATE_H

#include <cstddef>
#include <cstdlib>
#include <memory>

namespace ostrel {

struct Release {
    void operator()(void* memory) const { std::free(memory); }
};

template<typename T>
using Buffer = std::unique_ptr<T[], Release>;

void* allocateBytes(size_t bytes);

// `count` elements, not initialised; null when there is no memory for them.
template<typename T>
Buffer<T> allocate(size_t count) {
    return Buffer<T>(static_cast<T*>(allocateBytes(count * sizeof(T))));
}

// Makes allocateBytes ask `allocator` instead of malloc, for tests; null: malloc again.
void replaceAllocator(void* (*allocator)(size_t bytes));

} // namespace ostrel

#endif
