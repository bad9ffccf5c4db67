#include "display/allocate.h"

namespace ostrel {

namespace {

void* (*currentAllocator)(size_t) = std::malloc;

} // namespace

void* allocateBytes(size_t bytes) {
    return currentAllocator(bytes);
}

void replaceAllocator(void* (*allocator)(size_t bytes)) {
    currentAllocator = allocator != nullptr ? allocator : std::malloc;
}

} // namespace ostrel
