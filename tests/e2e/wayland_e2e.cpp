// The panel in a window on a Wayland desktop, which is itself a window of a test's X server: what it shows is seen
// there.
#include "tests/e2e/windowed_run.h"

#include <cstdlib>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <wayland-client-core.h>

namespace {

const std::string PROBE = "'" OSTREL_PROBE "' ";

// A desktop of 960 by 720 whose one window fills it.
class WaylandDesktop {
  public:
    explicit WaylandDesktop(const XDesktop& screen) {
        server = fork();
        if (server == 0) {
            prctl(PR_SET_PDEATHSIG, SIGKILL);
            const int silence = open("/dev/null", O_WRONLY);
            dup2(silence, STDOUT_FILENO);
            dup2(silence, STDERR_FILENO);
            setenv("DISPLAY", screen.name().c_str(), 1);
            setenv("XDG_RUNTIME_DIR", directory.path.c_str(), 1);
            execl(
                WESTON, WESTON, "--no-config", "--backend=x11-backend.so", "--use-pixman", "--shell=kiosk-shell.so",
                "--idle-time=0", "--width=960", "--height=720", "--socket=desktop", nullptr);
            _exit(127);
        }
    }
    ~WaylandDesktop() {
        kill(server, SIGTERM);
        waitpid(server, nullptr, 0);
    }
    WaylandDesktop(const WaylandDesktop&) = delete;
    WaylandDesktop& operator=(const WaylandDesktop&) = delete;

    // It lets programs in.
    bool isReady() const {
        wl_display* display = wl_display_connect(directory.file("desktop").c_str());
        if (display != nullptr)
            wl_display_disconnect(display);
        return display != nullptr;
    }

    // For the shell.
    std::string environment() const {
        return "DISPLAY= WAYLAND_DISPLAY=desktop XDG_RUNTIME_DIR='" + directory.path + "'";
    }

  private:
    TemporaryDirectory directory;
    pid_t server = 0;
};

class WaylandWindow : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_NE(screen.name(), "") << "Xvfb does not start";
        ASSERT_TRUE(soon([&] { return desktop.isReady() && screen.window() != 0; })) << "weston does not start";
    }

    // But for what the desktop's own pointer hides, wherever it is.
    static bool showsProbe(const Seen& seen) {
        constexpr int POINTERS_PIXELS = 32 * 32;
        int different = 0;
        for (int y = 0; y < seen.height; ++y)
            for (int x = 0; x < seen.width; ++x)
                different += seen.at(x, y) != painted(x / 3, y / 3) ? 1 : 0;
        return seen.width == 960 && seen.height == 720 && different <= POINTERS_PIXELS;
    }

    XDesktop screen;
    WaylandDesktop desktop{screen};
};

TEST_F(WaylandWindow, ShowsThePanel) {
    const WindowedRun run(desktop.environment(), "--window " + PROBE + "follow 9");
    EXPECT_TRUE(soon([&] { return showsProbe(screen.look()); })) << run.errors();
    EXPECT_EQ(run.errors(), "");
}

// SDL is kept from the only way it has to draw there.
TEST_F(WaylandWindow, ThatCannotBeDrawnInIsNotOpened) {
    const std::string withoutTextures = desktop.environment() + " SDL_FRAMEBUFFER_ACCELERATION=0";
    const std::string sentence =
        "ostrel-sim: cannot draw in a window on the display desktop; use --web or --headless\n";
    WindowedRun asked(withoutTextures, "--window " + PROBE + "follow 1");
    EXPECT_EQ(asked.status(), 125);
    EXPECT_EQ(asked.errors(), sentence);
    WindowedRun unasked(withoutTextures, "true");
    EXPECT_EQ(unasked.status(), 0);
    const std::string panel = sentence + "ostrel-sim: the panel is at ";
    EXPECT_EQ(unasked.errors().substr(0, panel.size()), panel);
}

} // namespace
