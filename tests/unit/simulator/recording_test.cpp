#include "simulator/failure.h"
#include "simulator/recording.h"
#include "simulator/script.h"
#include "tests/unit/simulator/temporary_directory.h"

#include <fstream>
#include <gtest/gtest.h>
#include <iterator>

using namespace ostrel;

namespace {

class RecordingTest : public testing::Test {
  protected:
    // Behind its comment; what is there at this moment.
    std::string lines() const {
        std::ifstream file(directory.file("script"));
        const std::string text{std::istreambuf_iterator<char>(file), {}};
        const std::string last = "checks it.\n";
        return text.substr(text.find(last) + last.size());
    }

    TemporaryDirectory directory;
    std::string said;
    Recording recording{
        directory.file("script"), "ostrel-sim ./program\n\x7F", 1.0,
        [this](const std::string& sentence) { said += sentence + "\n"; }};
};

TEST_F(RecordingTest, BeginsWithHowToPlayIt) {
    std::ifstream file(directory.file("script"));
    std::string line;
    std::getline(file, line);
    std::getline(file, line);
    EXPECT_EQ(line, "#     ostrel-sim ./program??");
    EXPECT_TRUE(readScript(directory.file("script")).commands.empty());
}

TEST_F(RecordingTest, WritesATapWhenThePenIsLifted) {
    recording.press(10, 20, 299);
    EXPECT_EQ(lines(), "");
    recording.release(299);
    EXPECT_EQ(lines(), "tap 10 20\n");
}

TEST_F(RecordingTest, WritesPausesAndALongPress) {
    recording.press(10, 20, 300);
    recording.release(300);
    EXPECT_EQ(lines(), "pause 300\npress 10 20\npause 300\nrelease\n");
}

// What a person's rest is does not depend on how fast the program's time goes.
TEST_F(RecordingTest, WritesPausesInTheProgramsTime) {
    Recording quick(directory.file("script"), "x", 50.0, nullptr);
    quick.press(10, 20, 400);
    quick.release(299);
    EXPECT_EQ(lines(), "pause 20000\ntap 10 20\n");
}

TEST_F(RecordingTest, WritesADragAsItGoes) {
    recording.press(10, 20, 0);
    recording.move(11, 21, 5);
    EXPECT_EQ(lines(), "press 10 20\nmove 11 21\n");
    recording.move(12, 22, 1000);
    recording.release(0);
    EXPECT_EQ(lines(), "press 10 20\nmove 11 21\npause 1000\nmove 12 22\nrelease\n");
}

TEST_F(RecordingTest, ExpectsADarkPanel) {
    recording.wentDark(30000);
    recording.press(1, 2, 0);
    recording.release(0);
    EXPECT_EQ(lines(), "pause 30000\nexpect-dark\ntap 1 2\n");
}

TEST_F(RecordingTest, EndsWithTheProgramOrTheLastPause) {
    recording.press(1, 2, 0);
    recording.programEnded(134);
    EXPECT_EQ(lines(), "press 1 2\nexit-code 134\n");
    Recording other(directory.file("script"), "x", 1.0, nullptr);
    other.ended(299);
    EXPECT_EQ(lines(), "");
    other.ended(10001);
    EXPECT_EQ(lines(), "pause 10000\n");
}

TEST_F(RecordingTest, PausesNoLongerThanAScriptMay) {
    recording.press(1, 2, 100000000);
    recording.missed(3, 4);
    EXPECT_EQ(lines(), "pause 86400000\n# The program did not ask for the pen and has not got: tap 3 4\n");
    EXPECT_EQ(readScript(directory.file("script")).commands.size(), 1U);
}

TEST_F(RecordingTest, ThatCannotBeWrittenIsRefused) {
    try {
        Recording(directory.file("missing/script"), "x", 1.0, nullptr);
        FAIL();
    } catch (const Failure& failure) {
        EXPECT_EQ(
            failure.what(), "cannot write the recording " + directory.file("missing/script") +
                                ": No such file or directory; make its directory first");
    }
}

TEST_F(RecordingTest, SaysOnceWhenTheDiskIsFull) {
    Recording full("/dev/full", "x", 1.0, [this](const std::string& sentence) { said += sentence + "\n"; });
    full.missed(1, 2);
    full.programEnded(0);
    EXPECT_EQ(said, "cannot write the recording /dev/full: No space left on device; it ends here\n");
}

} // namespace
