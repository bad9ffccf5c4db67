// The results of a run as a CI reads them.
#include "tests/e2e/family.h"
#include "tests/e2e/simulator_run.h"

#include <gtest/gtest.h>

namespace {

class Results : public testing::Test {
  protected:
    // What an XML parser finds in the file.
    std::string summary() const {
        const Told told = desk.shell("python3 '" OSTREL_JUNIT_SUMMARY "' j.xml");
        EXPECT_EQ(told.errors, "") << contentOf(desk.file("j.xml"));
        return told.output;
    }

    Desk desk;
};

TEST_F(Results, HaveACaseForEachExpectationAndTheEnd) {
    EXPECT_EQ(desk.play("shot page.png\n", "follow 1").status, 0);
    const Told run = desk.play(
        "expect page.png\nexpect-setting 1 Language english\nexpect-log starts\ntap 5 5\nexit-code 0\n", "follow 1",
        "--junit j.xml");
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(
        summary(), "suite probe\n"
                   "passed | script:1: expect page.png | \n"
                   "passed | script:2: expect-setting 1 Language | \n"
                   "passed | script:3: expect-log starts | \n"
                   "passed | end of the run | \n");
}

TEST_F(Results, TellWhatFailedAndWhatWasNotReached) {
    const Told run =
        desk.play("expect-log <&> \"\x01\xff\"\nexpect-dark\n", "follow 1", "--patience 0.2 --junit j.xml");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(
        summary(), "suite probe\n"
                   "failure | script:1: expect-log <&> \"\xEF\xBF\xBD\xEF\xBF\xBD\" | the log has no line with '<&> "
                   "\"\xEF\xBF\xBD\xEF\xBF\xBD\"'\n"
                   "skipped | script:2: expect-dark | \n"
                   "skipped | end of the run | \n");
}

TEST_F(Results, TellOfACommandThatFailed) {
    EXPECT_EQ(desk.play("tap 1 2\ntap 3 4\nexpect-dark\n", "follow 1", "--junit j.xml").status, 1);
    EXPECT_EQ(
        summary(), "suite probe\n"
                   "skipped | script:3: expect-dark | \n"
                   "failure | end of the run | script:2: probe exited with status 0 before 'tap 3 4' was done\n");
}

TEST_F(Results, TellOfACrashAMistakeAndAProgramThatIsMissing) {
    EXPECT_EQ(desk.run("--headless --junit j.xml sh -c 'kill -KILL $$'").status, 137);
    EXPECT_EQ(summary(), "suite sh\nfailure | end of the run | sh was ended by signal 9 (Killed)\n");
    EXPECT_EQ(desk.play("fly\n", "follow 1", "--junit j.xml").status, 1);
    EXPECT_NE(summary().find("failure | end of the run | script:1: there is no command 'fly'"), std::string::npos);
    EXPECT_EQ(desk.run("--headless --junit j.xml ./none").status, 127);
    EXPECT_EQ(
        summary(), "suite none\nfailure | end of the run | there is no program ./none: No such file or directory\n");
    EXPECT_EQ(desk.run("--headless --junit j.xml true").status, 0);
    EXPECT_EQ(summary(), "suite true\npassed | end of the run | \n");
}

TEST_F(Results, AreWrittenWhenASignalEndsTheSimulator) {
    desk.write("script", "expect-dark\n");
    Family family(
        "cd '" + desk.directory.path +
        "' && OSTREL_ASSETS=assets exec '" OSTREL_SIM
        "' --state state --script script --patience 1000 --junit j.xml sh -c \"echo > '" +
        desk.file("ready") + "'; sleep 1000\" 2> errors");
    ASSERT_TRUE(soon([&] { return std::filesystem::exists(desk.file("ready")); }));
    kill(family.head, SIGTERM);
    EXPECT_TRUE(family.isGone());
    EXPECT_EQ(family.status, 143);
    EXPECT_EQ(
        summary(), "suite sh\n"
                   "skipped | script:1: expect-dark | \n"
                   "failure | end of the run | the simulator was ended by signal 15 (Terminated)\n");
}

TEST_F(Results, ThatCannotBeWrittenAreRefusedBeforeTheProgramStarts) {
    const Told run = desk.run("--headless --junit missing/j.xml sh -c 'echo started'");
    EXPECT_EQ(run.status, 125);
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(
        run.errors, "ostrel-sim: cannot write the test results missing/j.xml: No such file or directory; make its "
                    "directory first\n");
}

} // namespace
