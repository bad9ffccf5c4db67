// Mouse and fingers on a window as the panel's one pen.
#include "simulator/window/window_pen.h"
#include "tests/unit/simulator/stream_reader.h"
#include "tests/unit/simulator/temporary_directory.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace ostrel;

namespace {

constexpr Area TWICE = {30, 160, 640, 480};
constexpr WindowPen::Pointer MOUSE = WindowPen::MOUSE;

class WindowPenTest : public testing::Test {
  protected:
    WindowPenTest() : fifo(made(directory.file("event0"))), stream(fifo, Bits::Unknown, loop, page), reader(fifo) {}

    static std::string made(const std::string& fifo) {
        EXPECT_EQ(mkfifo(fifo.c_str(), 0600), 0);
        return fifo;
    }

    TemporaryDirectory directory;
    std::string fifo;
    EventLoop loop;
    SharedPage page = {};
    TouchStream stream;
    StreamReader reader;
    WindowPen pen{stream};
};

TEST_F(WindowPenTest, TouchesThePixelUnderThePointer) {
    EXPECT_TRUE(pen.press(MOUSE, TWICE, {50, 200}));
    EXPECT_TRUE(pen.move(MOUSE, TWICE, {53, 200}));
    EXPECT_TRUE(pen.release(MOUSE));
    EXPECT_EQ(reader.read(), "X10 Y20 down | X11 Y20 | up |");
}

TEST_F(WindowPenTest, DoesNotMoveWithinAPixel) {
    pen.press(MOUSE, TWICE, {50, 200});
    EXPECT_FALSE(pen.move(MOUSE, TWICE, {51, 201}));
    EXPECT_TRUE(pen.move(MOUSE, TWICE, {51, 202}));
    EXPECT_EQ(reader.read(), "X10 Y20 down | X10 Y21 |");
}

TEST_F(WindowPenTest, TouchesNothingBesideThePicture) {
    for (const Position beside : {Position{29, 200}, Position{670, 200}, Position{50, 159}, Position{50, 640}}) {
        EXPECT_FALSE(pen.press(MOUSE, TWICE, beside));
        EXPECT_FALSE(pen.move(MOUSE, TWICE, {50, 200}));
        EXPECT_FALSE(pen.release(MOUSE));
    }
    EXPECT_EQ(reader.read(), "");
}

TEST_F(WindowPenTest, DragsAlongTheEdgeAndIsLiftedOutside) {
    pen.press(MOUSE, TWICE, {30, 160});
    pen.move(MOUSE, TWICE, {-900, 162});
    pen.move(MOUSE, TWICE, {5000, 5000});
    pen.release(MOUSE);
    EXPECT_EQ(reader.read(), "X0 Y0 down | X0 Y1 | X319 Y239 | up |");
}

TEST_F(WindowPenTest, IsHeldByThePointerThatPressedFirst) {
    pen.press(7, TWICE, {50, 200});
    EXPECT_FALSE(pen.press(8, TWICE, {100, 200}));
    EXPECT_FALSE(pen.press(MOUSE, TWICE, {100, 200}));
    EXPECT_FALSE(pen.move(8, TWICE, {120, 200}));
    EXPECT_FALSE(pen.release(8));
    EXPECT_FALSE(pen.release(MOUSE));
    EXPECT_TRUE(pen.release(7));
    EXPECT_TRUE(pen.press(MOUSE, TWICE, {100, 200}));
    EXPECT_EQ(reader.read(), "X10 Y20 down | up | X35 Y20 down |");
}

} // namespace
