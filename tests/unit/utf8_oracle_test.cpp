// The conversions against the rules spelled out, over all short inputs and many random longer ones.
#include "tests/support/scale.h"
#include "tests/support/utf8_oracle.h"
#include "util/utf8.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <random>

namespace {

constexpr size_t LONGEST = 40; // elements of an input
constexpr size_t GUARD = 4;    // elements behind an output that must stay as they are

template<typename Element>
struct Output {
    Element real[LONGEST * 6 + 1 + GUARD];
    Element expected[LONGEST * 6 + 1 + GUARD];

    void paint(size_t room) {
        std::fill_n(real, room + GUARD, Element(0x5A));
        std::fill_n(expected, room + GUARD, Element(0x5A));
    }
    bool same(size_t room) const { return std::equal(real, real + room + GUARD, expected); }
};

template<typename Element>
std::string hex(const Element* in, size_t size) {
    std::string text;
    char digits[12];
    for (size_t i = 0; i < size; ++i) {
        std::snprintf(digits, sizeof digits, "%X ", static_cast<unsigned>(std::make_unsigned_t<Element>(in[i])));
        text += digits;
    }
    return text;
}
template<>
std::string hex(const wchar_t* in, size_t size) {
    uint32_t values[LONGEST];
    std::copy_n(in, size, values);
    return hex(values, size);
}

// Results, what is written and what is left alone behind it, for one capacity; SIZE_MAX: counting.
bool decodesAlike(const char* in, size_t size, size_t room, int flags) {
    static Output<wchar_t> out;
    if (room == SIZE_MAX)
        return utf8_to_wchar(in, size, nullptr, 0, flags) == oracle::decode(in, size, nullptr, 0, flags);
    out.paint(room);
    return utf8_to_wchar(in, size, out.real, room, flags) == oracle::decode(in, size, out.expected, room, flags) &&
           out.same(room);
}

bool encodesAlike(const wchar_t* in, size_t size, size_t room, int flags) {
    static Output<char> out;
    if (room == SIZE_MAX)
        return wchar_to_utf8(in, size, nullptr, 0, flags) == oracle::encode(in, size, nullptr, 0, flags);
    out.paint(room);
    return wchar_to_utf8(in, size, out.real, room, flags) == oracle::encode(in, size, out.expected, room, flags) &&
           out.same(room);
}

// Every flag combination, counted and with every capacity up to one more than the input can fill.
void expectDecodesAlike(const char* in, size_t size) {
    for (int flags = 0; flags < 4; ++flags) {
        ASSERT_TRUE(decodesAlike(in, size, SIZE_MAX, flags)) << hex(in, size) << "counted, flags " << flags;
        for (size_t room = 0; room <= size + 1; ++room)
            ASSERT_TRUE(decodesAlike(in, size, room, flags))
                << hex(in, size) << "room for " << room << ", flags " << flags;
    }
}

void expectEncodesAlike(const wchar_t* in, size_t size) {
    for (int flags = 0; flags < 4; ++flags) {
        ASSERT_TRUE(encodesAlike(in, size, SIZE_MAX, flags)) << hex(in, size) << "counted, flags " << flags;
        for (size_t room = 0; room <= size * 6 + 1; ++room)
            ASSERT_TRUE(encodesAlike(in, size, room, flags))
                << hex(in, size) << "room for " << room << ", flags " << flags;
    }
}

TEST(Utf8ToWide, FollowsTheRulesForEveryInputOfOneAndTwoBytes) {
    for (int first = 0; first < 256; ++first) {
        char in[2] = {static_cast<char>(first), 0};
        ASSERT_NO_FATAL_FAILURE(expectDecodesAlike(in, 1));
        for (int second = 0; second < 256; ++second) {
            in[1] = static_cast<char>(second);
            ASSERT_NO_FATAL_FAILURE(expectDecodesAlike(in, 2));
        }
    }
}

TEST(Utf8ToWide, FollowsTheRulesForEveryInputOfThreeBytesWithALegalLead) {
    for (int first = 0xC0; first < 0xFE; ++first)
        for (int second = 0; second < 256; ++second)
            for (int third = 0; third < 256; ++third) {
                const char in[3] = {static_cast<char>(first), static_cast<char>(second), static_cast<char>(third)};
                ASSERT_NO_FATAL_FAILURE(expectDecodesAlike(in, 3));
            }
}

// Bytes as they come in texts, whole sequences and broken ones: evenly spread bytes would hardly ever make a sequence.
class TextMaker {
  public:
    explicit TextMaker(uint32_t seed) : random(seed) {}

    uint32_t below(uint32_t end) { return static_cast<uint32_t>((uint64_t{random()} * end) >> 32U); }

    // Fills `in` and returns its size, 4 to LONGEST bytes.
    size_t bytes(char* in) {
        const size_t size = 4 + below(LONGEST - 3);
        size_t at = 0;
        while (at < size) {
            wchar_t character = characterOf(below(8));
            char sequence[6];
            size_t length = oracle::encode(&character, 1, sequence, sizeof sequence, 0);
            if (length == 0) // a surrogate or a negative value: any byte instead
                sequence[length++] = static_cast<char>(below(256));
            if (below(8) == 0)
                sequence[below(static_cast<uint32_t>(length))] = static_cast<char>(below(256));
            if (below(16) == 0)
                --length;
            length = std::min(length, size - at);
            std::memcpy(in + at, sequence, length);
            at += length;
        }
        return size;
    }

    size_t characters(wchar_t* in) {
        const size_t size = 1 + below(LONGEST);
        for (size_t i = 0; i < size; ++i)
            in[i] = characterOf(below(8));
        return size;
    }

  private:
    wchar_t characterOf(uint32_t choice) {
        static constexpr uint32_t ENDS[] = {0x80, 0x80, 0x80, 0x800, 0x10000, 0x200000, 0x4000000, 0xFFFFFFFF};
        static constexpr uint32_t CORNERS[] = {0,          0x7F,       0x80,      0x7FF,    0x800,     0xD7FF,
                                               0xD800,     0xDFFF,     0xE000,    0xFEFF,   0xFFFF,    0x10000,
                                               0x10FFFF,   0x110000,   0x1FFFFF,  0x200000, 0x3FFFFFF, 0x4000000,
                                               0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};
        if (below(16) == 0)
            return static_cast<wchar_t>(CORNERS[below(std::size(CORNERS))]);
        return static_cast<wchar_t>(below(ENDS[choice]));
    }

    std::mt19937 random;
};

TEST(Utf8ToWide, FollowsTheRulesForRandomTexts) {
    constexpr uint32_t SEED = 20240611;
    const long texts = scaled(10'000'000);
    TextMaker make(SEED);
    char in[LONGEST];
    for (long i = 0; i < texts; ++i) {
        const size_t size = make.bytes(in);
        for (int flags = 0; flags < 4; ++flags) {
            // Counting, plenty of room, and one capacity in between: over the texts every one has its turn.
            for (const size_t room : {SIZE_MAX, size, size_t{make.below(static_cast<uint32_t>(size))}})
                ASSERT_TRUE(decodesAlike(in, size, room, flags))
                    << "seed " << SEED << ", text " << i << ": " << hex(in, size) << "room for " << room << ", flags "
                    << flags;
        }
    }
}

TEST(Utf8ToWide, FollowsTheRulesForRandomTextsAtEveryCapacity) {
    constexpr uint32_t SEED = 20240612;
    const long texts = scaled(200'000);
    TextMaker make(SEED);
    char in[LONGEST];
    for (long i = 0; i < texts; ++i) {
        const size_t size = make.bytes(in);
        ASSERT_NO_FATAL_FAILURE(expectDecodesAlike(in, size)) << "seed " << SEED << ", text " << i;
    }
}

TEST(WideToUtf8, FollowsTheRulesForEveryCharacterOfUnicodeAndItsNeighbours) {
    for (uint32_t value = 0; value < 0x120000; ++value) {
        const auto character = static_cast<wchar_t>(value);
        for (int flags = 0; flags < 4; ++flags)
            ASSERT_TRUE(encodesAlike(&character, 1, 6, flags)) << value << ", flags " << flags;
    }
}

TEST(WideToUtf8, FollowsTheRulesForRandomTextsAtEveryCapacity) {
    constexpr uint32_t SEED = 20240613;
    const long texts = scaled(100'000);
    TextMaker make(SEED);
    wchar_t in[LONGEST];
    for (long i = 0; i < texts; ++i) {
        const size_t size = make.characters(in);
        ASSERT_NO_FATAL_FAILURE(expectEncodesAlike(in, size)) << "seed " << SEED << ", text " << i;
    }
}

} // namespace
