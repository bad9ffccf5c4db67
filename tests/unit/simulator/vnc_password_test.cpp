#include "simulator/web/vnc_password.h"

#include "tests/support/scale.h"

#include <gtest/gtest.h>
#include <random>
#include <rfb/rfb.h>

using namespace ostrel;

namespace {

// As a viewer answers, by the library's own hand.
std::string answered(Challenge challenge, std::string password) {
    rfbEncryptBytes(challenge.data(), password.data());
    return {challenge.begin(), challenge.end()};
}

TEST(VncPassword, IsRightWhenAViewerEncryptsWithIt) {
    constexpr unsigned SEED = 41;
    std::mt19937 random(SEED);
    RecordProperty("seed", static_cast<int>(SEED));
    const long rounds = scaled(2000);
    for (long round = 0; round < rounds; ++round) {
        std::string text(1 + random() % MAX_PASSWORD_LENGTH, '\0');
        for (char& c : text)
            c = static_cast<char>(' ' + random() % 95);
        Challenge challenge;
        for (unsigned char& byte : challenge)
            byte = static_cast<unsigned char>(random());
        const VncPassword password(text);
        std::string response = answered(challenge, text);
        EXPECT_TRUE(password.isAnsweredBy(challenge, response)) << text;
        const size_t changed = random() % response.size();
        response[changed] = static_cast<char>(response[changed] ^ 1 << random() % 8);
        EXPECT_FALSE(password.isAnsweredBy(challenge, response)) << text;
    }
}

TEST(VncPassword, IsToldFromItsNeighbours) {
    const VncPassword password("router");
    const Challenge challenge = newChallenge();
    for (const char* other : {"Router", "route", "router1", "routes", ""})
        EXPECT_FALSE(password.isAnsweredBy(challenge, answered(challenge, other))) << other;
    EXPECT_FALSE(password.isAnsweredBy(newChallenge(), answered(challenge, "router")));
}

// DES knows keys that encrypt twice to the same: they are people's passwords nevertheless.
TEST(VncPassword, MayMakeAWeakKey) {
    const Challenge challenge = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};
    const std::string once(challenge.begin(), challenge.end());
    const VncPassword password("xxxxpppp");
    EXPECT_FALSE(password.isAnsweredBy(challenge, once));
    EXPECT_FALSE(password.isAnsweredBy(challenge, answered(challenge, "xxxxpppq")));
}

TEST(VncPassword, NeedsAWholeResponse) {
    const VncPassword password("router");
    const Challenge challenge = newChallenge();
    const std::string response = answered(challenge, "router");
    EXPECT_FALSE(password.isAnsweredBy(challenge, ""));
    EXPECT_FALSE(password.isAnsweredBy(challenge, response.substr(1)));
    EXPECT_FALSE(password.isAnsweredBy(challenge, response + "x"));
}

TEST(Challenge, IsANewOneEachTime) {
    EXPECT_NE(newChallenge(), newChallenge());
}

} // namespace
