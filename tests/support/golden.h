// Golden pictures: what a drawing must look like, to the pixel, kept as small PNG files under tests/golden/ that
// somebody has looked at.
#ifndef OSTREL_TESTS_SUPPORT_GOLDEN_H
#define OSTREL_TESTS_SUPPORT_GOLDEN_H

#include "tests/support/picture.h"

#include <gtest/gtest.h>

// Whether `actual` equals tests/golden/<name>.png. A failure tells the first wrong pixel, how many are wrong and the
// box around them, and saves <name>.expected.png, <name>.actual.png and <name>.difference.png (wrong pixels in red
// over a faint copy) below the build directory. A golden picture that is missing is a failure too. With
// OSTREL_UPDATE_GOLDEN=1 in the environment the golden picture is replaced by `actual` instead.
//
//     EXPECT_TRUE(matchesGolden(cut(panelCanvas(), {10, 20, 90, 52}), "button-pressed"));
testing::AssertionResult matchesGolden(const Picture& actual, const std::string& name);

// The same against a picture at hand, with `name` for the files that a failure saves.
testing::AssertionResult matchesPicture(const Picture& actual, const Picture& expected, const std::string& name);

#endif
