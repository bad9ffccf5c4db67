// Painting on a canvas equals painting one pixel at a time, and nothing outside the clip changes.
#include "display/canvas.h"
#include "display/image.h"
#include "display/rounded.h"
#include "tests/support/guarded_canvas.h"
#include "tests/support/picture.h"
#include "tests/support/scale.h"

#include <climits>
#include <gtest/gtest.h>

using namespace ostrel;

namespace {

constexpr unsigned SEED = 20240611;

bool contains(const Rect& area, int x, int y) {
    return area.left <= x && x < area.right && area.top <= y && y < area.bottom;
}

// Draws once on a random canvas and compares every pixel inside the clip with `expected(x, y, before)`.
template<typename Draw, typename Expected>
void compareWithOnePixelAtATime(GuardedCanvas& guarded, Draw draw, Expected expected) {
    const Canvas& canvas = guarded.canvas();
    const Rect changed = draw(canvas);
    ASSERT_TRUE(guarded.isUntouchedOutsideClip());
    for (int y = 0; y < canvas.height; ++y) {
        for (int x = 0; x < canvas.width; ++x) {
            const uint16_t before = guarded.before(x, y);
            const uint16_t wanted = contains(canvas.clip, x, y) ? expected(x, y, before) : before;
            ASSERT_EQ(guarded.now(x, y), wanted) << "at " << x << ", " << y;
            ASSERT_TRUE(guarded.now(x, y) == before || contains(changed, x, y)) << "not told of " << x << ", " << y;
        }
    }
}

template<typename Step>
void repeat(long count, Step step) {
    std::mt19937 random(SEED);
    for (long i = 0; i < scaled(count); ++i) {
        SCOPED_TRACE("seed " + std::to_string(SEED) + ", step " + std::to_string(i));
        step(random);
        if (testing::Test::HasFatalFailure())
            return;
    }
}

// One channel of `mixed`, in plain arithmetic.
int mixedChannel(int under, int over, int coverage) {
    const int weight = (coverage + 4) / 8;
    return (under * (32 - weight) + over * weight) / 32;
}

uint16_t mixedByChannels(uint16_t under, uint16_t over, int coverage) {
    const int red = mixedChannel(under >> 11, over >> 11, coverage);
    const int green = mixedChannel(under >> 5 & 0x3F, over >> 5 & 0x3F, coverage);
    const int blue = mixedChannel(under & 0x1F, over & 0x1F, coverage);
    return static_cast<uint16_t>(red << 11 | green << 5 | blue);
}

} // namespace

TEST(Canvas, FillsLikeOnePixelAtATime) {
    repeat(40'000, [](std::mt19937& random) {
        GuardedCanvas guarded(random);
        const Rect area = wildRect(random);
        const auto colour = static_cast<uint16_t>(random());
        compareWithOnePixelAtATime(
            guarded, [&](const Canvas& canvas) { return fill(canvas, area, colour); },
            [&](int x, int y, uint16_t before) { return contains(area, x, y) ? colour : before; });
    });
}

TEST(Canvas, BlendsAMaskLikeOnePixelAtATime) {
    repeat(20'000, [](std::mt19937& random) {
        GuardedCanvas guarded(random);
        const int width = pick(random, 0, 12);
        const int height = pick(random, 0, 12);
        const int stride = width + pick(random, 0, 3);
        std::vector<uint8_t> coverage(static_cast<size_t>(stride * height) + 1);
        for (uint8_t& value : coverage)
            value = static_cast<uint8_t>(pick(random, 0, 3) == 0 ? 255 * pick(random, 0, 1) : pick(random, 0, 255));
        const int left = wildCoordinate(random, -12, 40);
        const int top = wildCoordinate(random, -12, 30);
        const auto colour = static_cast<uint16_t>(random());
        compareWithOnePixelAtATime(
            guarded,
            [&](const Canvas& canvas) {
                return blend(canvas, {coverage.data(), width, height, stride}, left, top, colour);
            },
            [&](int x, int y, uint16_t before) {
                const int64_t column = static_cast<int64_t>(x) - left;
                const int64_t row = static_cast<int64_t>(y) - top;
                if (column < 0 || column >= width || row < 0 || row >= height)
                    return before;
                return mixedByChannels(before, colour, coverage[static_cast<size_t>(row * stride + column)]);
            });
    });
}

TEST(Canvas, DrawsAnImageLikeOnePixelAtATime) {
    repeat(20'000, [](std::mt19937& random) {
        GuardedCanvas guarded(random);
        const int width = pick(random, 1, 12);
        const int height = pick(random, 1, 12);
        const size_t count = static_cast<size_t>(width) * static_cast<size_t>(height);
        const bool isOpaque = pick(random, 0, 2) == 0;
        Image image{width, height, allocate<uint16_t>(count), isOpaque ? nullptr : allocate<uint8_t>(count)};
        for (size_t i = 0; i < count; ++i) {
            image.colours[i] = static_cast<uint16_t>(random());
            if (!isOpaque)
                image.alpha[i] =
                    static_cast<uint8_t>(pick(random, 0, 3) == 0 ? 255 * pick(random, 0, 1) : pick(random, 0, 255));
        }
        const int left = wildCoordinate(random, -12, 40);
        const int top = wildCoordinate(random, -12, 30);
        const bool isReplacing = pick(random, 0, 1) == 0;
        const auto page = static_cast<uint16_t>(random());
        compareWithOnePixelAtATime(
            guarded,
            [&](const Canvas& canvas) {
                return isReplacing ? drawReplacing(canvas, image, left, top, page) : drawOver(canvas, image, left, top);
            },
            [&](int x, int y, uint16_t before) {
                const int64_t column = static_cast<int64_t>(x) - left;
                const int64_t row = static_cast<int64_t>(y) - top;
                if (column < 0 || column >= width || row < 0 || row >= height)
                    return before;
                const auto i = static_cast<size_t>(row * width + column);
                return mixedByChannels(isReplacing ? page : before, image.colours[i], isOpaque ? 255 : image.alpha[i]);
            });
    });
}

TEST(Canvas, KeepsRoundedBoxesInsideTheirRectangle) {
    repeat(20'000, [](std::mt19937& random) {
        GuardedCanvas guarded(random);
        const Rect box = wildRect(random);
        const int radius = wildCoordinate(random, 0, 20);
        const auto colour = static_cast<uint16_t>(random());
        const Canvas& canvas = guarded.canvas();
        fillRounded(canvas, box, radius, colour);
        ASSERT_TRUE(guarded.isUntouchedOutsideClip());
        for (int y = 0; y < canvas.height; ++y) {
            for (int x = 0; x < canvas.width; ++x)
                ASSERT_TRUE(contains(box, x, y) || guarded.now(x, y) == guarded.before(x, y))
                    << "at " << x << ", " << y;
        }
    });
}

TEST(Canvas, MixesLikeItsChannelsDo) {
    repeat(200'000, [](std::mt19937& random) {
        const auto under = static_cast<uint16_t>(random());
        const auto over = static_cast<uint16_t>(random());
        const int coverage = pick(random, 0, 255);
        ASSERT_EQ(mixed(under, over, coverage), mixedByChannels(under, over, coverage))
            << under << ' ' << over << ' ' << coverage;
    });
    EXPECT_EQ(mixed(0x1234, 0xFEDC, 0), 0x1234);
    EXPECT_EQ(mixed(0x1234, 0xFEDC, 255), 0xFEDC);
}

TEST(RoundedBox, HasSmoothSymmetricCorners) {
    Picture picture = blankPicture(9, 9, 0);
    fillRounded(canvasOver(picture.pixels.data(), 9, 9, 9), {0, 0, 9, 9}, 4, 0xFFFF);
    EXPECT_EQ(
        shapeOf(picture, 0xFFFF), "....#....\n"
                                  "..#####..\n"
                                  ".#######.\n"
                                  ".#######.\n"
                                  "#########\n"
                                  ".#######.\n"
                                  ".#######.\n"
                                  "..#####..\n"
                                  "....#....\n");
    EXPECT_EQ(picture.at(0, 0), 0) << "the corner itself stays free";
    EXPECT_NE(picture.at(2, 0), 0) << "the rim is smooth";
    for (int y = 0; y < 9; ++y) {
        for (int x = 0; x < 9; ++x) {
            EXPECT_EQ(picture.at(x, y), picture.at(8 - x, y));
            EXPECT_EQ(picture.at(x, y), picture.at(y, x));
        }
    }
}

TEST(RoundedBox, WithoutARadiusIsARectangle) {
    Picture picture = blankPicture(4, 3, 0);
    fillRounded(canvasOver(picture.pixels.data(), 4, 3, 4), {1, 0, 3, 3}, 0, 0xFFFF);
    EXPECT_EQ(shapeOf(picture, 0xFFFF), ".##.\n.##.\n.##.\n");
}

TEST(Rect, StopsAtTheEndsOfInt) {
    const Rect far = rectAt(INT_MAX - 5, INT_MIN, 100, 10);
    EXPECT_EQ(far.right, INT_MAX);
    EXPECT_EQ(far.bottom, INT_MIN + 10);
    EXPECT_TRUE(rectAt(5, 5, -3, 10).isEmpty());
}

TEST(Rect, UnitedWithNothingIsItself) {
    const Rect all = united({}, united({3, 4, 5, 6}, {1, 9, 2, 10}));
    EXPECT_EQ(all.left, 1);
    EXPECT_EQ(all.top, 4);
    EXPECT_EQ(all.right, 5);
    EXPECT_EQ(all.bottom, 10);
}

TEST(ClipTo, GivesTheClipBack) {
    uint16_t pixels[16] = {};
    Canvas canvas = canvasOver(pixels, 4, 4, 4);
    {
        const ClipTo narrowed(canvas, {1, 1, 9, 2});
        fill(canvas, {0, 0, 4, 4}, 1);
    }
    EXPECT_EQ(canvas.clip.right, 4);
    const uint16_t expected[16] = {0, 0, 0, 0, 0, 1, 1, 1};
    EXPECT_TRUE(std::equal(pixels, pixels + 16, expected));
}
