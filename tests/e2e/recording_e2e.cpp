// What a person does with a VNC viewer becomes a script, which plays to the same last picture.
#include "simulator/failure.h"
#include "simulator/panel.h"
#include "simulator/png_file.h"
#include "tests/e2e/vnc_client.h"

#include <gtest/gtest.h>
#include <memory>

namespace {

using Colours = std::vector<uint32_t>;

// The keyboard tour with a web panel, being recorded.
class Recorded : public testing::Test {
  protected:
    ~Recorded() override {
        viewer.reset();
        if (pid > 0)
            end(SIGKILL);
    }

    void start(const std::string& options = "--fresh --speed 50") {
        const std::string command = in("recorded") + " --web --record '" + desk.file("tour.touch") + "' " + options +
                                    " '" OSTREL_TOUR "' > output 2> errors";
        pid = fork();
        if (pid == 0) {
            execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
            _exit(127);
        }
        int port = 0;
        ASSERT_TRUE(soon([&] {
            const std::string told = contentOf(desk.file("errors"));
            const size_t begin = told.find("http://127.0.0.1:");
            const size_t end = told.find("/\n", begin);
            if (begin != std::string::npos && end != std::string::npos)
                port = static_cast<int>(strtol(told.c_str() + begin + 17, nullptr, 10));
            return port != 0;
        })) << contentOf(desk.file("errors"));
        viewer = std::make_unique<Client>(port);
        ASSERT_EQ(viewer->authenticate(), std::string(4, '\0'));
        viewer->send("\x01");
        ASSERT_EQ(viewer->receive(24).size(), 24U);
        ASSERT_EQ(viewer->receive(13), "keyboard-tour");
    }

    std::string in(const std::string& state) const {
        return "cd '" + desk.directory.path + "' && OSTREL_ASSETS='" OSTREL_STAGED "' exec '" OSTREL_SIM "' --state " +
               state;
    }

    std::string recording() const { return contentOf(desk.file("tour.touch")); }

    // Until the program has got it: one that is busy gets nothing, and a person tries again.
    void stroke(const std::vector<std::pair<int, int>>& points, const std::string& line) {
        ASSERT_TRUE(soon([&] {
            const size_t before = recording().size();
            for (const auto& [x, y] : points)
                viewer->point(x, y, true);
            viewer->point(points.back().first, points.back().second, false);
            std::string more;
            EXPECT_TRUE(soon([&] {
                more = recording().substr(before);
                // A machine that is held up between press and release makes a long press of a tap.
                return more.find(line + "\n") != std::string::npos || more.find("release\n") != std::string::npos ||
                       more.find("has not got") != std::string::npos;
            }));
            return more.find("has not got") == std::string::npos;
        }));
    }

    void tap(int x, int y) { stroke({{x, y}}, "tap " + std::to_string(x) + " " + std::to_string(y)); }

    // Ends the simulator; its status as $? tells it.
    int end(int signal) {
        kill(pid, signal);
        int status = 0;
        waitpid(pid, &status, 0);
        pid = 0;
        return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }

    // What the panel shows where the recording goes on.
    Colours recordedPanel() const {
        const std::string bytes = contentOf(desk.file("recorded/fb0"));
        Colours colours;
        for (size_t i = 0; i + 1 < bytes.size(); i += 2)
            colours.push_back(ostrel::toRgb888(static_cast<uint16_t>(
                static_cast<unsigned char>(bytes[i]) | static_cast<unsigned char>(bytes[i + 1]) << 8)));
        return colours;
    }

    // Plays the recording with a shot behind it, at the same speed.
    Colours replay(const std::string& before = "") const {
        desk.write("replay.touch", recording() + "shot last.png\n");
        std::filesystem::remove(desk.file("last.png"));
        const Told told = desk.shell(
            "OSTREL_ASSETS='" OSTREL_STAGED "' " + before +
            " '" OSTREL_SIM "' --headless --fresh --speed 50 --state "
            "replayed --patience 300 --script replay.touch '" OSTREL_TOUR "'");
        EXPECT_EQ(told.errors, "");
        EXPECT_EQ(told.status, 0);
        try {
            return ostrel::readPng(desk.file("last.png"));
        } catch (const ostrel::Failure& failure) {
            ADD_FAILURE() << failure.what();
            return {};
        }
    }

    Desk desk;
    pid_t pid = 0;
    std::unique_ptr<Client> viewer;
};

// What a person needs to look. It becomes a pause if 300 ms of it are left when the program asks again.
constexpr useconds_t REST_US = 2000000;

TEST_F(Recorded, SessionPlaysToTheSameLastPictureAlsoOnAMachineTenTimesSlower) {
    start();
    tap(160, 221); // messages
    tap(80, 102);  // a box
    usleep(REST_US);
    tap(300, 230);                                         // closes it
    tap(27, 22);                                           // back
    tap(160, 61);                                          // the network's name
    stroke({{17, 130}, {60, 131}, {100, 132}}, "release"); // a q, with a slip of the finger
    tap(230, 223);                                         // which is deleted
    usleep(REST_US);
    tap(31, 161);  // a
    tap(283, 223); // done: saves, with a box that closes by itself
    tap(160, 93);  // another entry
    tap(27, 30);   // and back
    const std::string text = recording();
    EXPECT_NE(text.find("\npause "), std::string::npos) << text;
    EXPECT_NE(text.find("press 17 130\n"), std::string::npos) << text;
    EXPECT_NE(text.find("\nmove 100 132\n"), std::string::npos) << text;

    const Colours last = replay();
    ASSERT_EQ(last.size(), 76800U);
    EXPECT_TRUE(soon([&] { return recordedPanel() == last; }));
    const Told setting = desk.shell("'" OSTREL_SIM "' nvram --state recorded get main WifiName");
    EXPECT_EQ(setting.output, "Ostrela\n");
    EXPECT_EQ(end(SIGINT), 130);
    EXPECT_EQ(replay(), last); // with what the end of the recording has added
    EXPECT_EQ(replay("'" OSTREL_SLOW_MACHINE "' 10"), last);
}

TEST_F(Recorded, SessionIsCompleteWhenTheSimulatorIsKilled) {
    start();
    tap(160, 221);
    tap(80, 102);
    const Colours last = replay();
    EXPECT_TRUE(soon([&] { return recordedPanel() == last; }));
    EXPECT_EQ(end(SIGKILL), 137);
    EXPECT_EQ(replay(), last);
}

TEST_F(Recorded, SessionOfAProgramThatEndsExpectsThat) {
    start();
    tap(160, 221);
    tap(27, 22);
    stroke({{67, 22}}, "exit-code 0");
    int status = -1;
    waitpid(pid, &status, 0);
    pid = 0;
    EXPECT_EQ(WEXITSTATUS(status), 0);
    const std::string text = recording();
    EXPECT_EQ(text.substr(text.size() - 12), "exit-code 0\n");
    const Told told = desk.shell("OSTREL_ASSETS='" OSTREL_STAGED "' '" OSTREL_SIM
                                 "' --fresh --speed 50 --state replayed --script tour.touch '" OSTREL_TOUR "'");
    EXPECT_EQ(told.errors, "");
    EXPECT_EQ(told.status, 0);
}

TEST(Recording, ThatCannotBeMadeIsRefusedBeforeTheProgramStarts) {
    const Desk desk;
    const Told missing = desk.run("--web --record missing/t '" OSTREL_PROBE "' follow 1");
    EXPECT_EQ(missing.status, 125);
    EXPECT_EQ(
        missing.errors,
        "ostrel-sim: cannot write the recording missing/t: No such file or directory; make its directory first\n");
    desk.write("script", "quit\n");
    const Told both = desk.run("--record t --script script true");
    EXPECT_EQ(both.status, 2);
    EXPECT_EQ(
        both.errors, "ostrel-sim: --record writes what a person touches: leave out --script; see ostrel-sim --help\n");
    const Told faceless = desk.run("--record t --headless true");
    EXPECT_EQ(
        faceless.errors,
        "ostrel-sim: --record writes what a person touches: leave out --headless; see ostrel-sim --help\n");
}

} // namespace
