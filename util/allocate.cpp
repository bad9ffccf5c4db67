#include "util/allocate.h"

#include <cstdlib>

namespace ostrel {

void* allocateCleared(size_t size) {
    return std::calloc(1, size);
}

void release(void* block) {
    std::free(block);
}

} // namespace ostrel
