// How much stack aswprintf takes: it runs on a painted one, and what is painted over is counted.
#include "util/wide_format.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cfloat>
#include <cstdio>
#include <iterator>
#include <string>
#include <ucontext.h>

namespace {

constexpr size_t STACK_BYTES = 65536;
constexpr unsigned char PAINT = 0xA5;

alignas(16) unsigned char stack[STACK_BYTES];
wchar_t result[1000];

void formatEverything() {
    aswprintf(
        result, 900, L"%ls %s %c %lc %d %ld %u %lu %x %f %f %%", L"wide", "bytes \xC3\xA9", 'c', L'w', -1, -2L, 3U, 4UL,
        5U, -DBL_MAX, 0.1);
}

size_t bytesOfStackFor(void (*work)()) {
    std::fill(std::begin(stack), std::end(stack), PAINT);
    static ucontext_t here;
    static ucontext_t there;
    getcontext(&there);
    there.uc_stack.ss_sp = stack;
    there.uc_stack.ss_size = STACK_BYTES;
    there.uc_link = &here;
    makecontext(&there, work, 0);
    swapcontext(&here, &there);
    const unsigned char* const deepest =
        std::find_if(std::begin(stack), std::end(stack), [](unsigned char byte) { return byte != PAINT; });
    return static_cast<size_t>(std::end(stack) - deepest);
}

TEST(Aswprintf, TakesLessThan4KibOfStackForAnyConversion) {
    formatEverything(); // the dynamic linker has its say at the first call
    const size_t bytes = bytesOfStackFor(formatEverything);
    RecordProperty("bytes", static_cast<int>(bytes));
    std::printf("aswprintf: %zu bytes of stack\n", bytes);
    EXPECT_GT(bytes, 0U);
    EXPECT_LT(bytes, 4096U);
    EXPECT_EQ(std::wstring(result).substr(0, 31), L"wide bytes \x00E9 c w -1 -2 3 4 5 -1");
}

} // namespace
