#include "simulator/png_file.h"
#include "simulator/script_player.h"
#include "tests/unit/simulator/stream_reader.h"
#include "tests/unit/simulator/temporary_directory.h"

#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

using namespace ostrel;

namespace {

// A program that asks for the pen only when the test says so.
class ScriptPlayerTest : public testing::Test {
  protected:
    ScriptPlayerTest() {
        EXPECT_EQ(mkfifo(directory.file("event0").c_str(), 0600), 0);
        const Descriptor framebuffer(open(directory.file("fb0").c_str(), O_RDWR | O_CREAT, 0600));
        EXPECT_EQ(ftruncate(framebuffer.get(), 153600), 0);
        page.programs = 1;
        stream.emplace(directory.file("event0"), Bits::Unknown, loop, page);
        panel.emplace(directory.file("fb0"), page);
        reader.emplace(directory.file("event0"));
    }

    void play(const std::string& text, int patienceMs = 1000000) {
        player.emplace(parseScript("t", text), loop, *stream, *panel, directory.path);
        player->play(1.0, patienceMs, [this](const std::string& failure) { end = "ended: " + failure; });
    }

    // The loop has had its turn, several times.
    void settle() {
        for (int i = 0; i < 20; ++i)
            loop.runOnce(1);
    }

    // The program asks, and reads what it gets.
    std::string ask() {
        page.waiting = 1;
        settle();
        return reader->read();
    }

    TemporaryDirectory directory;
    EventLoop loop;
    SharedPage page = {};
    std::optional<TouchStream> stream;
    std::optional<Panel> panel;
    std::optional<StreamReader> reader;
    std::optional<ScriptPlayer> player;
    std::string end = "playing";
};

TEST_F(ScriptPlayerTest, SendsEachPartOfAStrokeWhenTheProgramAsks) {
    play("tap 10 20\npress 30 40\nmove 31 41\nrelease");
    settle();
    EXPECT_EQ(reader->read(), "");
    EXPECT_EQ(ask(), "X10 Y20 down |");
    settle();
    EXPECT_EQ(reader->read(), ""); // the program is busy with the press
    EXPECT_EQ(ask(), "up |");
    EXPECT_EQ(ask(), "X30 Y40 down |");
    EXPECT_EQ(ask(), "X31 Y41 |");
    EXPECT_EQ(ask(), "up |");
    EXPECT_EQ(end, "playing");
    EXPECT_EQ(ask(), ""); // the program is done with the last touch
    EXPECT_EQ(end, "ended: ");
}

TEST_F(ScriptPlayerTest, TakesThePictureOfATouchWhenTheProgramIsDoneWithIt) {
    const std::string picture = directory.file("a.png");
    play("tap 10 20\nshot " + picture + "\nquit");
    ask();
    ask();
    settle();
    EXPECT_FALSE(std::filesystem::exists(picture));
    ask();
    EXPECT_TRUE(std::filesystem::exists(picture));
    EXPECT_EQ(end, "ended: ");
}

TEST_F(ScriptPlayerTest, TakesAPictureAfterAWaitWithoutAsking) {
    const std::string picture = directory.file("a.png");
    play("wait 0\nshot " + picture + "\nquit");
    settle();
    EXPECT_TRUE(std::filesystem::exists(picture));
    EXPECT_EQ(end, "ended: ");
}

// As long as the program works, the person at the panel has nothing to look at yet.
TEST_F(ScriptPlayerTest, BeginsAPauseWhenTheProgramAsks) {
    play("pause 0\nquit");
    settle();
    EXPECT_EQ(end, "playing");
    ask();
    EXPECT_EQ(end, "ended: ");
    play("pause 1000000\nquit");
    end = "playing";
    ask();
    EXPECT_EQ(end, "playing");
}

TEST_F(ScriptPlayerTest, SendsNothingToAProgramThatHasCeasedToLook) {
    page.glances = 9;
    play("tap 10 20");
    settle();
    EXPECT_EQ(reader->read(), "");
    page.glances = 10;
    settle();
    EXPECT_EQ(reader->read(), "X10 Y20 down |");
}

TEST_F(ScriptPlayerTest, GivesUpOnAProgramThatNeverAsks) {
    play("wait 0\ntap 1 1", 5);
    settle();
    EXPECT_EQ(end, "ended: t:2: the program has not asked for the pen for 0.005 s");
}

TEST_F(ScriptPlayerTest, NamesTheLineOfAPictureThatCannotBeSaved) {
    play("wait 0\nshot " + directory.file("missing/a.png"));
    settle();
    EXPECT_EQ(
        end, "ended: t:2: cannot write " + directory.file("missing/a.png") +
                 ": No such file or directory; make its directory first");
}

TEST_F(ScriptPlayerTest, FailsWhenTheProgramEndsTooEarly) {
    play("tap 1 1\nquit");
    EXPECT_EQ(
        player->programEnded({0, "gallery exited with status 0"}),
        "t:1: gallery exited with status 0 before 'tap 1 1' was done");
    ask();
    EXPECT_EQ(end, "playing"); // told by programEnded, not twice
}

TEST_F(ScriptPlayerTest, DoesNotSayWhichSecretItWaitedForWhenTheProgramEnds) {
    play("expect-setting 1 PIN 4711 0815\nquit");
    EXPECT_EQ(
        player->programEnded({0, "gallery exited with status 0"}),
        "t:1: gallery exited with status 0 before 'expect-setting 1 PIN' was done");
}

TEST_F(ScriptPlayerTest, DoesNotMindAProgramThatEndsAfterTheLastTouch) {
    play("tap 1 1");
    ask();
    ask();
    settle();
    EXPECT_EQ(player->programEnded({0, "gallery exited with status 0"}), "");
}

TEST_F(ScriptPlayerTest, WaitsForADarkPanel) {
    play("expect-dark\nquit");
    settle();
    EXPECT_EQ(end, "playing");
    page.backlightOff = 1;
    settle();
    EXPECT_EQ(end, "ended: ");
}

TEST_F(ScriptPlayerTest, WaitsForAPicture) {
    Picture white(76800, 0xFFFF);
    writePng(directory.file("white.png"), white);
    play("expect " + directory.file("white.png") + "\nquit");
    settle();
    EXPECT_EQ(end, "playing");
    const Descriptor framebuffer(open(directory.file("fb0").c_str(), O_WRONLY));
    EXPECT_EQ(pwrite(framebuffer.get(), white.data(), 153600, 0), 153600);
    settle();
    EXPECT_EQ(end, "ended: ");
}

TEST_F(ScriptPlayerTest, NamesThePixelsOfAWrongPictureAndSavesThem) {
    std::filesystem::current_path(directory.path);
    Picture expected(76800);
    expected[320 * 10 + 20] = 0xF800;
    expected[320 * 30 + 15] = 0xFFFF;
    std::filesystem::create_directory(directory.file("golden"));
    writePng(directory.file("golden/page.png"), expected);
    play("expect " + directory.file("golden/page.png"), 5);
    settle();
    EXPECT_EQ(
        end, "ended: t:1: 2 pixels differ from " + directory.file("golden/page.png") +
                 ", within 15,10 to 20,30; see page.expected.png, .actual.png and .difference.png");
    EXPECT_EQ(readPng("page.expected.png")[320 * 10 + 20], 0xFF0000U);
    EXPECT_EQ(readPng("page.actual.png")[320 * 10 + 20], 0U);
    EXPECT_EQ(readPng("page.difference.png")[320 * 30 + 15], 0xFF0000U);
    std::filesystem::current_path("/");
}

// How a script's first pictures come about.
TEST_F(ScriptPlayerTest, SavesThePanelWhereThereIsNoExpectedPicture) {
    std::filesystem::current_path(directory.path);
    play("tap 1 1\nexpect golden/missing.png");
    ask();
    ask();
    settle();
    EXPECT_EQ(end, "playing"); // the program is busy with the tap
    const Picture white(76800, 0xFFFF);
    const Descriptor framebuffer(open(directory.file("fb0").c_str(), O_WRONLY));
    EXPECT_EQ(pwrite(framebuffer.get(), white.data(), 153600, 0), 153600);
    ask();
    EXPECT_EQ(
        end, "ended: t:2: cannot read golden/missing.png: No such file or directory; the panel is saved as "
             "missing.actual.png: if it is right, rename it to golden/missing.png");
    EXPECT_EQ(readPng("missing.actual.png")[0], 0xFFFFFFU);
    std::filesystem::current_path("/");
}

// Its status is the simulator's own, whatever the script wants.
TEST_F(ScriptPlayerTest, IsNotPassedByAProgramThatNeverRan) {
    for (const char* script : {"exit-code 126", "expect-setting 1 Nothing", "tap 1 1", "quit"}) {
        play(script);
        EXPECT_EQ(player->programEnded({126, "cannot run gallery", false}), "cannot run gallery") << script;
    }
}

TEST_F(ScriptPlayerTest, ComparesTheProgramsStatus) {
    play("exit-code 3");
    EXPECT_TRUE(player->awaitsEnd());
    EXPECT_EQ(player->programEnded({3, "gallery exited with status 3"}), "");
    play("exit-code 3");
    EXPECT_EQ(player->programEnded({0, "gallery exited with status 0"}), "t:1: gallery exited with status 0, not 3");
    play("exit-code 0", 5);
    settle();
    EXPECT_EQ(end, "ended: t:1: the program has not ended");
}

} // namespace
