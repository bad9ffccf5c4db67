// The comparison that all pixel tests trust.
#include "tests/support/golden.h"

#include <cstdlib>
#include <gtest/gtest.h>

TEST(GoldenComparison, TellsTheFirstWrongPixelTheCountAndTheBox) {
    const Picture expected = blankPicture(8, 6, 0x1234);
    Picture actual = expected;
    actual.at(5, 1) = 0xFFFF;
    actual.at(2, 4) = 0;
    const testing::AssertionResult result = matchesPicture(actual, expected, "self-test");
    EXPECT_FALSE(result);
    const std::string message = result.message();
    EXPECT_NE(message.find("2 wrong pixels, the first at (5, 1): 0xffff instead of 0x1234"), std::string::npos)
        << message;
    EXPECT_NE(message.find("within x 2..5, y 1..4"), std::string::npos) << message;
}

TEST(GoldenComparison, TellsAnotherSize) {
    const testing::AssertionResult result =
        matchesPicture(blankPicture(4, 3, 0), blankPicture(4, 2, 0), "self-test-size");
    EXPECT_FALSE(result);
    EXPECT_NE(std::string(result.message()).find("is 4x3, not 4x2"), std::string::npos) << result.message();
}

TEST(GoldenComparison, AcceptsEqualPictures) {
    EXPECT_TRUE(matchesPicture(blankPicture(4, 3, 7), blankPicture(4, 3, 7), "self-test-equal"));
}

TEST(GoldenComparison, FailsWithoutAGoldenPicture) {
    const char* const update = std::getenv("OSTREL_UPDATE_GOLDEN");
    const std::string before = update != nullptr ? update : "";
    unsetenv("OSTREL_UPDATE_GOLDEN");
    EXPECT_FALSE(matchesGolden(blankPicture(4, 3, 0), "there-is-no-such-picture"));
    setenv("OSTREL_UPDATE_GOLDEN", before.c_str(), 1);
}

TEST(PictureFile, KeepsEveryColour) {
    Picture colours = blankPicture(256, 256, 0);
    for (int i = 0; i < 65536; ++i)
        colours.pixels[static_cast<size_t>(i)] = static_cast<uint16_t>(i);
    const std::string path = testing::TempDir() + "ostrel-every-colour.png";
    ASSERT_TRUE(writePicture(colours, path));
    EXPECT_TRUE(readPicture(path) == colours);
    std::remove(path.c_str());
}
