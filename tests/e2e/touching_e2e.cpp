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
        "ostrel-sim: script:2: there is no command 'fly', only tap, press, move, release, wait, shot, quit\n");
}

} // namespace
