#include "simulator/failure.h"
#include "simulator/script.h"
#include "tests/unit/simulator/temporary_directory.h"

#include <fstream>
#include <gtest/gtest.h>

using namespace ostrel;

namespace {

std::string refusal(const std::string& text) {
    try {
        parseScript("t", text);
        return "accepted";
    } catch (const Failure& failure) {
        return failure.what();
    }
}

TEST(Script, ReadsEveryCommand) {
    const Script script = parseScript(
        "t", "# a story\n"
             "tap 160 120\n"
             "\n"
             "  press 0 239   # begins a stroke\n"
             "move\t319 0\r\n"
             "release\n"
             "wait 300\n"
             "shot a page#1.png\n"
             "quit");
    ASSERT_EQ(script.commands.size(), 7U);
    EXPECT_EQ(script.commands[0].action, Action::Tap);
    EXPECT_EQ(script.commands[0].line, 2);
    EXPECT_EQ(script.commands[0].numbers[0], 160);
    EXPECT_EQ(script.commands[0].numbers[1], 120);
    EXPECT_EQ(script.commands[1].action, Action::Press);
    EXPECT_EQ(script.commands[1].line, 4);
    EXPECT_EQ(script.commands[1].source, "press 0 239");
    EXPECT_EQ(script.commands[2].action, Action::Move);
    EXPECT_EQ(script.commands[2].numbers[0], 319);
    EXPECT_EQ(script.commands[3].action, Action::Release);
    EXPECT_EQ(script.commands[4].numbers[0], 300);
    EXPECT_EQ(script.commands[5].text, "a page#1.png");
    EXPECT_EQ(script.commands[6].action, Action::Quit);
    EXPECT_EQ(script.commands[6].line, 9);
}

TEST(Script, MayBeginWithAByteOrderMark) {
    const Script script = parseScript("t", "\xEF\xBB\xBFtap 1 2\nquit\n");
    ASSERT_EQ(script.commands.size(), 2U);
    EXPECT_EQ(script.commands[0].source, "tap 1 2");
    EXPECT_EQ(parseScript("t", "\xEF\xBB\xBF").commands.size(), 0U);
    EXPECT_NE(refusal("\xEF\xBBtap 1 2"), "accepted");
}

TEST(Script, ReadsExpectations) {
    const Script script = parseScript(
        "t", "expect a.png\nexpect-dark\nexpect-setting 2 Name Living room\nexpect-setting 1 PIN\n"
             "expect-log  command umount /data # done\nexit-code 3");
    ASSERT_EQ(script.commands.size(), 6U);
    EXPECT_EQ(script.commands[0].text, "a.png");
    EXPECT_EQ(script.commands[1].action, Action::ExpectDark);
    EXPECT_EQ(script.commands[2].numbers[0], 2);
    EXPECT_EQ(script.commands[2].name, "Name");
    EXPECT_EQ(script.commands[2].text, "Living room");
    EXPECT_EQ(script.commands[3].text, ""); // an empty setting
    EXPECT_EQ(script.commands[4].text, "command umount /data");
    EXPECT_EQ(script.commands[5].numbers[0], 3);
}

TEST(Script, BeginsAWordAfterEveryKindOfBlank) {
    const Script script = parseScript("t", "shot a.png\f# one\nshot\vb#.png\v#two\nexpect-setting 1 Name\f#three");
    ASSERT_EQ(script.commands.size(), 3U);
    EXPECT_EQ(script.commands[0].text, "a.png");
    EXPECT_EQ(script.commands[1].text, "b#.png");
    EXPECT_EQ(script.commands[2].text, "");
}

TEST(Script, MayBeEmpty) {
    EXPECT_TRUE(parseScript("t", "").commands.empty());
    EXPECT_TRUE(parseScript("t", "\n# nothing\n").commands.empty());
}

TEST(Script, NamesTheLineOfAMistake) {
    const struct {
        const char* text;
        const char* sentence;
    } cases[] = {
        {"tap 1 2\nfly 1 2",
         "t:2: there is no command 'fly', only tap, press, move, release, wait, pause, shot, expect, "
         "expect-dark, expect-setting, expect-log, quit, exit-code"},
        {"tap 160", "t:1: tap needs more, as in 'tap 160 120'"},
        {"tap", "t:1: tap needs more, as in 'tap 160 120'"},
        {"tap 1 2 3", "t:1: '3' is too much, as in 'tap 160 120'"},
        {"tap a 2", "t:1: tap needs a number, not 'a', as in 'tap 160 120'"},
        {"tap 1x 2", "t:1: tap needs a number, not '1x', as in 'tap 160 120'"},
        {"tap 320 2", "t:1: x must be 0 to 319, not 320"},
        {"tap -1 2", "t:1: x must be 0 to 319, not -1"},
        {"tap 1 240", "t:1: y must be 0 to 239, not 240"},
        {"wait 99999999999999999999", "t:1: the milliseconds must be 0 to 86400000, not 99999999999999999999"},
        {"shot", "t:1: shot needs a file, as in 'shot page.png'"},
        {"expect", "t:1: expect needs a file, as in 'expect page.png'"},
        {"expect-dark now", "t:1: 'now' is too much, as in 'expect-dark'"},
        {"expect-setting 1", "t:1: expect-setting needs more, as in 'expect-setting 1 PIN 1234'"},
        {"expect-setting 3 PIN 1", "t:1: the section must be 1 to 2, not 3"},
        {"exit-code 256", "t:1: the exit status must be 0 to 255, not 256"},
        {"exit-code 0\nquit", "t:2: nothing is played after exit-code: the program has ended"},
        {"expect-log # what?", "t:1: expect-log needs more, as in 'expect-log command umount'"},
        {"quit now", "t:1: 'now' is too much, as in 'quit'"},
        {"\n\nmove 1 2", "t:3: move: the pen is up; press comes first"},
        {"release", "t:1: release: the pen is up; press comes first"},
        {"press 1 2\ntap 1 2", "t:2: tap: the pen is down already since line 1"},
        {"press 1 2\nrelease\nrelease", "t:3: release: the pen is up; press comes first"},
    };
    for (const auto& [text, sentence] : cases)
        EXPECT_EQ(refusal(text), sentence);
}

TEST(Script, IsReadFromItsFile) {
    const TemporaryDirectory directory;
    std::ofstream(directory.file("s")) << "quit\n";
    EXPECT_EQ(readScript(directory.file("s")).commands.size(), 1U);
    try {
        readScript(directory.file("missing"));
        FAIL();
    } catch (const Failure& failure) {
        EXPECT_EQ(
            failure.what(), "cannot read the script " + directory.file("missing") +
                                ": No such file or directory; check its name and its rights");
        EXPECT_EQ(failure.status, 125);
    }
    EXPECT_THROW(readScript(directory.path), Failure);
}

} // namespace
