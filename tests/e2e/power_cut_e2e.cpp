// The power goes while the settings program stores a network's name: the simulator, the program and everything between
// them are killed in front of the commit or right behind it, and the router starts again.
#include "tests/e2e/simulator_run.h"
#include "tests/support/picture.h"

#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <tuple>
#include <unistd.h>

namespace {

// Both in the router's language.
constexpr const char* TO_THE_WIFI_PAGE = "tap 80 77\n";
constexpr const char* RENAME_TO_HI = "tap 210 63\n" // the name
                                     "tap 230 223\ntap 230 223\ntap 230 223\n"
                                     "tap 230 223\ntap 230 223\ntap 230 223\n" // deletes "Ostrel"
                                     "tap 186 161\ntap 234 130\n"              // h, i
                                     "tap 283 223\n"                           // Done
                                     "tap 160 218\n";                          // Save

// True once `isSo` is; false after two minutes.
template<typename Condition>
bool comesTrue(Condition isSo) {
    constexpr int LOOK_EVERY_US = 10'000;
    for (int looks = 0; looks < 12'000; ++looks) {
        if (isSo())
            return true;
        usleep(LOOK_EVERY_US);
    }
    return false;
}

class PowerCut : public testing::TestWithParam<std::tuple<const char*, const char*>> {
  protected:
    PowerCut() {
        EXPECT_EQ(desk.nvram(std::string("set main Language ") + language()).status, 0);
        desk.write("mark", "");
    }

    static const char* language() { return std::get<0>(GetParam()); }
    static bool isBehind() { return std::string(std::get<1>(GetParam())) == "behind"; }

    std::string simulator(const std::string& program) const {
        return "cd '" + desk.directory.path +
               "' && OSTREL_ASSETS='" OSTREL_STAGED "' exec '" OSTREL_SIM
               "' --headless --script script --state state " +
               program;
    }

    // Starts the story that ends at the cut, in a process group of its own.
    pid_t begin() const {
        desk.write("script", std::string(TO_THE_WIFI_PAGE) + RENAME_TO_HI + "wait 3600000\n");
        const std::string command = simulator(
            std::string("sh -c 'OSTREL_POWER_CUT=") + std::get<1>(GetParam()) + " OSTREL_POWER_CUT_MARK=" +
            desk.file("mark") + " LD_PRELOAD=" OSTREL_POWER_CUT_LIBRARY ":$LD_PRELOAD exec " OSTREL_SETTINGS "'");
        const pid_t group = fork();
        if (group == 0) {
            setpgid(0, 0);
            execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
            _exit(127);
        }
        return group;
    }

    bool isAtTheCut() const { return !contentOf(desk.file("mark")).empty(); }

    // Everything, and waits for its end: the mark is locked as long as the program lives.
    void cutThePower(pid_t group) const {
        kill(-group, SIGKILL);
        int status = 0;
        waitpid(group, &status, 0);
        const int mark = open(desk.file("mark").c_str(), O_RDWR | O_CLOEXEC);
        EXPECT_TRUE(comesTrue([&] { return flock(mark, LOCK_EX | LOCK_NB) == 0; })) << "the program lives on";
        close(mark);
    }

    // Starts again, with a look at the Wi-Fi page.
    Picture startAgain() const {
        desk.write("script", std::string(TO_THE_WIFI_PAGE) + "shot wifi.png\nquit\n");
        const Told told =
            desk.run("--headless --script script '" OSTREL_SETTINGS "'", "OSTREL_ASSETS='" OSTREL_STAGED "'");
        EXPECT_EQ(told.status, 0) << told.errors;
        return readPicture(desk.file("wifi.png"));
    }

    std::string name(const char* options = "") const {
        return desk.nvram(std::string("get main WifiName ") + options).output;
    }

    Desk desk;
};

TEST_P(PowerCut, LeavesTheOldNameOrTheNewOne) {
    const Picture before = startAgain();
    const pid_t group = begin();
    const bool isThere = comesTrue([&] { return isAtTheCut(); });
    const std::string log = contentOf(desk.file("state/log"));
    cutThePower(group);
    ASSERT_TRUE(isThere) << log;
    EXPECT_NE(log.find("nvram set main WifiName: \"hi\""), std::string::npos) << log;
    EXPECT_EQ(log.find("nvram commit main") != std::string::npos, isBehind()) << log;
    EXPECT_EQ(log.find("killall"), std::string::npos) << log;

    EXPECT_EQ(name("--committed"), isBehind() ? "hi\n" : "Ostrel\n");
    const Picture after = startAgain();
    EXPECT_EQ(name(), isBehind() ? "hi\n" : "Ostrel\n");
    ASSERT_EQ(desk.nvram("set main WifiName hi").status, 0);
    const Picture renamed = startAgain();
    ASSERT_EQ(before.width, 320);
    EXPECT_TRUE(before != renamed);
    EXPECT_TRUE(after == (isBehind() ? renamed : before));
    EXPECT_EQ(desk.nvram("get main Language").output, std::string(language()) + "\n");
}

INSTANTIATE_TEST_SUITE_P(
    Everywhere, PowerCut,
    testing::Combine(testing::Values("english", "greek", "german"), testing::Values("before", "behind")),
    [](const auto& test) {
        return std::string(std::get<0>(test.param)) + "_" + std::get<1>(test.param) + "_the_commit";
    });

} // namespace
