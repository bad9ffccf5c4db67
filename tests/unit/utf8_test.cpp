#include "util/utf8.h"

#include "util/utf8_sequence.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

constexpr int NONE = 0;
constexpr int BOTH = UTF8_DROP_INVALID | UTF8_DROP_BOM;

// What the conversion makes of `bytes` with room enough; "failed" as a text when it returns 0.
std::wstring decoded(const std::string& bytes, int flags) {
    std::wstring out(bytes.size() + 1, L'#');
    out.resize(utf8_to_wchar(bytes.data(), bytes.size(), out.data(), out.size(), flags));
    return out.empty() ? L"failed" : out;
}

size_t counted(const std::string& bytes, int flags) {
    return utf8_to_wchar(bytes.data(), bytes.size(), nullptr, 0, flags);
}

std::string encoded(const std::wstring& text, int flags) {
    std::string out(text.size() * 6 + 1, '#');
    out.resize(wchar_to_utf8(text.data(), text.size(), out.data(), out.size(), flags));
    return out.empty() ? "failed" : out;
}

std::wstring one(int32_t value) {
    return {static_cast<wchar_t>(value)};
}

TEST(Utf8ToWide, AnAsciiByteIsOneCharacter) {
    EXPECT_EQ(decoded("A", NONE), L"A");
    EXPECT_EQ(counted("A", NONE), 1U);
}

TEST(Utf8ToWide, TheEuroSignTakesThreeBytes) {
    EXPECT_EQ(decoded("\xE2\x82\xAC", NONE), one(0x20AC));
}

TEST(Utf8ToWide, NoInputAndNoRoomGiveNothing) {
    wchar_t out[2] = {L'#', L'#'};
    EXPECT_EQ(utf8_to_wchar(nullptr, 3, out, 2, NONE), 0U);
    EXPECT_EQ(utf8_to_wchar("abc", 0, out, 2, NONE), 0U);
    EXPECT_EQ(utf8_to_wchar("abc", 3, out, 0, NONE), 0U);
    EXPECT_EQ(out[0], L'#');
}

TEST(Utf8ToWide, ALoneContinuationByteFailsUnlessInvalidBytesAreDropped) {
    EXPECT_EQ(decoded("\x80", NONE), L"failed");
    EXPECT_EQ(decoded("a\x80z", NONE), L"failed");
    EXPECT_EQ(decoded("a\x80z", UTF8_DROP_BOM), L"failed");
    EXPECT_EQ(decoded("a\x80z", UTF8_DROP_INVALID), L"az");
    EXPECT_EQ(counted("\x80", UTF8_DROP_INVALID), 0U);
}

TEST(Utf8ToWide, ASurrogateIsCountedBeforeItIsDropped) {
    const std::string surrogate = "a\xED\xA0\x80";
    EXPECT_EQ(decoded(surrogate, NONE), L"failed");
    EXPECT_EQ(decoded(surrogate, UTF8_DROP_INVALID), L"a");
    EXPECT_EQ(counted(surrogate, NONE), 2U);
    EXPECT_EQ(counted(surrogate, UTF8_DROP_INVALID), 2U);
}

TEST(Utf8ToWide, TheNeighboursOfTheSurrogatesAreCharacters) {
    EXPECT_EQ(decoded("\xED\x9F\xBF", NONE), one(0xD7FF));
    EXPECT_EQ(decoded("\xED\xBF\xBF", NONE), L"failed");
    EXPECT_EQ(decoded("\xEE\x80\x80", NONE), one(0xE000));
}

TEST(Utf8ToWide, AByteOrderMarkStaysUnlessItIsToBeDropped) {
    const std::string marked = "\xEF\xBB\xBF"
                               "a";
    EXPECT_EQ(decoded(marked, NONE), one(0xFEFF) + L"a");
    EXPECT_EQ(decoded(marked, UTF8_DROP_INVALID), one(0xFEFF) + L"a");
    EXPECT_EQ(decoded(marked, UTF8_DROP_BOM), L"a");
    EXPECT_EQ(counted(marked, UTF8_DROP_BOM), 2U);
}

TEST(Utf8ToWide, AnOutputOneTooSmallFailsAsAWhole) {
    wchar_t out[3] = {};
    EXPECT_EQ(utf8_to_wchar("abc", 3, out, 2, NONE), 0U);
    EXPECT_EQ(std::wstring(out, 3), std::wstring(L"ab\0", 3));
    EXPECT_EQ(utf8_to_wchar("abc", 3, out, 3, NONE), 3U);
}

TEST(Utf8ToWide, AFullOutputFailsEvenWhereTheRestWouldBeDropped) {
    wchar_t out[2] = {};
    EXPECT_EQ(utf8_to_wchar("a\xEF\xBB\xBF", 4, out, 1, UTF8_DROP_BOM), 0U);
    EXPECT_EQ(utf8_to_wchar("a\xED\xA0\x80", 4, out, 1, UTF8_DROP_INVALID), 0U);
    EXPECT_EQ(utf8_to_wchar("a\x80\x80", 3, out, 1, UTF8_DROP_INVALID), 1U);
}

TEST(Utf8ToWide, ForbiddenLeadBytesDecodeLikeOthersOnceLetThrough) {
    EXPECT_EQ(decoded("\xC0\x80", NONE), L"failed");
    EXPECT_EQ(decoded("\xC0\x80", UTF8_DROP_INVALID), one(0));
    EXPECT_EQ(decoded("\xC1\x81", UTF8_DROP_INVALID), L"A");
    EXPECT_EQ(decoded("\xF5\x80\x80\x80", NONE), L"failed");
    EXPECT_EQ(decoded("\xF5\x80\x80\x80", UTF8_DROP_INVALID), one(0x140000));
    EXPECT_EQ(decoded("a\xFFz", NONE), L"failed");
    EXPECT_EQ(decoded("a\xFFz", UTF8_DROP_INVALID), L"az");
}

TEST(Utf8ToWide, OverlongAndLongFormsAreRead) {
    EXPECT_EQ(decoded("\xE0\x80\xAF", NONE), L"/");
    EXPECT_EQ(decoded("\xF6\x80\x80\x80", NONE), one(0x180000));
    EXPECT_EQ(decoded("\xF8\x88\x80\x80\x80", NONE), one(0x200000));
    EXPECT_EQ(decoded("\xFC\x84\x80\x80\x80\x80", NONE), one(0x4000000));
    EXPECT_EQ(decoded("\xFD\xBF\xBF\xBF\xBF\xBF", NONE), one(0x7FFFFFFF));
    EXPECT_EQ(decoded("a\xFE\x80\x80\x80\x80\x80z", UTF8_DROP_INVALID), L"az");
}

TEST(Utf8ToWide, TheBytesOfABrokenSequenceAreLookedAtAfresh) {
    EXPECT_EQ(decoded("\xE2\x82z", UTF8_DROP_INVALID), L"z");
    EXPECT_EQ(decoded("\xE2\xC3\xA9", UTF8_DROP_INVALID), one(0xE9));
    EXPECT_EQ(decoded("a\xE2\x82", UTF8_DROP_INVALID), L"a");
    EXPECT_EQ(decoded("a\xE2\x82", NONE), L"failed");
}

TEST(Utf8ToWide, AZeroByteIsACharacter) {
    EXPECT_EQ(decoded(std::string("a\0b", 3), NONE), std::wstring(L"a\0b", 3));
}

TEST(Utf8ToWide, NothingIsWrittenBehindTheResult) {
    const std::string text = "0123456789abcdef0123456789abcde";
    for (size_t length = 1; length <= text.size(); ++length) {
        std::vector<wchar_t> out(length + 8, L'#');
        ASSERT_EQ(utf8_to_wchar(text.data(), length, out.data(), length, BOTH), length);
        ASSERT_EQ(std::wstring(out.data() + length, 8), L"########") << length;
    }
}

TEST(WideToUtf8, SizesFollowTheCodePoint) {
    EXPECT_EQ(encoded(L"A", NONE), "A");
    EXPECT_EQ(encoded(one(0x7F), NONE), "\x7F");
    EXPECT_EQ(encoded(one(0x80), NONE), "\xC2\x80");
    EXPECT_EQ(encoded(one(0x7FF), NONE), "\xDF\xBF");
    EXPECT_EQ(encoded(one(0x800), NONE), "\xE0\xA0\x80");
    EXPECT_EQ(encoded(one(0x20AC), NONE), "\xE2\x82\xAC");
    EXPECT_EQ(encoded(one(0xFFFF), NONE), "\xEF\xBF\xBF");
    EXPECT_EQ(encoded(one(0x10000), NONE), "\xF0\x90\x80\x80");
    EXPECT_EQ(encoded(one(0x110000), NONE), "\xF4\x90\x80\x80");
    EXPECT_EQ(encoded(one(0x1FFFFF), NONE), "\xF7\xBF\xBF\xBF");
    EXPECT_EQ(encoded(one(0x200000), NONE), "\xF8\x88\x80\x80\x80");
    EXPECT_EQ(encoded(one(0x3FFFFFF), NONE), "\xFB\xBF\xBF\xBF\xBF");
    EXPECT_EQ(encoded(one(0x4000000), NONE), "\xFC\x84\x80\x80\x80\x80");
    EXPECT_EQ(encoded(one(0x7FFFFFFF), NONE), "\xFD\xBF\xBF\xBF\xBF\xBF");
}

TEST(WideToUtf8, NegativeValuesAndSurrogatesFailOrAreDropped) {
    for (const int32_t bad : {-1, INT32_MIN, 0xD800, 0xDFFF}) {
        EXPECT_EQ(encoded(L"a" + one(bad) + L"z", NONE), "failed") << bad;
        EXPECT_EQ(encoded(L"a" + one(bad) + L"z", UTF8_DROP_BOM), "failed") << bad;
        EXPECT_EQ(encoded(L"a" + one(bad) + L"z", UTF8_DROP_INVALID), "az") << bad;
        const std::wstring text = L"a" + one(bad);
        EXPECT_EQ(wchar_to_utf8(text.data(), 2, nullptr, 0, NONE), 0U) << bad;
        EXPECT_EQ(wchar_to_utf8(text.data(), 2, nullptr, 0, UTF8_DROP_INVALID), 1U) << bad;
    }
    EXPECT_EQ(encoded(one(0xD7FF), NONE), "\xED\x9F\xBF");
    EXPECT_EQ(encoded(one(0xE000), NONE), "\xEE\x80\x80");
}

TEST(WideToUtf8, AByteOrderMarkStaysUnlessItIsToBeDropped) {
    const std::wstring marked = one(0xFEFF) + L"a";
    EXPECT_EQ(
        encoded(marked, UTF8_DROP_INVALID), "\xEF\xBB\xBF"
                                            "a");
    EXPECT_EQ(encoded(marked, UTF8_DROP_BOM), "a");
    EXPECT_EQ(wchar_to_utf8(marked.data(), 2, nullptr, 0, UTF8_DROP_BOM), 1U);
}

TEST(WideToUtf8, NoInputAndNoRoomGiveNothing) {
    char out[2] = {'#', '#'};
    EXPECT_EQ(wchar_to_utf8(nullptr, 3, out, 2, NONE), 0U);
    EXPECT_EQ(wchar_to_utf8(L"abc", 0, out, 2, NONE), 0U);
    EXPECT_EQ(wchar_to_utf8(L"abc", 3, out, 0, NONE), 0U);
    EXPECT_EQ(out[0], '#');
}

TEST(WideToUtf8, ASequenceThatDoesNotFitFailsAndIsNotBegun) {
    const std::wstring text = L"a" + one(0x20AC);
    char out[4] = {'#', '#', '#', '#'};
    EXPECT_EQ(wchar_to_utf8(text.data(), 2, out, 3, NONE), 0U);
    EXPECT_EQ(std::string(out, 4), "a###");
    EXPECT_EQ(wchar_to_utf8(text.data(), 2, out, 4, NONE), 4U);
    EXPECT_EQ(std::string(out, 4), "a\xE2\x82\xAC");
}

TEST(ForbiddenText, IsFourBytesAndTheSurrogates) {
    std::string bytes;
    for (int b = 0; b < 256; ++b)
        if (__utf8_forbitten(static_cast<unsigned char>(b)) == -1)
            bytes += static_cast<char>(b);
        else
            ASSERT_EQ(__utf8_forbitten(static_cast<unsigned char>(b)), 0);
    EXPECT_EQ(bytes, "\xC0\xC1\xF5\xFF");
    EXPECT_EQ(__wchar_forbitten(static_cast<wchar_t>(0xD7FF)), 0);
    EXPECT_EQ(__wchar_forbitten(static_cast<wchar_t>(0xD800)), -1);
    EXPECT_EQ(__wchar_forbitten(static_cast<wchar_t>(0xDFFF)), -1);
    EXPECT_EQ(__wchar_forbitten(static_cast<wchar_t>(0xE000)), 0);
    EXPECT_EQ(__wchar_forbitten(static_cast<wchar_t>(-1)), 0);
}

} // namespace
