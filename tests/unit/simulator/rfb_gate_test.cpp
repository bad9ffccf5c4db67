#include "simulator/web/rfb_gate.h"

#include "tests/support/scale.h"

#include <gtest/gtest.h>
#include <random>

using namespace ostrel;

namespace {

const std::string INIT = "\x01";

std::string bytes(std::initializer_list<int> values) {
    std::string text;
    for (const int value : values)
        text += static_cast<char>(value);
    return text;
}

std::string
pixelFormat(int bits, int trueColour, int red, int green, int blue, int redShift, int greenShift, int blueShift) {
    return bytes({0,          0,          0,         0,          bits,        24,        0,
                  trueColour, red >> 8,   red & 255, green >> 8, green & 255, blue >> 8, blue & 255,
                  redShift,   greenShift, blueShift, 0,          0,           0});
}

const std::string UPDATE_REQUEST = bytes({3, 1, 0, 0, 0, 0, 1, 64, 0, 240});
const std::string KEY = bytes({4, 1, 0, 0, 0, 0, 0, 65});
const std::string POINTER = bytes({5, 1, 0, 10, 0, 20});

struct Passed {
    bool alive;
    std::string accepted;
};

Passed pass(std::string received) {
    RfbGate gate;
    Passed passed;
    passed.alive = gate.pass(received, passed.accepted);
    return passed;
}

TEST(RfbGate, LetsWholeMessagesThroughHoweverTheyArrive) {
    const std::string story = INIT + pixelFormat(32, 1, 255, 255, 255, 0, 8, 16) +
                              pixelFormat(16, 1, 31, 63, 31, 11, 5, 0) + pixelFormat(8, 1, 7, 7, 3, 0, 3, 6) +
                              UPDATE_REQUEST + KEY + POINTER;
    RfbGate gate;
    std::string received;
    std::string accepted;
    size_t before = 0;
    for (const char byte : story) {
        received += byte;
        ASSERT_TRUE(gate.pass(received, accepted));
        // Nothing of a message before all of it.
        EXPECT_TRUE(accepted.size() == before || received.empty());
        before = accepted.size();
    }
    EXPECT_EQ(accepted, story);
    EXPECT_TRUE(gate.isEstablished());
}

TEST(RfbGate, LeavesOnlyEncodingsThatKeepColoursExact) {
    // JPEG quality, tight, cursor, raw, fine quality, ZYWRLE, compression
    const std::string asked = bytes({2, 0, 0, 7, 255, 255, 255, 224 + 5, 0, 0, 0, 7,  255, 255, 255, 17,
                                     0, 0, 0, 0, 255, 255, 254, 0,       0, 0, 0, 17, 255, 255, 255, 2});
    const std::string left = bytes({2, 0, 0, 3, 0, 0, 0, 7, 0, 0, 0, 0, 255, 255, 255, 2});
    const Passed passed = pass(INIT + asked + POINTER);
    EXPECT_TRUE(passed.alive);
    EXPECT_EQ(passed.accepted, INIT + left + POINTER);
}

TEST(RfbGate, DropsClipboardTexts) {
    const std::string text = bytes({6, 0, 0, 0, 0, 0, 0, 3}) + "abc";
    const std::string extended = bytes({6, 0, 0, 0, 255, 255, 255, 253}) + "abc";
    const Passed passed = pass(INIT + text + POINTER + extended + POINTER);
    EXPECT_TRUE(passed.alive);
    EXPECT_EQ(passed.accepted, INIT + POINTER + POINTER);
}

TEST(RfbGate, RefusesWhatNoViewerSends) {
    const struct {
        const char* what;
        std::string received;
    } cases[] = {
        {"an unknown message", INIT + "\x07"},
        {"a colour map", INIT + pixelFormat(8, 0, 7, 7, 3, 0, 3, 6)},
        {"24 bits a pixel", INIT + pixelFormat(24, 1, 255, 255, 255, 0, 8, 16)},
        {"no bits", INIT + pixelFormat(0, 1, 255, 255, 255, 0, 8, 16)},
        {"a channel without colours", INIT + pixelFormat(32, 1, 0, 255, 255, 0, 8, 16)},
        {"a channel of odd size", INIT + pixelFormat(32, 1, 255, 254, 255, 0, 8, 16)},
        {"a channel of 16 bits", INIT + pixelFormat(32, 1, 65535, 255, 255, 0, 8, 16)},
        {"a channel outside the pixel", INIT + pixelFormat(32, 1, 255, 255, 255, 0, 8, 25)},
        {"a shift past the pixel", INIT + pixelFormat(16, 1, 31, 63, 31, 11, 5, 200)},
        {"encodings without end", INIT + bytes({2, 0, 4, 1})},
        {"an endless clipboard", INIT + bytes({6, 0, 0, 0, 0x7F, 255, 255, 255})},
        {"an endless extended clipboard", INIT + bytes({6, 0, 0, 0, 0x80, 0, 0, 0})},
    };
    for (const auto& [what, received] : cases)
        EXPECT_FALSE(pass(received).alive) << what;
}

// Whatever arrives: what is let through is made of known messages of their proper length, and is never more than came.
TEST(RfbGate, LetsNothingElseThroughOfRandomBytes) {
    constexpr unsigned SEED = 20;
    std::mt19937 random(SEED);
    RecordProperty("seed", static_cast<int>(SEED));
    constexpr size_t SIZES[] = {20, 0, 0, 10, 8, 6};
    const long rounds = scaled(20000);
    for (long round = 0; round < rounds; ++round) {
        std::string received = INIT;
        for (unsigned i = 0; i < 64; ++i)
            received += static_cast<char>(random() % (round % 2 == 0 ? 8 : 256));
        std::string accepted = pass(received).accepted.substr(INIT.size());
        EXPECT_LE(accepted.size(), 64U);
        while (!accepted.empty()) {
            const auto message = static_cast<unsigned char>(accepted[0]);
            ASSERT_LE(message, 5U);
            ASSERT_NE(message, 1U);
            const size_t size = message == 2 ? 4 + 4 * static_cast<unsigned char>(accepted[3]) : SIZES[message];
            ASSERT_LE(size, accepted.size());
            accepted.erase(0, size);
        }
    }
}

} // namespace
