#include "simulator/web/password_tries.h"

#include <gtest/gtest.h>
#include <vector>

using namespace ostrel;

namespace {

using Delays = std::vector<int64_t>;
constexpr bool RIGHT = true;
constexpr bool WRONG = false;

TEST(PasswordTries, AreHeldBackAfterThreeWrongOnes) {
    PasswordTries tries;
    Delays delays;
    for (int i = 0; i < 8; ++i)
        delays.push_back(tries.holdBack("10.0.0.9", WRONG, 1000 + i));
    EXPECT_EQ(delays, (Delays{0, 0, 0, 1000, 2000, 4000, 4000, 4000}));
}

TEST(PasswordTries, CostNobodyElseAnything) {
    PasswordTries tries;
    for (int i = 0; i < 8; ++i)
        tries.holdBack("10.0.0.9", WRONG, 1000);
    EXPECT_EQ(tries.holdBack("10.0.0.8", WRONG, 1000), 0);
    EXPECT_EQ(tries.holdBack("10.0.0.8", RIGHT, 1000), 0);
}

TEST(PasswordTries, DelayTheRightOneTooOrItWouldStandOut) {
    PasswordTries tries;
    for (int i = 0; i < 4; ++i)
        tries.holdBack("10.0.0.9", WRONG, 1000);
    EXPECT_EQ(tries.holdBack("10.0.0.9", RIGHT, 1000), 2000);
    EXPECT_EQ(tries.holdBack("10.0.0.9", RIGHT, 1000), 2000); // right ones do not count
    EXPECT_EQ(tries.holdBack("10.0.0.9", WRONG, 1000), 2000); // nor do they wipe out the wrong ones
}

TEST(PasswordTries, AreForgottenFiveMinutesAfterTheLast) {
    PasswordTries tries;
    for (int i = 0; i < 4; ++i)
        tries.holdBack("10.0.0.9", WRONG, 1000);
    EXPECT_EQ(tries.holdBack("10.0.0.9", RIGHT, 300'999), 2000);
    EXPECT_EQ(tries.holdBack("10.0.0.9", RIGHT, 301'000), 0);
}

TEST(PasswordTries, OfManyAddressesKeepTheLastThousand) {
    PasswordTries tries;
    for (int address = 0; address < 1000; ++address)
        for (int i = 0; i < 4; ++i)
            tries.holdBack(std::to_string(address), WRONG, address);
    EXPECT_EQ(tries.holdBack("1000", RIGHT, 2000), 0); // takes nobody's place
    EXPECT_EQ(tries.holdBack("0", RIGHT, 2000), 2000);
    EXPECT_EQ(tries.holdBack("500", WRONG, 2000), 2000); // has one already
    EXPECT_EQ(tries.holdBack("0", RIGHT, 2000), 2000);
    EXPECT_EQ(tries.holdBack("1000", WRONG, 2000), 0);
    EXPECT_EQ(tries.holdBack("0", RIGHT, 2000), 0); // had to go
    EXPECT_EQ(tries.holdBack("1", RIGHT, 2000), 2000);
    EXPECT_EQ(tries.holdBack("999", RIGHT, 2000), 2000);
}

} // namespace
