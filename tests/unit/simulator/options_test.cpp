#include "simulator/failure.h"
#include "simulator/options.h"

#include <gtest/gtest.h>

using namespace ostrel;

namespace {

using Words = std::vector<std::string>;

std::string refusal(const Words& words) {
    try {
        parseOptions(words);
        return "accepted";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.status, 2);
        return failure.what();
    }
}

TEST(Options, LeaveTheFaceToTheDisplayUnlessTheyNameOne) {
    EXPECT_EQ(parseOptions({"./gallery"}).face, Face::Unchosen);
    EXPECT_EQ(parseOptions({"--window", "./gallery"}).face, Face::Window);
    EXPECT_EQ(parseOptions({"--headless", "./gallery"}).face, Face::Headless);
}

TEST(Options, WithAScriptShowNothingUnlessAsked) {
    EXPECT_EQ(parseOptions({"--script", "x", "./gallery"}).face, Face::Headless);
    EXPECT_EQ(parseOptions({"--script=x", "--web", "./gallery"}).face, Face::Web);
}

TEST(Options, EndAtTheProgram) {
    EXPECT_EQ(
        parseOptions({"--fresh", "./gallery", "--headless", "-x"}).program, (Words{"./gallery", "--headless", "-x"}));
    EXPECT_EQ(parseOptions({"--", "--odd"}).program, (Words{"--odd"}));
    EXPECT_EQ(parseOptions({"-"}).program, (Words{"-"}));
}

TEST(Options, TakeTheirValues) {
    const Options options =
        parseOptions({"--web=8080", "--state", "/tmp/x", "--speed=2.5", "--patience", "0.5", "--verbose", "p"});
    EXPECT_EQ(options.port, 8080);
    EXPECT_EQ(options.state, "/tmp/x");
    EXPECT_EQ(options.speed, 2.5);
    EXPECT_EQ(options.patienceMs, 500);
    EXPECT_TRUE(options.verbose);
    EXPECT_FALSE(options.fresh);
}

TEST(Options, ForOtherMachinesAreForTheWebPanel) {
    const Options options = parseOptions({"--address", "192.168.1.20", "--password-file", "secret", "--script=x", "p"});
    EXPECT_EQ(options.face, Face::Web);
    EXPECT_EQ(options.address.text(), "192.168.1.20");
    EXPECT_EQ(options.passwordFile, "secret");
    EXPECT_EQ(parseOptions({"p"}).address.text(), "127.0.0.1");
    EXPECT_EQ(parseOptions({"--address=[::]", "--password-file=secret", "p"}).address.text(), "::");
}

TEST(Options, LetOnlyThisMachineInWithoutAPassword) {
    for (const char* own : {"127.0.0.1", "127.1.2.3", "::1", "[::1]"})
        EXPECT_EQ(parseOptions({"--address", own, "p"}).face, Face::Web) << own;
    for (const char* other : {"0.0.0.0", "::", "192.168.1.20", "128.0.0.1", "::ffff:127.0.0.1", "fd00::2"})
        EXPECT_EQ(
            refusal({"--address", other, "p"}),
            std::string("--address ") + other +
                " lets other machines touch the panel: add --password-file FILE; see ostrel-sim --help");
}

TEST(Options, RefuseWhatMakesNoSense) {
    const struct {
        Words words;
        const char* sentence;
    } cases[] = {
        {{}, "which program? ostrel-sim [options] PROGRAM [ARGUMENTS]"},
        {{"--frob", "p"}, "there is no option --frob"},
        {{"-x", "p"}, "there is no option -x"},
        {{"--headles", "p"}, "there is no option --headles (did you mean --headless?)"},
        {{"--sciprt=x", "p"}, "there is no option --sciprt (did you mean --script?)"},
        {{"-verbose", "p"}, "there is no option -verbose (did you mean --verbose?)"},
        {{"-h"}, "there is no option -h (did you mean --help?)"},
        {{"--state"}, "--state needs DIR"},
        {{"--state=", "p"}, "--state needs DIR"},
        {{"--state", "", "p"}, "--state needs DIR"},
        {{"--fresh=yes", "p"}, "--fresh takes no value"},
        {{"--web=0", "p"}, "--web needs a number from 1 to 65535, not '0'"},
        {{"--web=65536", "p"}, "--web needs a number from 1 to 65535, not '65536'"},
        {{"--web=80.5", "p"}, "--web needs a whole number, not '80.5'"},
        {{"--web=http", "p"}, "--web needs a number from 1 to 65535, not 'http'"},
        {{"--speed=0", "p"}, "--speed needs a number from 0.01 to 1000, not '0'"},
        {{"--speed=nan", "p"}, "--speed needs a number from 0.01 to 1000, not 'nan'"},
        {{"--address", "desk", "p"},
         "--address needs an IP address such as 192.168.1.20, or 0.0.0.0 for all, not 'desk'"},
        {{"--address=fe80::1", "p"},
         "--address needs an IP address such as 192.168.1.20, or 0.0.0.0 for all, not 'fe80::1'"},
        {{"--password-file"}, "--password-file needs FILE"},
        {{"--headless", "--password-file=x", "p"}, "--address and --password-file are for the web panel, --web"},
        {{"--headless", "--web", "p"}, "--headless, --web and --window exclude each other"},
        {{"--window", "--web", "p"}, "--headless, --web and --window exclude each other"},
    };
    for (const auto& [words, sentence] : cases)
        EXPECT_EQ(refusal(words), std::string(sentence) + "; see ostrel-sim --help");
}

TEST(Options, HelpAndVersionNeedNoProgram) {
    EXPECT_TRUE(parseOptions({"--help"}).help);
    EXPECT_TRUE(parseOptions({"--version"}).version);
}

TEST(Options, HelpFitsATerminal) {
    const std::string help = helpText();
    int lines = 0;
    for (size_t begin = 0, end = 0; (end = help.find('\n', begin)) != std::string::npos; begin = end + 1) {
        EXPECT_LE(end - begin, 80U) << help.substr(begin, end - begin);
        ++lines;
    }
    EXPECT_LE(lines, 23); // and the prompt
}

} // namespace
