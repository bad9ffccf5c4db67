// Whatever a program starts ends with the run, however that ends.
#include "tests/e2e/family.h"
#include "tests/e2e/simulator_run.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

class Run : public testing::Test {
  protected:
    // A program with children of all kinds: in the background, orphaned, in a session of its own, deaf to SIGTERM. It
    // goes on as `then` says when all of them are there.
    void writeProgram(const std::string& then) const {
        desk.write(
            "program", "#!/bin/sh\ncd '" + desk.directory.path +
                           "'\n"
                           "sh -c 'echo >> children; exec sleep 10000' &\n"
                           "(sh -c 'echo >> children; exec sleep 10000' &)\n"
                           "setsid sh -c 'echo >> children; exec sleep 10000' &\n"
                           "(setsid sh -c \"trap '' TERM HUP INT; echo >> children; exec sleep 10000\" &)\n"
                           "until [ \"$(wc -l < children)\" = 4 ]; do sleep 0.01; done 2> waiting\n" +
                           then + "\n");
        chmod(desk.file("program").c_str(), 0755);
    }

    std::string simulation(const std::string& face = "--headless") const {
        return "cd '" + desk.directory.path + "' && OSTREL_ASSETS=assets exec '" OSTREL_SIM "' " + face +
               " --state state ./program > output 2> errors";
    }

    bool isThere(const std::string& name) const {
        return soon([&] { return std::filesystem::exists(desk.file(name)); });
    }

    Desk desk;
};

// Bubblewrap twice, launch, the program and its four children.
constexpr int EVERYBODY = 8;

TEST_F(Run, ThatEndsLeavesNobodyBehind) {
    writeProgram("exit 3");
    Family family(simulation());
    EXPECT_TRUE(family.isGone());
    EXPECT_EQ(family.status, 3);
    EXPECT_EQ(contentOf(desk.file("errors")), "ostrel-sim: program exited with status 3\n");
}

TEST_F(Run, OfAKilledProgramLeavesNobodyBehind) {
    writeProgram("kill -KILL $$");
    Family family(simulation());
    EXPECT_TRUE(family.isGone());
    EXPECT_EQ(family.status, 137);
}

TEST_F(Run, OfAKilledSimulatorLeavesNobodyBehind) {
    for (const char* face : {"--headless", "--web"}) {
        for (const char* name : {"children", "ready"})
            std::filesystem::remove(desk.file(name));
        writeProgram("echo > ready; sleep 10000; sleep 10000");
        Family family(simulation(face));
        ASSERT_TRUE(isThere("ready"));
        EXPECT_GE(Family::size(), EVERYBODY);
        kill(family.head, SIGKILL);
        EXPECT_TRUE(family.isGone());
        EXPECT_EQ(family.status, 137);
    }
}

// The program hears of it and may put things in order, and so may its children.
TEST_F(Run, OfASimulatorThatIsAskedToEndIsEndedInOrder) {
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        for (const char* name : {"children", "ready", "asked"})
            std::filesystem::remove(desk.file(name));
        writeProgram("trap 'echo asked > asked; exit' TERM\necho > ready\nwhile :; do sleep 0.01; done");
        Family family(simulation());
        ASSERT_TRUE(isThere("ready"));
        kill(family.head, signal);
        EXPECT_TRUE(family.isGone());
        EXPECT_EQ(family.status, 128 + signal);
        EXPECT_EQ(contentOf(desk.file("asked")), "asked\n");
    }
}

} // namespace
