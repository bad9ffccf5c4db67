#include "assets/check/language_rules.h"
#include "tests/support/language_file.h"
#include "tests/support/staged_fonts.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

using namespace ostrel;

namespace {

const std::vector<TextName> TWO_TEXTS = {{"greetings", "hello"}, {"greetings", "bye"}};

// What is to be put right in a file that should have the texts of TWO_TEXTS, one finding a line.
std::string findings(const std::string& bytes, const std::vector<TextName>& reference = TWO_TEXTS) {
    const LanguageTextFile file(bytes);
    std::string text;
    for (const Finding& finding : checkLanguageFile(file.path(), bytes, reference))
        text += std::to_string(finding.line) + ": " + finding.key + ": " + finding.message + "\n";
    return text;
}

std::string greetings(const std::string& entries) {
    return "<greetings>\n" + entries + "</greetings>\n";
}

const std::string HELLO = "<hello>Good day</hello>\n";
const std::string BYE = "<bye>See you</bye>\n";

std::string message(const std::string& key, const std::string& text) {
    std::string entries;
    for (const auto& [section, name] : toolkitTexts())
        if (section == "modal")
            entries.append("<").append(name).append(">").append(name == key ? text : "x").append("</").append(name) +=
                ">\n";
    return "<language>\n<name>x</name>\n</language>\n<modal>\n" + entries + "</modal>\n";
}

TEST(LanguageCheck, FindsNothingWrongWithAGoodFile) {
    EXPECT_EQ(findings(greetings(HELLO + BYE)), "");
    EXPECT_EQ(
        findings(
            "<?xml version=\"1.0\"?>\n<!-- a\nremark -->\n<texts>\n" + greetings(HELLO + "\n" + BYE) + "</texts>\n"),
        "");
    EXPECT_EQ(findings(greetings("<hello>Good\nday</hello>\n<!-- say -->\n" + BYE)), "");
    EXPECT_EQ(findings(message("savingl1", "Saving"), toolkitTexts()), "");
}

TEST(LanguageCheck, FindsMissingAndUnknownTexts) {
    EXPECT_EQ(findings(greetings(HELLO)), "1: bye: missing from section greetings\n");
    EXPECT_EQ(
        findings(greetings(HELLO + "<good>x</good>\n" + BYE)),
        "3: good: unknown: no program asks for it in section greetings\n");
    EXPECT_EQ(
        findings("<other>\n" + HELLO + "</other>\n", {{"greetings", "hello"}}),
        "2: hello: unknown: no program asks for it in section other\n3: hello: missing from section greetings\n");
    EXPECT_EQ(findings("", {{"greetings", "hello"}}), "0: hello: missing from section greetings\n");
}

TEST(LanguageCheck, FindsDoubledTexts) {
    EXPECT_EQ(findings(greetings(HELLO + BYE + HELLO)), "4: hello: doubled: line 2 has it already\n");
}

TEST(LanguageCheck, FindsUnclosedTexts) {
    EXPECT_EQ(findings(greetings("<hello>Good day<hello>\n" + BYE)), "2: hello: <hello> is never closed\n");
    EXPECT_EQ(findings(greetings(HELLO + "<bye>See\n")), "3: bye: <bye> is never closed\n");
}

TEST(LanguageCheck, FindsUnclosedSectionsAndStrayClosingTags) {
    EXPECT_EQ(findings("<greetings>\n" + HELLO + BYE), "1: : the section <greetings> is never closed\n");
    EXPECT_EQ(
        findings(greetings(HELLO + "</bye>\n" + BYE) + "</other>\n"),
        "3: : </bye> closes nothing\n6: : </other> closes nothing\n");
}

TEST(LanguageCheck, FindsTextWhereTheLookupDoesNotLook) {
    EXPECT_EQ(
        findings("lost\n<greetings> lost\nlost\n" + HELLO + "lost " + BYE + "</greetings>\n"),
        "1: : text outside of a section\n2: : nothing behind <greetings> on its own line is found\n"
        "3: : text outside of an entry\n5: : text outside of an entry\n");
    EXPECT_EQ(
        findings(greetings("<hello>Good day</hello><bye>See you</bye>\n")),
        "1: bye: missing from section greetings\n2: hello: nothing behind </hello> on its line is found\n");
}

TEST(LanguageCheck, FindsTagsInsideOtherLines) {
    EXPECT_EQ(
        findings(greetings("<hello>say <bye> too</hello>\n" + BYE)),
        "2: bye: its tag occurs in this line, which belongs to another text\n"
        "3: bye: is found as \" too</hello>\n<bye>See you\"\n");
    EXPECT_EQ(
        findings(greetings(HELLO + "<bye>\n<hello>\n</bye>\n")),
        "4: hello: its tag occurs in this line, which belongs to another text\n");
    EXPECT_EQ(
        findings("<!-- <greetings> -->\n" + greetings(HELLO + "<bye>a</greetings>b</bye>\n")),
        "1: : contains <greetings>: the section would begin here\n"
        "4: : contains </greetings>: the section would end here\n");
}

TEST(LanguageCheck, AsksTheRoutersOwnLookupLast) {
    // The key of one section, behind a comment's tag in it: nothing of the above, yet not found.
    EXPECT_EQ(
        findings(greetings("<!-- </greetings> -->\n" + HELLO + BYE)),
        "2: : contains </greetings>: the section would end here\n3: hello: is found as \"<NOTAG>\"\n"
        "4: bye: is found as \"<NOTAG>\"\n");
}

TEST(LanguageCheck, FindsALastLineThatWouldBeCutWrongly) {
    EXPECT_EQ(
        findings(greetings("<hello>Good\nday</hello> \n" + BYE)),
        "2: hello: is found as \"Good\nday<\"\n3: hello: the last line of a text must end with </hello> and the line "
        "end\n");
}

TEST(LanguageCheck, FindsCarriageReturnsOnce) {
    EXPECT_EQ(
        findings("<greetings>\r\n<hello>x</hello>\r\n<bye>y</bye>\r\n</greetings>\r\n"),
        "1: : line ends must be a line feed alone, without a carriage return\n");
}

TEST(LanguageCheck, FindsBytesThatAreNotUtf8) {
    EXPECT_EQ(
        findings(greetings("<hello>a\x80z\xC3</hello>\n" + BYE)),
        "2: : byte 9 of the line is not UTF-8\n2: : byte 11 of the line is not UTF-8\n");
    EXPECT_EQ(
        findings(greetings(HELLO + "<bye>\xC0\xAF</bye>\n")),
        "3: : byte 6 of the line is not UTF-8\n3: : byte 7 of the line is not UTF-8\n");
}

TEST(LanguageCheck, FindsTextsAndLinesPastTheLimits) {
    const std::string longest(241, 'x'); // with its tags and the line end 255 bytes: one too many
    EXPECT_EQ(findings(greetings("<hello>" + longest.substr(1, 238) + "</hello>\n" + BYE)), "");
    EXPECT_EQ(
        findings(greetings("<hello>" + longest.substr(0, 239) + "</hello>\n" + BYE)),
        "2: : the line has 255 bytes; from 255 on it is read in pieces\n");
    const std::string line = std::string(126, 'x') + "\n";
    EXPECT_EQ(findings(greetings("<hello>" + line + line + "</hello>\n" + BYE)), "");
    EXPECT_EQ(
        findings(greetings("<hello>" + line + line + "x</hello>\n" + BYE)),
        "2: hello: the text has 255 bytes; it is cut after 254\n");
    EXPECT_EQ(findings(greetings("<hello></hello>\n" + BYE)), "2: hello: the text is empty\n");
}

TEST(LanguageCheck, FindsCharactersThatTheFontLacks) {
    EXPECT_EQ(findings(greetings("<hello>Ж Ω é €</hello>\n" + BYE)), "");
    EXPECT_EQ(
        findings(greetings("<hello>\u4F60\u597D\u4F60\t</hello>\n" + BYE)),
        "2: hello: the font lacks U+4F60, U+597D, U+0009\n");
}

TEST(LanguageCheck, FindsLinesTooLongForTheMessageBox) {
    // Many narrow characters are too many before they are too wide; others the other way round.
    EXPECT_EQ(
        findings(message("savingl2", std::string(60, '.')), toolkitTexts()),
        "15: savingl2: 60 characters; a line takes 59\n15: savingl2: 240 pixels wide; the message box has 124\n");
    EXPECT_EQ(
        findings(message("savingl1", "Saving your settings now"), toolkitTexts()),
        "14: savingl1: 143 pixels wide; the message box has 124\n");
    // A limit is put behind these, with a blank.
    EXPECT_EQ(findings(message("valid_ip_l2", "1234567890123456"), toolkitTexts()), "");
    EXPECT_NE(
        findings(message("more_than_2_l2", "1234567890123456"), toolkitTexts())
            .find("with \" 179\" behind it; the message box has 124"),
        std::string::npos);
}

TEST(LanguageCheck, ReportsInTheOrderOfTheLines) {
    const std::string text = findings(greetings("<bye></bye>\n<bye>x</bye>\n<nobody>x</nobody>\n"));
    EXPECT_EQ(
        text,
        "1: hello: missing from section greetings\n2: bye: the text is empty\n"
        "3: bye: doubled: line 2 has it already\n4: nobody: unknown: no program asks for it in section greetings\n");
}

TEST(ShippedLanguages, HaveNothingToPutRight) {
    int files = 0;
    for (const auto& item : std::filesystem::directory_iterator(OSTREL_LANGUAGES)) {
        if (item.path().extension() != ".xml")
            continue;
        ++files;
        std::ifstream file(item.path());
        const std::string bytes(std::istreambuf_iterator<char>(file), {});
        std::vector<TextName> reference = toolkitTexts();
        std::ifstream english(std::string(OSTREL_LANGUAGES) + "/english.xml");
        for (const LanguageEntry& entry :
             readLanguageFile(std::string(std::istreambuf_iterator<char>(english), {})).entries)
            if (entry.section != "modal")
                reference.emplace_back(entry.section, entry.key);
        for (const Finding& finding : checkLanguageFile(item.path(), bytes, reference))
            ADD_FAILURE() << item.path() << ":" << finding.line << ": " << finding.key << ": " << finding.message;
    }
    EXPECT_GE(files, 10);
}

} // namespace
