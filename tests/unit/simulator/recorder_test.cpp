#include "simulator/clock.h"
#include "simulator/recorder.h"
#include "tests/unit/simulator/stream_reader.h"
#include "tests/unit/simulator/temporary_directory.h"

#include <fcntl.h>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

using namespace ostrel;

namespace {

// Somebody touches a program that asks for the pen only when the test says so.
class RecorderTest : public testing::Test {
  protected:
    RecorderTest() {
        EXPECT_EQ(mkfifo(directory.file("event0").c_str(), 0600), 0);
        const Descriptor framebuffer(open(directory.file("fb0").c_str(), O_RDWR | O_CREAT, 0600));
        EXPECT_EQ(ftruncate(framebuffer.get(), 153600), 0);
        page.programs = 1;
        stream.emplace(directory.file("event0"), Bits::Unknown, loop, page);
        panel.emplace(directory.file("fb0"), page);
        reader.emplace(directory.file("event0"));
        pen.emplace(Recording(directory.file("script"), "x", 1.0, nullptr), loop, *stream, *panel);
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

    // Without comments.
    std::string lines() const {
        std::ifstream file(directory.file("script"));
        std::string text;
        for (std::string line; std::getline(file, line);)
            if (line[0] != '#')
                text += line + "\n";
        return text;
    }

    TemporaryDirectory directory;
    EventLoop loop;
    SharedPage page = {};
    std::optional<TouchStream> stream;
    std::optional<Panel> panel;
    std::optional<StreamReader> reader;
    std::optional<Recorder> pen;
};

TEST_F(RecorderTest, GivesEachPartOfAStrokeWhenTheProgramAsks) {
    ask();
    pen->press(10, 20);
    EXPECT_EQ(reader->read(), "X10 Y20 down |");
    pen->release();
    settle();
    EXPECT_EQ(reader->read(), ""); // the program is busy with the press
    EXPECT_EQ(lines(), "");
    EXPECT_EQ(ask(), "up |");
    EXPECT_EQ(lines(), "tap 10 20\n");
}

TEST_F(RecorderTest, MakesOneMoveOfThoseThatTheProgramDidNotAskFor) {
    ask();
    pen->press(10, 20);
    for (int i = 0; i < 50; ++i)
        pen->move(11 + i, 21);
    reader->read();
    EXPECT_EQ(ask(), "X60 Y21 |");
    pen->press(70, 500); // while it is down a press is a move, as for viewers
    EXPECT_EQ(ask(), "X70 Y239 |");
    pen->release();
    pen->release();
    pen->move(1, 1);
    EXPECT_EQ(ask(), "up |");
    EXPECT_EQ(ask(), "");
    EXPECT_EQ(lines(), "press 10 20\nmove 60 21\nmove 70 239\nrelease\n");
}

TEST_F(RecorderTest, DropsAStrokeThatTheProgramDoesNotAskFor) {
    pen->press(10, 20);
    pen->move(11, 21);
    for (const int64_t end = nowMs() + 300; nowMs() < end;)
        loop.runOnce(5);
    pen->move(12, 22);
    EXPECT_EQ(ask(), "");
    pen->release();
    EXPECT_EQ(ask(), "");
    pen->press(30, 40);
    EXPECT_EQ(ask(), "X30 Y40 down |");
    pen->release();
    EXPECT_EQ(ask(), "up |");
    EXPECT_EQ(lines(), "tap 30 40\n");
}

TEST_F(RecorderTest, GivesNothingToAProgramThatHasCeasedToLook) {
    page.glances = 9;
    settle();
    pen->press(10, 20);
    settle();
    EXPECT_EQ(reader->read(), "");
    page.glances = 10;
    settle();
    EXPECT_EQ(reader->read(), "X10 Y20 down |");
}

TEST_F(RecorderTest, ExpectsAPanelThatGoesDarkByItself) {
    ask();
    page.backlightOff = 1;
    for (const int64_t end = nowMs() + 400; nowMs() < end;)
        loop.runOnce(5);
    pen->press(10, 20);
    pen->release();
    reader->read();
    page.waiting = 1;
    settle();
    const std::string text = lines();
    EXPECT_EQ(text.substr(text.find("expect-dark")), "expect-dark\ntap 10 20\n");
}

TEST_F(RecorderTest, DoesNotExpectWhatTheProgramDidWithATouch) {
    ask();
    pen->press(10, 20);
    reader->read();
    page.backlightOff = 1; // before it asks again
    ask();
    pen->release();
    ask();
    EXPECT_EQ(lines(), "tap 10 20\n");
}

TEST_F(RecorderTest, EndsOnce) {
    ask();
    pen->finish(3);
    pen->finish(std::nullopt);
    pen->press(1, 2);
    settle();
    EXPECT_EQ(lines(), "exit-code 3\n");
}

} // namespace
