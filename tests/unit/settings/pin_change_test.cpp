// The order of a PIN change and what it refuses.
#include "apps/settings/pin_change.h"

#include <gtest/gtest.h>

namespace {

using Answer = PinChange::Answer;

TEST(PinChange, AsksForTheCurrentPinFirst) {
    PinChange change("4711");
    EXPECT_TRUE(change.takesCurrent());
    EXPECT_FALSE(change.takesNew());
    EXPECT_FALSE(change.takesRepeated());
    EXPECT_EQ(change.enterCurrent("4711"), Answer::Taken);
    EXPECT_FALSE(change.takesCurrent());
    EXPECT_TRUE(change.takesNew());
    EXPECT_FALSE(change.takesRepeated());
}

TEST(PinChange, AsksForNoCurrentPinWhereThereIsNone) {
    const PinChange change("");
    EXPECT_FALSE(change.takesCurrent());
    EXPECT_TRUE(change.takesNew());
    EXPECT_FALSE(change.isComplete());
}

TEST(PinChange, TakesTheNewPinTwice) {
    PinChange change;
    EXPECT_EQ(change.enterNew("0815"), Answer::Taken);
    EXPECT_TRUE(change.takesRepeated());
    EXPECT_FALSE(change.isComplete());
    EXPECT_EQ(change.enterRepeated("0815"), Answer::Taken);
    EXPECT_TRUE(change.isComplete());
    EXPECT_EQ(change.pin(), "0815");
}

TEST(PinChange, GivesUpAfterTheThirdWrongCurrentPin) {
    PinChange change("4711");
    EXPECT_EQ(change.enterCurrent("4712"), Answer::Wrong);
    EXPECT_EQ(change.enterCurrent(""), Answer::Wrong);
    EXPECT_EQ(change.enterCurrent("471"), Answer::WrongTooOften);
    EXPECT_FALSE(change.takesNew());
}

TEST(PinChange, TakesTheRightCurrentPinAtTheThirdTry) {
    PinChange change("4711");
    change.enterCurrent("1");
    change.enterCurrent("2");
    EXPECT_EQ(change.enterCurrent("4711"), Answer::Taken);
    EXPECT_TRUE(change.takesNew());
}

// One that a shell has stored, and that the PIN pad cannot even type.
TEST(PinChange, ComparesACurrentPinOfAnyLength) {
    PinChange change("secret");
    EXPECT_EQ(change.enterCurrent("secre"), Answer::Wrong);
    EXPECT_EQ(change.enterCurrent("secret"), Answer::Taken);
}

TEST(PinChange, RefusesEverythingButFourDigits) {
    for (const char* const text : {"", "1", "123", "12345", "12-4", "1.23", "12 4", "１２３４", "abcd"}) {
        PinChange change;
        EXPECT_EQ(change.enterNew(text), Answer::NotFourDigits) << text;
        EXPECT_FALSE(change.takesRepeated()) << text;
    }
    PinChange change;
    EXPECT_EQ(change.enterNew("0000"), Answer::Taken);
    EXPECT_EQ(change.enterNew("9999"), Answer::Taken);
}

TEST(PinChange, BeginsAgainWhenTheTwoDiffer) {
    PinChange change;
    change.enterNew("1234");
    EXPECT_EQ(change.enterRepeated("1243"), Answer::Different);
    EXPECT_TRUE(change.takesNew());
    EXPECT_FALSE(change.takesRepeated());
    EXPECT_FALSE(change.isComplete());
}

TEST(PinChange, HasARepeatedPinRepeatedAgainWhenItChanges) {
    PinChange change;
    change.enterNew("1234");
    change.enterRepeated("1234");
    change.enterNew("5678");
    EXPECT_FALSE(change.isComplete());
    EXPECT_EQ(change.enterRepeated("1234"), Answer::Different);
    EXPECT_FALSE(change.isComplete());
}

TEST(PinChange, KeepsWhatWasRepeatedWhenANewEntryIsRefused) {
    PinChange change;
    change.enterNew("1234");
    change.enterRepeated("1234");
    EXPECT_EQ(change.enterNew("12"), Answer::NotFourDigits);
    EXPECT_TRUE(change.isComplete());
    EXPECT_EQ(change.pin(), "1234");
}

} // namespace
