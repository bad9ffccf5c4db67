#include "lang/languages.h"

#include "tests/support/fake_settings.h"
#include "tests/support/language_file.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

// A process in which nothing has been looked up yet.
void forgetLookups() {
    std::memset(ret, 0, sizeof ret);
    std::wmemset(wret, L'#', LANGUAGE_TEXT_LENGTH);
}

std::wstring lookedUp(const std::string& contents, const std::string& key, const std::string& section = "modal") {
    const LanguageTextFile file(contents);
    wchar_t* const text = lang.getvalue(file.path().c_str(), key.c_str(), section.c_str());
    EXPECT_EQ(text, wret);
    return text;
}

std::wstring lookedUpWide(const std::string& contents, const std::string& key) {
    const LanguageTextFile file(contents);
    wchar_t* const text = getLangvalue(file.path().c_str(), key.c_str(), "modal");
    EXPECT_EQ(text, wret);
    return text;
}

class Lookup : public testing::Test {
  protected:
    void SetUp() override { forgetLookups(); }
};

TEST_F(Lookup, FindsATextOnOneLine) {
    EXPECT_EQ(lookedUp("<modal>\n<savingl1>Saving</savingl1>\n</modal>\n", "savingl1"), L"Saving");
    EXPECT_STREQ(ret, "Saving");
}

TEST_F(Lookup, CaresForNothingAroundTheTags) {
    EXPECT_EQ(
        lookedUp(
            "<?xml version=\"1.0\"?>\n<!-- hints -->\nbefore<modal>after\n\n  text <k> two words </k> more\n</modal>",
            "k"),
        L" two words ");
}

TEST_F(Lookup, TellsUpperFromLowerCase) {
    EXPECT_EQ(lookedUp("<modal>\n<Key>upper</Key>\n<key>lower</key>\n</modal>\n", "key"), L"lower");
}

TEST_F(Lookup, FindsNothingOfOtherSections) {
    const std::string file = "<other>\n<k>other</k>\n</other>\n<modal>\n<j>mine</j>\n</modal>\n<third>\n<k>third</k>\n";
    EXPECT_EQ(lookedUp(file, "k"), L"<NOTAG>");
    EXPECT_EQ(lookedUp(file, "j"), L"mine");
    EXPECT_EQ(lookedUp(file, "k", "third"), L"third");
}

TEST_F(Lookup, StopsAtTheFirstEndOfTheSectionAlsoWhenItBeginsAgain) {
    EXPECT_EQ(lookedUp("<modal>\n</modal>\n<modal>\n<k>second</k>\n</modal>\n", "k"), L"<NOTAG>");
}

TEST_F(Lookup, BeginsOnTheLineBehindTheSectionsTag) {
    EXPECT_EQ(lookedUp("<modal><k>hidden</k>\n</modal>\n", "k"), L"<NOTAG>");
    EXPECT_EQ(lookedUp("<modal></modal>\n<k>shown</k>\n</modal>\n", "k"), L"shown");
}

TEST_F(Lookup, PrefersTheKeyToTheSectionsEndOnOneLine) {
    EXPECT_EQ(lookedUp("<modal>\n</modal><k>text</k>\n", "k"), L"text");
    EXPECT_EQ(lookedUp("<modal>\n<k>other</k></modal>\n", "k"), L"other");
}

TEST_F(Lookup, TakesTheFirstLineThatContainsTheTag) {
    EXPECT_EQ(lookedUp("<modal>\n<j>say <k> twice</j>\n<k>text</k>\n</modal>\n", "k"), L" twice</j>\n<k>text");
    EXPECT_EQ(lookedUp("<modal>\n<k>one</k>\n<k>two</k>\n</modal>\n", "k"), L"one");
}

TEST_F(Lookup, EndsATextAtTheFirstClosingTagBehindItsOpeningOne) {
    EXPECT_EQ(lookedUp("<modal>\n</k><k>one</k>two</k>\n</modal>\n", "k"), L"one");
}

TEST_F(Lookup, KeepsTheLineEndsOfATextOverSeveralLines) {
    EXPECT_EQ(lookedUp("<modal>\n<k>Line one\nline two</k>\n</modal>\n", "k"), L"Line one\nline two");
    EXPECT_EQ(lookedUp("<modal>\n<k>\n  one\n\n  two\n</k>\n</modal>\n", "k"), L"\n  one\n\n  two\n");
}

TEST_F(Lookup, CutsTheLastOfSeveralLinesByLengthWhateverStandsThere) {
    // One character too many is cut where no line end follows, and the tag stays where more than that does.
    EXPECT_EQ(lookedUp("<modal>\n<k>one\ntwo</k>", "k"), L"one\ntw");
    EXPECT_EQ(lookedUp("<modal>\n<k>one\ntwo</k>  \n", "k"), L"one\ntwo</");
    EXPECT_EQ(lookedUp("<modal>\n<k>one\r\ntwo</k>\r\n", "k"), L"one\r\ntwo<");
    EXPECT_EQ(lookedUp("<modal>\n<k>one\n</k>", "k"), L"one\n");
}

TEST_F(Lookup, ShowsTheLastLineWhereTheFileEndsInsideAText) {
    EXPECT_EQ(lookedUp("<modal>\n<k>one\ntwo\nthree\n", "k"), L"three\n");
    EXPECT_EQ(lookedUp("<modal>\n  <k>one", "k"), L"  <k>one");
}

TEST_F(Lookup, MayRunBeyondTheSectionsEnd) {
    EXPECT_EQ(lookedUp("<modal>\n<k>one\n</modal>\ntwo</k>\n", "k"), L"one\n</modal>\ntwo");
}

TEST_F(Lookup, SaysNotagOnlyAsLongAsNothingHasBeenFound) {
    const std::string file = "<modal>\n<k>text</k>\n</modal>\n";
    EXPECT_EQ(lookedUp(file, "missing"), L"<NOTAG>");
    EXPECT_STREQ(ret, "<NOTAG>");
    EXPECT_EQ(lookedUp(file, "k"), L"text");
    EXPECT_EQ(lookedUp(file, "missing"), L"text");
    EXPECT_EQ(lookedUp(file, "k", "nowhere"), L"text");
    EXPECT_EQ(lookedUpWide(file, "missing"), L"text");
    EXPECT_EQ(lookedUp("", "k"), L"text");
}

TEST_F(Lookup, TakesAnEmptyTextForNone) {
    EXPECT_EQ(lookedUp("<modal>\n<k></k>\n</modal>\n", "k"), L"<NOTAG>");
}

TEST_F(Lookup, LeavesBytesOutThatAreNotUtf8AndKeepsAByteOrderMark) {
    EXPECT_EQ(lookedUp("<modal>\n<k>a\x80z</k>\n</modal>\n", "k"), L"az");
    EXPECT_STREQ(ret, "a\x80z");
    EXPECT_EQ(
        lookedUp(
            "<modal>\n<k>\xEF\xBB\xBF"
            "a\xC3\xA9</k>\n",
            "k"),
        L"\xFEFF"
        L"a\x00E9");
}

TEST_F(Lookup, ClearsTheWholeWideResult) {
    lookedUp("<modal>\n<k>long enough</k>\n</modal>\n", "k");
    lookedUp("<modal>\n<k>ab</k>\n</modal>\n", "k");
    EXPECT_EQ(std::wstring(wret, LANGUAGE_TEXT_LENGTH), L"ab" + std::wstring(LANGUAGE_TEXT_LENGTH - 2, L'\0'));
}

TEST_F(Lookup, AMissingFileGivesNullAndTwoMessages) {
    lookedUp("<modal>\n<k>text</k>\n</modal>\n", "k");
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    EXPECT_EQ(lang.getvalue("/nowhere/dutch.xml", "k", "modal"), nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "/nowhere/dutch.xml: file cannot be opened\n");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "No such file or directory\n");
    EXPECT_STREQ(ret, "text");
    EXPECT_STREQ(wret, L"");

    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    EXPECT_EQ(getLangvalue("/proc/self/stat/x", "k", "modal"), nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "/proc/self/stat/x: file cannot be opened\n");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Not a directory\n");
}

TEST_F(Lookup, ADirectoryHoldsNoText) {
    EXPECT_STREQ(lang.getvalue("/proc", "k", "modal"), L"<NOTAG>");
}

TEST_F(Lookup, SearchesLongLinesInPiecesOf254Bytes) {
    const std::string before(240, '.');
    // The tags lie in the second piece, the text before them in the first.
    EXPECT_EQ(lookedUp("<modal>\n" + before + before + "<k>text</k>\n</modal>\n", "k"), L"text");
    // The opening tag lies across both: not found here, but in a line of up to 1023 bytes.
    const std::string across = "<modal>\n" + std::string(253, '.') + "<k>text</k>\n</modal>\n";
    EXPECT_EQ(lookedUp(across, "k"), L"text") << "the text before";
    forgetLookups();
    EXPECT_EQ(lookedUp(across, "k"), L"<NOTAG>");
    EXPECT_EQ(lookedUpWide(across, "k"), L"text");
    EXPECT_EQ(lookedUpWide("<modal>\n" + std::string(1022, '.') + "<j>text</j>\n</modal>\n", "j"), L"text") << "before";
}

TEST_F(Lookup, TheLongestTextOfOneLineComesWhole) {
    const std::string text(247, 'x'); // with <k>, </k> and no line end in its piece: 254 bytes
    EXPECT_EQ(lookedUp("<modal>\n<k>" + text + "</k>\n</modal>\n", "k"), std::wstring(247, L'x'));
}

TEST_F(Lookup, LongerTextsAreCutAt254Bytes) {
    const std::string line = std::string(99, 'x') + "\n";
    const std::string file = "<modal>\n<k>" + line + line + line + "end</k>\n</modal>\n";
    const std::string gathered = (line + line + line).substr(0, 254);
    EXPECT_EQ(lookedUp(file, "k"), std::wstring(gathered.begin(), gathered.end()));
    EXPECT_EQ(std::strlen(ret), 254U);
    EXPECT_EQ(lookedUpWide("<modal>\n<k>" + std::string(500, 'y') + "</k>\n", "k"), std::wstring(254, L'y'));
    EXPECT_EQ(lookedUpWide("<modal>\n<j>a\n" + std::string(900, 'z') + "\n", "j"), std::wstring(254, L'z'));
}

TEST_F(Lookup, ACutInsideACharacterLeavesThatCharacterOut) {
    std::string text(253, 'x');
    text += "\xC3\xA9";
    EXPECT_EQ(lookedUpWide("<modal>\n<k>" + text + "</k>\n", "k"), std::wstring(253, L'x'));
}

TEST_F(Lookup, NamesOfAnyLengthAreSafe) {
    const std::string name(5000, 'k');
    EXPECT_EQ(lookedUp("<modal>\n<" + name + ">text</" + name + ">\n</modal>\n", name), L"<NOTAG>");
    EXPECT_EQ(lookedUp("<modal>\n<k>text</k>\n</modal>\n", "k", name), L"<NOTAG>");
    const std::string longest(120, 'k'); // both tags and the text in one piece of a line
    EXPECT_EQ(lookedUp("<modal>\n<" + longest + ">text</" + longest + ">\n</modal>\n", longest), L"text");
}

TEST(LanguageSetting, NamesTheFile) {
    restartFakeSettings();
    fakeSettings().working[1]["Language"] = "dutch";
    lang.refresh();
    EXPECT_STREQ(lang.language, "dutch");
    EXPECT_STREQ(lang.file, "/ostrel/dutch.xml");
    fakeSettings().working[1]["Language"] = "greek";
    EXPECT_STREQ(lang.file, "/ostrel/dutch.xml") << "read by refresh only";
    const Languages another;
    EXPECT_STREQ(another.file, "/ostrel/greek.xml");
}

TEST(LanguageSetting, ThatCannotBeReadIsEmpty) {
    restartFakeSettings();
    lang.refresh();
    EXPECT_STREQ(lang.language, "");
    EXPECT_STREQ(lang.file, "/ostrel/.xml");
}

TEST(LanguageSetting, LongerThanItsFieldIsCutAndRunsOverNothing) {
    restartFakeSettings();
    fakeSettings().working[1]["Language"] = std::string(1023, 'x');
    struct {
        Languages languages;
        char guard[16];
    } place = {};
    EXPECT_EQ(std::string(place.languages.language), std::string(179, 'x'));
    EXPECT_EQ(std::string(place.languages.file), "/ostrel/" + std::string(171, 'x'));
    EXPECT_EQ(std::string(place.guard, 16), std::string(16, '\0'));
}

TEST(LanguageSetting, DecidesWhichFileGetLooksInto) {
    restartFakeSettings();
    fakeSettings().working[1]["Language"] = "no such language";
    lang.refresh();
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    EXPECT_EQ(lang.get("savingl1", "modal"), nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "/ostrel/no such language.xml: file cannot be opened\n");
    testing::internal::GetCapturedStderr();

    const LanguageTextFile file("<modal>\n<savingl1>Saving</savingl1>\n</modal>\n");
    std::strcpy(lang.file, file.path().c_str());
    char key[] = "savingl1";
    EXPECT_STREQ(lang.get(key, "modal"), L"Saving");
}

} // namespace
