#include "simulator/failure.h"
#include "simulator/junit.h"
#include "tests/unit/simulator/temporary_directory.h"

#include <fstream>
#include <gtest/gtest.h>
#include <iterator>

using namespace ostrel;

namespace {

std::string messageOf(const std::string& message) {
    const std::string text = junitText("s", 0, {{"n", 0, Outcome::Failed, message}});
    const size_t begin = text.find("message=\"") + 9;
    return text.substr(begin, text.find('"', begin) - begin);
}

TEST(Junit, ListsEveryCheckAndItsOutcome) {
    EXPECT_EQ(
        junitText(
            "gallery", 2.5,
            {{"t:1: expect a.png", 0.25, Outcome::Passed, ""},
             {"t:2: expect-dark", 30, Outcome::Failed, "the panel is not dark"},
             {"end of the run", 0, Outcome::NotReached, ""}}),
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<testsuites tests=\"3\" failures=\"1\" errors=\"0\" time=\"2.500\">\n"
        "<testsuite name=\"gallery\" tests=\"3\" failures=\"1\" errors=\"0\" skipped=\"1\" time=\"2.500\">\n"
        "  <testcase classname=\"gallery\" name=\"t:1: expect a.png\" time=\"0.250\"/>\n"
        "  <testcase classname=\"gallery\" name=\"t:2: expect-dark\" time=\"30.000\">\n"
        "    <failure message=\"the panel is not dark\"/>\n"
        "  </testcase>\n"
        "  <testcase classname=\"gallery\" name=\"end of the run\" time=\"0.000\">\n"
        "    <skipped message=\"not reached\"/>\n"
        "  </testcase>\n"
        "</testsuite>\n"
        "</testsuites>\n");
}

TEST(Junit, EscapesWhatXmlWouldMisunderstand) {
    EXPECT_EQ(messageOf("a<b>&c 'd'"), "a&lt;b&gt;&amp;c 'd'");
    EXPECT_EQ(messageOf("say \"no\""), "say &quot;no&quot;");
    EXPECT_EQ(messageOf("one\ntwo\tthree\r"), "one&#10;two&#9;three&#13;");
    EXPECT_EQ(messageOf("Größe Ελληνικά 😀"), "Größe Ελληνικά 😀");
}

TEST(Junit, ReplacesWhatXmlDoesNotAllow) {
    const std::string r = "\xEF\xBF\xBD";
    EXPECT_EQ(messageOf(std::string("a\0b\x1b\x7f", 5)), "a" + r + "b" + r + "\x7f");
    EXPECT_EQ(messageOf("\xff\x80x"), r + r + "x");
    EXPECT_EQ(messageOf("\xc3"), r);
    EXPECT_EQ(messageOf("\xe2\x82z"), r + r + "z");
    EXPECT_EQ(messageOf("\xc0\xaf"), r + r);         // overlong
    EXPECT_EQ(messageOf("\xe0\x80\xaf"), r + r + r); // overlong
    EXPECT_EQ(messageOf("\xed\xa0\x80"), r);         // a surrogate
    EXPECT_EQ(messageOf("\xef\xbf\xbf"), r);         // no character
    EXPECT_EQ(messageOf("\xf4\x90\x80\x80"), r);     // past the last one
}

TEST(Junit, RefusesAFileThatCannotBeWritten) {
    const TemporaryDirectory directory;
    try {
        JunitFile(directory.file("missing/j.xml"));
        FAIL();
    } catch (const Failure& failure) {
        EXPECT_EQ(
            failure.what(), "cannot write the test results " + directory.file("missing/j.xml") +
                                ": No such file or directory; make its directory first");
    }
    EXPECT_THROW(JunitFile("/dev/full").write("x"), Failure);
}

} // namespace
