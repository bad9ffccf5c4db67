// Any bytes through both conversions, held to their rules spelled out.
#include "util/utf8.h"
#include "tests/support/utf8_oracle.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace {

constexpr size_t GUARD = 4; // elements behind an output that must stay as they are

template<typename In, typename Out>
using Conversion = size_t (*)(const In*, size_t, Out*, size_t, int);

template<typename In, typename Out>
void compare(
    Conversion<In, Out> convert, Conversion<In, Out> rules, const std::vector<In>& in, size_t room, int flags) {
    if (convert(in.data(), in.size(), nullptr, 0, flags) != rules(in.data(), in.size(), nullptr, 0, flags))
        std::abort();
    std::vector<Out> real(room + GUARD, Out(0x5A));
    std::vector<Out> expected = real;
    const size_t count = convert(in.data(), in.size(), real.data(), room, flags);
    if (count != rules(in.data(), in.size(), expected.data(), room, flags) || real != expected)
        std::abort();
}

} // namespace

// The first byte holds the flags and which capacity is tried, the others are the text.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size == 0)
        return 0;
    const int flags = data[0] & 3;
    const size_t part = data[0] >> 2;
    const std::vector<char> bytes(data + 1, data + size);
    compare<char, wchar_t>(utf8_to_wchar, oracle::decode, bytes, bytes.size() * part / 63, flags);

    std::vector<wchar_t> characters((size - 1) / sizeof(wchar_t));
    if (!characters.empty())
        std::memcpy(characters.data(), data + 1, characters.size() * sizeof(wchar_t));
    compare<wchar_t, char>(wchar_to_utf8, oracle::encode, characters, characters.size() * 6 * part / 63, flags);
    return 0;
}
