#include "simulator/nearest.h"

#include <gtest/gtest.h>

using namespace ostrel;

namespace {

std::string meant(const std::string& word) {
    return didYouMean(word, {"--headless", "--help", "--state", "--speed", "get", "set"});
}

TEST(Nearest, IsALetterOrTwoAway) {
    EXPECT_EQ(meant("--headles"), " (did you mean --headless?)");
    EXPECT_EQ(meant("--haedless"), " (did you mean --headless?)");
    EXPECT_EQ(meant("--hedles"), " (did you mean --headless?)");
    EXPECT_EQ(meant("--hedlas"), "");
    EXPECT_EQ(meant("--window"), "");
    EXPECT_EQ(meant("--tsate"), " (did you mean --state?)");
}

TEST(Nearest, IsWhatWasBegun) {
    EXPECT_EQ(meant("--head"), " (did you mean --headless?)");
    EXPECT_EQ(meant("-st"), " (did you mean --state?)");
    EXPECT_EQ(meant("-h"), " (did you mean --help?)");
    EXPECT_EQ(meant("--"), "");
}

TEST(Nearest, OfShortWordsHasAtMostOneLetterWrong) {
    EXPECT_EQ(meant("got"), " (did you mean get?)");
    EXPECT_EQ(meant("gat"), " (did you mean get?)");
    EXPECT_EQ(meant("put"), "");
    EXPECT_EQ(meant("x"), "");
    EXPECT_EQ(meant(""), "");
}

} // namespace
