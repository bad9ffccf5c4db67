#include "util/wide_format.h"

#include "tests/support/scale.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <climits>
#include <clocale>
#include <cwchar>
#include <string>

namespace {

// The text that a format and its arguments give, with room enough. Through the plain function, whose formats nobody
// checks, so that tests can also pass what does not fit.
using Print = int (*)(wchar_t*, int, wchar_t*, ...);
constexpr Print PRINT = aswprintf;
constexpr int ROOM = 1200;

template<typename... Arguments>
std::wstring printed(const wchar_t* format, Arguments... arguments) {
    static wchar_t buffer[ROOM + 1];
    EXPECT_EQ(PRINT(buffer, ROOM, const_cast<wchar_t*>(format), arguments...), 0);
    return buffer;
}

TEST(Aswprintf, JoinsATextAndANumber) {
    wchar_t line[64];
    EXPECT_EQ(aswprintf(line, 59, L"%ls %d", L"at most", 20), 0);
    EXPECT_STREQ(line, L"at most 20");
}

TEST(Aswprintf, TakesConstantAndChangeableFormatsAlike) {
    wchar_t line[16];
    wchar_t format[] = L"%d%%";
    aswprintf(line, 15, format, 40);
    EXPECT_STREQ(line, L"40%");
    aswprintf(line, 15, format);
    aswprintf(line, 15, L"plain");
    EXPECT_STREQ(line, L"plain");
    PRINT(line, 15, format, 50);
    EXPECT_STREQ(line, L"50%");
}

TEST(Aswprintf, ADoubledPercentSignIsOneAndItsLetterPlainText) {
    EXPECT_EQ(printed(L"%%"), L"%");
    EXPECT_EQ(printed(L"100%% of %d", 7), L"100% of 7");
    EXPECT_EQ(printed(L"%%d", 7), L"%d");
    EXPECT_EQ(printed(L"a%%%d%%", 7), L"a%7%");
    EXPECT_EQ(printed(L"%%%%"), L"%%");
}

TEST(Aswprintf, KnowsEveryConversionOfItsTable) {
    EXPECT_EQ(printed(L"%c%hc", 'a', 'b'), L"ab");
    EXPECT_EQ(printed(L"%lc", static_cast<wint_t>(0x20AC)), L"\x20AC");
    EXPECT_EQ(printed(L"%d %hd %ld", -1, 22, -333L), L"-1 22 -333");
    EXPECT_EQ(printed(L"%u %hu %lu", 4294967295U, 22U, 333UL), L"4294967295 22 333");
    EXPECT_EQ(printed(L"%s %hs", "one", "two"), L"one two");
    EXPECT_EQ(printed(L"%ls", L"wide"), L"wide");
    EXPECT_EQ(printed(L"%f %hf %lf", 1.0, -2.345, 1e6), L"1.00 -2.35 1000000.00");
    EXPECT_EQ(printed(L"%x %X %hx %hX %lx %lX", 255U, 255U, 1U, 2U, 3U, 0xABCDEFU), L"ff ff 1 2 3 abcdef");
}

TEST(Aswprintf, TakesOneArgumentAfterTheOtherWhateverTheirKinds) {
    EXPECT_EQ(
        printed(L"%f%d%s%ls%f%lc%ld%u", 0.5, 1, "2", L"3", 4.0, static_cast<wint_t>(L'5'), 6L, 7U), L"0.50123"
                                                                                                    L"4.00567");
}

TEST(Aswprintf, PrintsTheMostNegativeInt) {
    EXPECT_EQ(printed(L"%d", INT_MIN), L"-2147483648");
}

TEST(Aswprintf, PrintsTheLower32BitsOfALong) {
    EXPECT_EQ(printed(L"%ld", static_cast<long>(INT_MIN)), L"-2147483648");
    EXPECT_EQ(printed(L"%lu", static_cast<unsigned long>(UINT_MAX)), L"4294967295");
    if (sizeof(long) > sizeof(int)) {
        const auto beyond = static_cast<long>(5'000'000'000LL);
        EXPECT_EQ(printed(L"%ld", beyond), L"705032704");
        EXPECT_EQ(printed(L"%lu", static_cast<unsigned long>(beyond)), L"705032704");
    }
}

TEST(Aswprintf, APrecisionIsNoConversionItKnows) {
    // "%." and "%5" are skipped; what follows is text, and the number goes to the next conversion.
    EXPECT_EQ(printed(L"%.1f %d", 3), L"1f 3");
    EXPECT_EQ(printed(L"%5d|%d", 3), L"d|3");
}

TEST(Aswprintf, UnknownConversionsAreSkippedAndTakeNoArgument) {
    EXPECT_EQ(printed(L"<%q%d>", 3), L"<3>");
    EXPECT_EQ(printed(L"<%lq%hq%d>", 3), L"<3>");
    EXPECT_EQ(printed(L"<%lld>", 3), L"<d>");
    EXPECT_EQ(printed(L"<%l%d>"), L"<d>");
    EXPECT_EQ(printed(L"<%h%d>"), L"<d>");
    EXPECT_EQ(printed(L"<%p%n%i%D%S>"), L"<>");
}

TEST(Aswprintf, AnUnfinishedConversionAtTheEndIsLeftOut) {
    EXPECT_EQ(printed(L"a%"), L"a");
    EXPECT_EQ(printed(L"a%l"), L"a");
    EXPECT_EQ(printed(L"a%h"), L"a");
    EXPECT_EQ(printed(L"%"), L"");
}

TEST(Aswprintf, AnEmptyOrNullFormatGivesAnEmptyText) {
    EXPECT_EQ(printed(L""), L"");
    EXPECT_EQ(printed(nullptr), L"");
}

TEST(Aswprintf, NullTextsAndZeroCharactersAddNothing) {
    EXPECT_EQ(printed(L"<%ls|%s>", static_cast<wchar_t*>(nullptr), static_cast<char*>(nullptr)), L"<|>");
    EXPECT_EQ(printed(L"<%c%lc>", 0, static_cast<wint_t>(0)), L"<>");
    wchar_t line[16];
    wchar_t* const missing = nullptr;
    aswprintf(line, 15, L"%ls %d", missing, 6);
    EXPECT_STREQ(line, L" 6");
}

TEST(Aswprintf, ByteTextsAreUtf8WhateverTheLocale) {
    ASSERT_STREQ(std::setlocale(LC_CTYPE, nullptr), "C");
    EXPECT_EQ(
        printed(
            L"%s", "Gr\xC3\xBC\xC3\x9F"
                   "e \xF0\x9F\x94\x92"),
        L"Gr\x00FC\x00DF"
        L"e \x1F512");
}

TEST(Aswprintf, BytesThatAreNotUtf8AreLeftOut) {
    EXPECT_EQ(printed(L"%s", "a\x80z"), L"az");
    EXPECT_EQ(printed(L"%s", "a\xFFz\xC3"), L"az");
    EXPECT_EQ(printed(L"%hs", "a\xE2\x82z"), L"az");
    EXPECT_EQ(printed(L"%c|", 0xC3), L"|");
    EXPECT_EQ(printed(L"%c", 0x141), L"A"); // the byte only
}

TEST(Aswprintf, NoOverlongFormEndsTheTextOrHidesACharacter) {
    EXPECT_EQ(printed(L"%s", "a\xC0\x80z"), L"az");
    EXPECT_EQ(printed(L"%s", "a\xC1\x81z"), L"az");
    EXPECT_EQ(printed(L"%s", "a\xE0\x80\xAFz"), L"az");
    EXPECT_EQ(printed(L"%s", "a\xED\xA0\x80z"), L"az");
    EXPECT_EQ(printed(L"%s", "a\xF4\x90\x80\x80z"), L"az");
    EXPECT_EQ(printed(L"%s", "\xF4\x8F\xBF\xBF"), L"\x10FFFF");
    EXPECT_EQ(printed(L"%s", "\xE0\xA0\x80\xC2\x80"), L"\x0800\x0080");
}

TEST(Aswprintf, ZeroesTheBufferUpToItsLastCharacter) {
    wchar_t buffer[8];
    std::wmemset(buffer, L'#', 8);
    aswprintf(buffer, 5, L"ab");
    EXPECT_EQ(std::wstring(buffer, 8), std::wstring(L"ab\0\0\0\0##", 8));
}

TEST(Aswprintf, AResultThatFitsExactlyIsKept) {
    wchar_t buffer[8];
    std::wmemset(buffer, L'#', 8);
    aswprintf(buffer, 5, L"%ls", L"abcde");
    EXPECT_EQ(std::wstring(buffer, 8), std::wstring(L"abcde\0##", 8));
}

TEST(Aswprintf, ALongerResultIsWrittenWholeAndThenCut) {
    wchar_t buffer[12];
    std::wmemset(buffer, L'#', 12);
    aswprintf(buffer, 5, L"%ls%d", L"abcdefg", 8);
    EXPECT_EQ(std::wstring(buffer, 12), std::wstring(L"abcde\0g8\0###", 12));
}

TEST(Aswprintf, SizeZeroLeavesAnEmptyTextAndANegativeOneNothing) {
    wchar_t buffer[4];
    std::wmemset(buffer, L'#', 4);
    aswprintf(buffer, 0, L"x");
    EXPECT_EQ(std::wstring(buffer, 4), std::wstring(L"\0\0##", 4));
    std::wmemset(buffer, L'#', 4);
    EXPECT_EQ(aswprintf(buffer, -1, L"x"), 0);
    EXPECT_EQ(std::wstring(buffer, 4), L"####");
}

TEST(Aswprintf, LongRunsManySegmentsAndLongTextsStayWhole) {
    const std::wstring run(700, L'x');
    EXPECT_EQ(printed(run.c_str()), run);
    std::wstring format;
    std::wstring expected;
    for (int i = 0; i < 600; ++i) {
        format += L"%%";
        expected += L'%';
    }
    EXPECT_EQ(printed((format + L"%d").c_str(), 5), expected + L"5");
    EXPECT_EQ(printed(L"%s", std::string(900, 'y').c_str()), std::wstring(900, L'y'));
    EXPECT_EQ(printed(L"%f", -DBL_MAX).size(), 313U);
}

TEST(AswprintfDeathTest, ADebugBuildRefusesAFormatThatDoesNotFitItsArguments) {
#ifdef NDEBUG
    std::printf("checked in builds without NDEBUG only\n");
#else
    wchar_t line[64];
    EXPECT_DEATH(aswprintf(line, 63, L"%ls", "bytes"), "does not fit its arguments");
    EXPECT_DEATH(aswprintf(line, 63, L"%s", L"wide"), "does not fit its arguments");
    EXPECT_DEATH(aswprintf(line, 63, L"%d", 1.0), "does not fit its arguments");
    EXPECT_DEATH(aswprintf(line, 63, L"%f", 1), "does not fit its arguments");
    EXPECT_DEATH(aswprintf(line, 63, L"%d", 1LL << 40U), "does not fit its arguments");
    EXPECT_DEATH(aswprintf(line, 63, L"%d %d", 1), "does not fit its arguments");
    EXPECT_DEATH(aswprintf(line, 63, L"%5d", 1), "does not fit its arguments");
    EXPECT_DEATH(aswprintf(line, 63, L"50%"), "does not fit its arguments");
    EXPECT_DEATH(aswprintf(line, 63, L"%d", 1, 2), "too few conversions");
#endif
    // What fits passes in every build.
    wchar_t text[64];
    char bytes[] = "b";
    wchar_t wide[] = L"w";
    aswprintf(
        text, 63, L"%s%ls%c%lc%d%hd%u%x%ld%lu%f%%", bytes, wide, 'c', L'd', true, short{1}, 2U, 3U, 4L, 5UL, 6.0F);
    EXPECT_STREQ(text, L"bwcd1123456.00%");
    aswprintf(text, 63, L"%ls%s", nullptr, nullptr);
    EXPECT_STREQ(text, L"");
}

} // namespace
