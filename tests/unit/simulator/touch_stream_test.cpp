#include "simulator/touch_stream.h"
#include "tests/unit/simulator/stream_reader.h"
#include "tests/unit/simulator/temporary_directory.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace ostrel;

namespace {

class TouchStreamTest : public testing::Test {
  protected:
    TouchStreamTest() : fifo(directory.file("event0")) { EXPECT_EQ(mkfifo(fifo.c_str(), 0600), 0); }

    TemporaryDirectory directory;
    std::string fifo;
    EventLoop loop;
    SharedPage page = {};
};

TEST_F(TouchStreamTest, WritesAStrokeAsADriverDoes) {
    TouchStream stream(fifo, Bits::Unknown, loop, page);
    const StreamReader reader(fifo);
    stream.press(10, 20);
    EXPECT_EQ(page.penDown, 1U);
    stream.move(11, 21);
    stream.release();
    EXPECT_EQ(reader.read(), "X10 Y20 down | X11 Y21 | up |");
    EXPECT_EQ(page.penDown, 0U);
    EXPECT_EQ(page.penX, 11);
}

TEST_F(TouchStreamTest, BeginsAnewForAnotherProgram) {
    TouchStream stream(fifo, Bits::Unknown, loop, page);
    const StreamReader reader(fifo);
    page.programs = 2;
    page.waiting = 1;
    page.glances = 3;
    for (int i = 0; i < 2000; ++i) { // more than the pipe holds
        stream.press(i % 300, 20);
        stream.release();
    }
    stream.press(10, 20);
    stream.empty();
    EXPECT_EQ(page.penDown, 0U);
    EXPECT_EQ(page.programs + page.waiting + page.glances, 0U);
    loop.runOnce(0);
    EXPECT_EQ(reader.read(), "");
    stream.press(1, 2);
    EXPECT_EQ(reader.read(), "X1 Y2 down |");
}

TEST_F(TouchStreamTest, UsesTheProgramsRecordSize) {
    TouchStream narrow(fifo, Bits::ThirtyTwo, loop, page);
    const StreamReader reader(fifo, 16);
    narrow.press(1, 2);
    EXPECT_EQ(reader.read(), "X1 Y2 down |");
    narrow.release();
    EXPECT_EQ(reader.read(), "up |");
    TouchStream wide(fifo, Bits::SixtyFour, loop, page);
    wide.press(3, 4);
    EXPECT_EQ(StreamReader(fifo, 24).read(), "X3 Y4 down |");
}

TEST_F(TouchStreamTest, KeepsThePenOnThePanelAndTheStrokeInOrder) {
    TouchStream stream(fifo, Bits::Unknown, loop, page);
    const StreamReader reader(fifo);
    stream.release();
    stream.move(1, 1);
    EXPECT_EQ(reader.read(), "");
    stream.press(-5, 400);
    stream.press(400, -5);
    stream.release();
    stream.release();
    EXPECT_EQ(reader.read(), "X0 Y239 down | X319 Y0 | up |");
}

// 64 KiB hold some 600 strokes. What does not fit is lost, where the pen is in the end is not.
TEST_F(TouchStreamTest, NeverLosesTheLastReleaseWhenNobodyReads) {
    TouchStream stream(fifo, Bits::Unknown, loop, page);
    const StreamReader reader(fifo);
    for (int i = 0; i < 5000; ++i) {
        stream.press(i % 320, 100);
        stream.release();
    }
    const std::string stored = reader.read();
    EXPECT_EQ(stored.substr(0, 40), "X0 Y100 down | up | X1 Y100 down | up | ");
    EXPECT_EQ(stored.find("dropped"), std::string::npos);
    EXPECT_FALSE(stream.isAwaited());
    loop.runOnce(0);
    EXPECT_EQ(reader.read(), "dropped | X199 Y100 up |");
    loop.runOnce(0);
    stream.press(7, 8);
    EXPECT_EQ(reader.read(), "X7 Y8 down |");
}

TEST_F(TouchStreamTest, TellsAfterAGapThatThePenIsStillDown) {
    TouchStream stream(fifo, Bits::Unknown, loop, page);
    const StreamReader reader(fifo);
    stream.press(1, 1);
    for (int i = 0; i < 5000; ++i)
        stream.move(i % 320, 50);
    reader.read();
    loop.runOnce(0);
    EXPECT_EQ(reader.read(), "dropped | X199 Y50 down |");
    stream.release();
    EXPECT_EQ(reader.read(), "up |");
}

TEST_F(TouchStreamTest, IsAwaitedWhileAProgramWaitsForIt) {
    TouchStream stream(fifo, Bits::Unknown, loop, page);
    const StreamReader reader(fifo);
    page.programs = 1;
    EXPECT_FALSE(stream.isAwaited());
    page.waiting = 1;
    EXPECT_TRUE(stream.isAwaited());
    stream.press(1, 1);
    EXPECT_FALSE(stream.isAwaited()); // there is something to read
    reader.read();
    EXPECT_FALSE(stream.isAwaited()); // and the old question is answered
}

// Its first stroke would lie in the stream before the program opens it, and be dropped as an old one.
TEST_F(TouchStreamTest, IsNotAwaitedBeforeASlowProgramHasStarted) {
    TouchStream stream(fifo, Bits::Unknown, loop, page);
    loop.runOnce(150);
    EXPECT_FALSE(stream.isAwaited());
}

// One look in vain ends the reading of what the program is about to deal with, and the loops that it leaves then may
// look once more each. Whoever goes on looking asks.
TEST_F(TouchStreamTest, IsAwaitedAfterFourLooksInVain) {
    TouchStream stream(fifo, Bits::Unknown, loop, page);
    page.programs = 1;
    page.glances = 3;
    EXPECT_FALSE(stream.isAwaited());
    page.glances = 4;
    EXPECT_TRUE(stream.isAwaited());
}

// It looked in a loop, and does something else now.
TEST_F(TouchStreamTest, IsNotAwaitedByAProgramThatHasCeasedToLook) {
    TouchStream stream(fifo, Bits::Unknown, loop, page);
    page.programs = 1;
    page.glances = 7;
    const uint32_t before = stream.looks();
    EXPECT_FALSE(stream.isAwaitedSince(before));
    page.waiting = 1;
    EXPECT_TRUE(stream.isAwaitedSince(before));
    page.waiting = 0;
    page.glances = 8;
    EXPECT_TRUE(stream.isAwaitedSince(before));
}

} // namespace
