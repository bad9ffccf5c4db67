// The toolkit's memory blocks, each with a letter: logged as `allocate(1024) = A` and `release(A)`. For tests that are
// linked with the toolkit's sources themselves: the functions are the library's own and cannot be taken over in it.
#ifndef OSTREL_TESTS_SUPPORT_FAKE_ALLOCATE_H
#define OSTREL_TESTS_SUPPORT_FAKE_ALLOCATE_H

#include <map>

struct FakeMemory {
    std::map<void*, char> blocks; // those that were not released; a program may have freed its own
    char nextLetter = 'A';
    int blocksLeft = 1000000; // how many more can be had
};

// `fakeMemory() = {}` is a fresh start; it frees nothing.
FakeMemory& fakeMemory();

#endif
