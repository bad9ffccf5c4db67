// Scripts that touch a real program.
#include "tests/e2e/simulator_run.h"

#include <gtest/gtest.h>

namespace {

constexpr const char* STORY = "tap 10 20\npress 100 50\nmove 110 60\nmove 120 70\nrelease\ntap 300 200\n";
constexpr const char* TOLD = "down 10 20\nup\ndown 100 50\nmove 110 60\nmove 120 70\nup\ndown 300 200\nup\n";

TEST(Script, ReachesAProgramThatWaitsForThePen) {
    const Desk desk;
    const Told run = desk.play(STORY, "follow 3");
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output, TOLD);
}

TEST(Script, ReachesAProgramThatLooksForThePenEveryTwentyMilliseconds) {
    const Desk desk;
    const Told run = desk.play(STORY, "follow 3 20");
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.output, TOLD);
}

// A second of work after each stroke: sent by the clock, the next strokes would pile up behind the program's back.
TEST(Script, WaitsForABusyProgram) {
    const Desk desk;
    const Told run = desk.play(STORY, "follow 3 0 1000");
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.output, TOLD);
}

TEST(Script, PlaysManyTapsWithoutLosingOne) {
    const Desk desk;
    std::string script;
    std::string told;
    for (int i = 0; i < 200; ++i) {
        const std::string at = std::to_string(i) + " " + std::to_string(239 - i);
        script += "tap " + at + "\n";
        told += "down " + at + "\nup\n";
    }
    const Told run = desk.play(script, "follow 200");
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(run.output, told);
}

TEST(Script, TakesPicturesOfWhatATouchDid) {
    const Desk desk;
    const Told run = desk.play("shot before.png\ntap 100 100\nshot after.png\nquit\n", "follow 9 0 50");
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_NE(contentOf(desk.file("before.png")), "");
    EXPECT_NE(contentOf(desk.file("after.png")), contentOf(desk.file("before.png")));
}

TEST(Script, EndsTheProgramAtItsEnd) {
    const Desk desk;
    const Told run = desk.play("tap 1 2\n", "follow 9");
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(run.output, "down 1 2\nup\n");
}

TEST(Script, FailsWhenTheProgramEndsFirst) {
    const Desk desk;
    const Told run = desk.play("tap 1 2\n\ntap 3 4\n", "follow 1");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.errors, "ostrel-sim: script:3: probe exited with status 0 before 'tap 3 4' was done\n");
}

TEST(Script, FailsWhenTheProgramNeverAsks) {
    const Desk desk;
    desk.write("script", "tap 1 2\n");
    const Told run = desk.run("--script script --patience 0.2 sleep 60");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.errors, "ostrel-sim: script:1: the program has not asked for the pen for 0.2 s\n");
}

TEST(Script, WithAMistakeStartsNothing) {
    const Desk desk;
    const Told run = desk.play("tap 1 2\nfly\n", "follow 1");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(
        run.errors,
        "ostrel-sim: script:2: there is no command 'fly', only tap, press, move, release, wait, pause, shot, "
        "expect, expect-dark, expect-setting, expect-log, quit, exit-code\n");
}

TEST(Script, ChecksThePanelTheSettingsAndTheEnd) {
    const Desk desk;
    EXPECT_EQ(desk.play("shot page.png\n", "follow 1").status, 0);
    const char* story = "expect page.png\nexpect-setting 1 Language english\nexpect-setting 2 ScreenTimeout 300\n"
                        "expect-setting 1 nothing\ntap 5 5\nexit-code 0\n";
    const Told good = desk.play(story, "follow 1");
    EXPECT_EQ(good.errors, "");
    EXPECT_EQ(good.status, 0);
    const Told bad = desk.play("tap 100 100\nexpect page.png\n", "follow 9", "--patience 10");
    EXPECT_EQ(bad.status, 1);
    EXPECT_NE(bad.errors.find("script:2: "), std::string::npos) << bad.errors;
    EXPECT_TRUE(std::filesystem::exists(desk.file("page.difference.png")));
    const Told wrong = desk.play("expect-setting 1 Language klingon\n", "follow 9", "--patience 0.2");
    EXPECT_EQ(wrong.errors, "ostrel-sim: script:1: setting Language of section 1 has another value\n");
}

// What a program leaves to the background is done some time later.
TEST(Script, WaitsForALineOfTheLog) {
    const Desk desk;
    desk.write("script", "expect-log command init_system restart\nquit\n");
    const Told run =
        desk.run("--script script sh -c '(sleep 0.5; init_system restart) & '\"'" OSTREL_PROBE "'\"' follow 1'");
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.status, 0);
    const Told other = desk.run("--script script --patience 0.2 '" OSTREL_PROBE "' follow 1");
    EXPECT_EQ(other.errors, "ostrel-sim: script:1: the log has no line with 'command init_system restart'\n");
    EXPECT_EQ(other.status, 1);
}

TEST(Script, CanExpectAFailingProgram) {
    const Desk desk;
    desk.write("script", "exit-code 134\n");
    EXPECT_EQ(desk.run("--script script '" OSTREL_PROBE "' crash").errors, "");
    EXPECT_EQ(desk.run("--script script '" OSTREL_PROBE "' crash").status, 0);
    const Told other = desk.run("--script script sh -c 'exit 3'");
    EXPECT_EQ(other.status, 1);
    EXPECT_EQ(other.errors, "ostrel-sim: script:1: sh exited with status 3, not 134\n");
}

} // namespace
