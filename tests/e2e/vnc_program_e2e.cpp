// A VNC viewer that others wrote: gvnccapture takes a picture of the panel.
#include "simulator/png_file.h"
#include "tests/e2e/vnc_client.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <pty.h>

namespace {

// Runs gvnccapture on a terminal of its own, where it asks for the password, and gives its exit status.
int capture(int port, const std::string& picture, const std::string& password) {
    const std::string display = "127.0.0.1:" + std::to_string(port - 5900);
    int terminal = -1;
    const pid_t pid = forkpty(&terminal, nullptr, nullptr, nullptr);
    if (pid == 0) {
        execl(GVNCCAPTURE, "gvnccapture", display.c_str(), picture.c_str(), nullptr);
        _exit(127);
    }
    fcntl(terminal, F_SETFL, O_NONBLOCK);
    int status = -1;
    // What is typed before it asks is thrown away: typed again until it is done.
    const std::string typed = password + "\n";
    int looks = 0;
    const bool ended = soon([&] {
        char said[1024];
        while (read(terminal, said, sizeof said) > 0) {
        }
        if (++looks % 50 == 0) {
            EXPECT_GE(write(terminal, typed.data(), typed.size()), 0);
        }
        return waitpid(pid, &status, WNOHANG) == pid;
    });
    if (!ended) {
        kill(pid, SIGKILL);
        waitpid(pid, &status, 0);
    }
    close(terminal);
    return ended && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

class VncProgram : public testing::TestWithParam<const char*> {};

TEST_P(VncProgram, TakesThePictureThatTheSimulatorTakes) {
    const TemporaryDirectory files;
    std::ofstream(files.file("script")) << "tap 100 50\nshot " << files.file("shot.png") << "\nwait 86400000\n";
    const RunningSimulator simulator("follow 9", "--script '" + files.file("script") + "'", GetParam());
    ASSERT_TRUE(soon([&] { return !contentOf(files.file("shot.png")).empty(); })) << simulator.errors();
    ASSERT_EQ(capture(simulator.port, files.file("capture.png"), GetParam()), 0);
    const std::vector<uint32_t> shot = ostrel::readPng(files.file("shot.png"));
    const std::vector<uint32_t> captured = ostrel::readPng(files.file("capture.png"));
    ASSERT_EQ(shot.size(), 76800U);
    ASSERT_EQ(captured.size(), 76800U);
    for (size_t i = 0; i < shot.size(); ++i)
        ASSERT_EQ(captured[i], shot[i]) << "at " << i % 320 << "," << i / 320;
    EXPECT_EQ(captured[50 * 320 + 100], 0xFFFFFFU); // where it was touched
}

INSTANTIATE_TEST_SUITE_P(WithAndWithoutAPassword, VncProgram, testing::Values("", "r0ut3r!"));

TEST(VncProgramWithAWrongPassword, GetsNoPicture) {
    const TemporaryDirectory files;
    const RunningSimulator simulator("follow 9", "", "r0ut3r!");
    ASSERT_NE(simulator.port, 0);
    EXPECT_EQ(capture(simulator.port, files.file("capture.png"), "router"), 1);
    EXPECT_EQ(contentOf(files.file("capture.png")), "");
    EXPECT_TRUE(Client(simulator.port).shakeHands("r0ut3r!"));
}

} // namespace
