#include "tests/support/fake_allocate.h"

#include "tests/support/call_log.h"
#include "util/allocate.h"

#include <cstdlib>

FakeMemory& fakeMemory() {
    static FakeMemory* const memory = new FakeMemory;
    return *memory;
}

void* ostrel::allocateCleared(size_t size) {
    const std::string call = "allocate(" + std::to_string(size) + ") = ";
    if (callLog().nextCallFails() || fakeMemory().blocksLeft == 0) {
        callLog().add(call + "null");
        return nullptr;
    }
    --fakeMemory().blocksLeft;
    void* const block = std::calloc(1, size);
    const char letter = fakeMemory().nextLetter++;
    fakeMemory().blocks[block] = letter;
    callLog().add(call + letter);
    return block;
}

void ostrel::release(void* block) {
    const auto found = fakeMemory().blocks.find(block);
    if (found == fakeMemory().blocks.end()) {
        callLog().add(block == nullptr ? "release(null)" : "release(a block that is not there)");
        return;
    }
    callLog().add(std::string("release(") + found->second + ")");
    fakeMemory().blocks.erase(found);
    std::free(block);
}
