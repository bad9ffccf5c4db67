#include "simulator/log_search.h"
#include "tests/unit/simulator/temporary_directory.h"

#include <fstream>
#include <gtest/gtest.h>

using namespace ostrel;

namespace {

class LogSearchTest : public testing::Test {
  protected:
    void append(const std::string& text) const { std::ofstream(directory.file("log"), std::ios::app) << text; }
    void setAside() const { std::filesystem::rename(directory.file("log"), directory.file("log.old")); }

    TemporaryDirectory directory;
};

TEST_F(LogSearchTest, FindsWhatIsThereAndWhatComes) {
    append("12:00:00.000 sh[2] command umount /data\n");
    EXPECT_TRUE(LogSearch(directory.path, "command umount").hasFound());
    LogSearch search(directory.path, "command init_system restart");
    EXPECT_FALSE(search.hasFound());
    append("12:00:00.010 init_system[3] command init_system rest");
    EXPECT_FALSE(search.hasFound());
    append("art\n");
    EXPECT_TRUE(search.hasFound());
    EXPECT_TRUE(search.hasFound());
}

TEST_F(LogSearchTest, DoesNotTakeTwoLinesForOne) {
    append("a command\numount\n");
    EXPECT_FALSE(LogSearch(directory.path, "command umount").hasFound());
}

TEST_F(LogSearchTest, WaitsForALogThatIsNotThereYet) {
    LogSearch search(directory.path, "x");
    EXPECT_FALSE(search.hasFound());
    append("x\n");
    EXPECT_TRUE(search.hasFound());
}

TEST_F(LogSearchTest, GoesOnInTheNextLogWhenOneHasBecomeTooLong) {
    append("first\n");
    LogSearch search(directory.path, "third");
    EXPECT_FALSE(search.hasFound());
    LogSearch other(directory.path, "second");
    append("second\n");
    setAside();
    append("third\n");
    EXPECT_TRUE(search.hasFound());
    EXPECT_TRUE(other.hasFound());
    EXPECT_TRUE(LogSearch(directory.path, "first").hasFound());
}

TEST_F(LogSearchTest, FindsWhatLiesAcrossTheBlocksThatAreRead) {
    const std::string text = "what is looked for";
    for (size_t size = 65530; size < 65560; ++size) {
        std::filesystem::remove(directory.file("log"));
        append(std::string(size, '.') + text + std::string(100000, '.'));
        EXPECT_TRUE(LogSearch(directory.path, text).hasFound()) << size;
    }
}

} // namespace
