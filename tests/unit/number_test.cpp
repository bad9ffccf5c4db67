#include "util/number.h"

#include "tests/support/scale.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <climits>
#include <clocale>
#include <cmath>
#include <cstring>
#include <limits>
#include <locale>
#include <random>
#include <sstream>

namespace {

constexpr double INFINITE = std::numeric_limits<double>::infinity();

std::string streamed(double value) {
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    stream << std::fixed;
    stream.precision(2);
    stream << value;
    return stream.str();
}

std::string dtoaText(double value) {
    char out[DTOA_LENGTH];
    EXPECT_EQ(dtoa(value, out), out);
    return out;
}

TEST(Itoa, WritesTheSignAndTheDigits) {
    char out[ITOA_LENGTH];
    EXPECT_STREQ(itoa(-42, out), "-42");
    EXPECT_STREQ(itoa(0, out), "0");
    EXPECT_STREQ(itoa(7, out), "7");
    EXPECT_STREQ(itoa(10, out), "10");
    EXPECT_STREQ(itoa(INT_MAX, out), "2147483647");
    EXPECT_STREQ(itoa(INT_MIN, out), "-2147483648");
    EXPECT_EQ(itoa(1, out), out);
}

TEST(Itoa, WritesNothingBehindTheTerminator) {
    char out[ITOA_LENGTH];
    std::memset(out, '#', sizeof out);
    itoa(-15, out);
    EXPECT_EQ(std::string(out, sizeof out), std::string("-15\0########", 12));
}

TEST(Uitoa, GoesUpToTheLargestUnsignedValue) {
    char out[UITOA_LENGTH];
    EXPECT_STREQ(uitoa(0, out), "0");
    EXPECT_STREQ(uitoa(2147483648U, out), "2147483648");
    EXPECT_STREQ(uitoa(4294967295U, out), "4294967295");
}

TEST(Utoxa, WritesSmallDigitsWithoutPrefixOrLeadingZeros) {
    char out[UTOXA_LENGTH];
    EXPECT_STREQ(utoxa(0, out), "0");
    EXPECT_STREQ(utoxa(255, out), "ff");
    EXPECT_STREQ(utoxa(0x1234ABCDU, out), "1234abcd");
    EXPECT_STREQ(utoxa(UINT_MAX, out), "ffffffff");
}

TEST(Integers, ReadBackAsTheSameValueForAllLengths) {
    std::mt19937 random(7);
    const long values = scaled(1'000'000);
    char out[ITOA_LENGTH];
    for (long i = 0; i < values; ++i) {
        const auto value = static_cast<unsigned>(random() >> random() % 32);
        ASSERT_EQ(std::stoul(uitoa(value, out)), value);
        ASSERT_EQ(std::stoul(utoxa(value, out), nullptr, 16), value);
        const int number = static_cast<int>(value);
        ASSERT_EQ(std::stol(itoa(number, out)), number);
        ASSERT_EQ(std::to_string(number), out);
    }
}

TEST(Dtoa, AlwaysHasTwoDigitsBehindThePoint) {
    EXPECT_EQ(dtoaText(0), "0.00");
    EXPECT_EQ(dtoaText(-0.0), "-0.00");
    EXPECT_EQ(dtoaText(3), "3.00");
    EXPECT_EQ(dtoaText(-1.5), "-1.50");
    EXPECT_EQ(dtoaText(1234567.891), "1234567.89");
    EXPECT_EQ(dtoaText(0.004), "0.00");
    EXPECT_EQ(dtoaText(-0.004), "-0.00");
    EXPECT_EQ(dtoaText(0.999), "1.00");
}

TEST(Dtoa, RoundsToTheNearestAndTiesToTheEvenDigit) {
    EXPECT_EQ(dtoaText(0.125), "0.12");
    EXPECT_EQ(dtoaText(0.375), "0.38");
    EXPECT_EQ(dtoaText(2.675), "2.67"); // the nearest double lies below the tie
}

TEST(Dtoa, NamesWhatIsNotANumberAsAStreamDoes) {
    EXPECT_EQ(dtoaText(INFINITE), streamed(INFINITE));
    EXPECT_EQ(dtoaText(-INFINITE), streamed(-INFINITE));
    EXPECT_EQ(dtoaText(std::nan("")), streamed(std::nan("")));
    EXPECT_EQ(dtoaText(-std::nan("")), streamed(-std::nan("")));
    EXPECT_EQ(dtoaText(INFINITE), "inf");
}

TEST(Dtoa, TheLargestValueFillsItsBuffer) {
    EXPECT_EQ(dtoaText(DBL_MAX), streamed(DBL_MAX));
    EXPECT_EQ(dtoaText(-DBL_MAX), streamed(-DBL_MAX));
    EXPECT_EQ(dtoaText(-DBL_MAX).size(), size_t{DTOA_LENGTH - 1});
    EXPECT_EQ(dtoaText(DBL_MIN), "0.00");
    EXPECT_EQ(dtoaText(DBL_TRUE_MIN), "0.00");
}

TEST(Dtoa, DoesNotFollowTheLocale) {
    const char* const before = std::setlocale(LC_ALL, nullptr);
    const std::string kept = before;
    std::setlocale(LC_ALL, "de_DE.UTF-8"); // where it is installed it has a decimal comma
    EXPECT_EQ(dtoaText(1234.5), "1234.50");
    std::setlocale(LC_ALL, kept.c_str());
}

TEST(Dtoa, WritesWhatAStreamWritesForAllMagnitudes) {
    std::mt19937_64 random(11);
    const long values = scaled(200'000);
    for (long i = 0; i < values; ++i) {
        const uint64_t bits = random();
        double value = 0;
        std::memcpy(&value, &bits, sizeof value); // any bits: every exponent is as likely
        ASSERT_EQ(dtoaText(value), streamed(value)) << bits;
        const double price = static_cast<double>(static_cast<int64_t>(bits) >> 30) / 1000;
        ASSERT_EQ(dtoaText(price), streamed(price)) << bits;
    }
}

} // namespace
