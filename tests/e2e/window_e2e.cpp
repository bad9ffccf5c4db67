// The panel in a window, on an X server without a window manager.
#include "simulator/png_file.h"
#include "tests/e2e/windowed_run.h"

#include <gtest/gtest.h>

namespace {

constexpr uint32_t SURROUND = 0x26292E;
const std::string PROBE = "'" OSTREL_PROBE "' ";
const std::string SETTINGS = "'" OSTREL_SETTINGS_PROBE "' ";

// The probe's picture, `zoom` times as large with its first pixel at `left`, `top`, and nothing else.
bool showsProbe(const Seen& seen, int zoom, int left, int top) {
    for (int y = 0; y < seen.height; ++y)
        for (int x = 0; x < seen.width; ++x) {
            const bool isPanel = x >= left && x < left + zoom * 320 && y >= top && y < top + zoom * 240;
            const uint32_t expected = isPanel ? painted((x - left) / zoom, (y - top) / zoom) : SURROUND;
            if (seen.at(x, y) != expected)
                return false;
        }
    return seen.width > 0;
}

class WindowTest : public testing::Test {
  protected:
    void SetUp() override { ASSERT_NE(desktop.name(), "") << "Xvfb does not start"; }

    bool isShown() const {
        return soon([&] { return showsProbe(desktop.look(), 3, 0, 0); });
    }

    XDesktop desktop;
};

TEST_F(WindowTest, ShowsEveryColourInBlocksAsLargeAsTheScreenAllows) {
    const WindowedRun run(desktop, "--window " + PROBE + "follow 9");
    EXPECT_TRUE(isShown());
    EXPECT_EQ(desktop.look().width, 960);
    EXPECT_EQ(desktop.look().height, 720);
    EXPECT_EQ(desktop.title(), "probe (running) - ostrel-sim");
    EXPECT_EQ(run.errors(), "");
}

TEST_F(WindowTest, IsTheFaceWhereThereIsADisplay) {
    const WindowedRun run(desktop, PROBE + "follow 9");
    EXPECT_TRUE(isShown());
    EXPECT_EQ(run.errors(), "");
}

TEST_F(WindowTest, PassesClicksAndDragsOn) {
    const WindowedRun run(desktop, "--window " + PROBE + "follow 9");
    ASSERT_TRUE(isShown());
    desktop.click(30, 60);
    EXPECT_TRUE(run.says("down 10 20\nup\n"));
    desktop.click(959, 719);
    EXPECT_TRUE(run.says("down 10 20\nup\ndown 319 239\nup\n"));
    desktop.pointAt(300, 150);
    desktop.button(true);
    desktop.pointAt(303, 151);
    desktop.pointAt(305, 151); // the same pixel of the panel
    desktop.pointAt(306, 300);
    desktop.pointAt(-50, 300); // beside the window
    desktop.pointAt(-60, -60);
    desktop.button(false);
    const std::string told = "down 10 20\nup\ndown 319 239\nup\n"
                             "down 100 50\nmove 101 50\nmove 102 100\nmove 0 100\nmove 0 0\nup\n";
    EXPECT_TRUE(run.says(told)) << run.output();
    desktop.pointAt(600, 600);
    desktop.button(true, 3); // the pen is the left button
    desktop.button(false, 3);
    desktop.click(600, 600);
    EXPECT_TRUE(run.says(told + "down 200 200\nup\n")) << run.output();
}

TEST_F(WindowTest, FollowsItsSizeWithZoomAndPointer) {
    const WindowedRun run(desktop, "--window " + PROBE + "follow 9");
    ASSERT_TRUE(isShown());
    desktop.resize(700, 800);
    EXPECT_TRUE(soon([&] { return showsProbe(desktop.look(), 2, 30, 160); }));
    desktop.click(29, 160); // the surround
    desktop.click(50, 200);
    EXPECT_TRUE(run.says("down 10 20\nup\n")) << run.output();
    desktop.resize(320, 240);
    EXPECT_TRUE(soon([&] { return desktop.pixel(319, 239) == painted(319, 239); }));
    desktop.click(318, 5);
    EXPECT_TRUE(run.says("down 10 20\nup\ndown 318 5\nup\n")) << run.output();
    desktop.resize(160, 120); // smaller than the panel, which is shrunk
    EXPECT_TRUE(soon([&] { return desktop.pixel(159, 119) == painted(318, 238); }));
    desktop.click(50, 100);
    EXPECT_TRUE(run.says("down 10 20\nup\ndown 318 5\nup\ndown 100 200\nup\n")) << run.output();
}

TEST_F(WindowTest, SavesPicturesThatEqualTheScriptsShots) {
    const WindowedRun run(desktop, "--window " + PROBE + "follow 9");
    ASSERT_TRUE(isShown());
    run.desk.write("probe-2.png", "mine");
    desktop.pointAt(480, 360);
    desktop.type(key::F12);
    EXPECT_TRUE(run.complains("ostrel-sim: saved probe-1.png\n"));
    desktop.type(key::F12);
    EXPECT_TRUE(run.complains("ostrel-sim: saved probe-1.png\nostrel-sim: saved probe-3.png\n"));
    const Desk other;
    EXPECT_EQ(other.play("shot shot.png\nquit\n", "follow 9").status, 0);
    EXPECT_EQ(contentOf(run.desk.file("probe-1.png")), contentOf(other.file("shot.png")));
    EXPECT_EQ(contentOf(run.desk.file("probe-3.png")), contentOf(other.file("shot.png")));
    EXPECT_EQ(contentOf(run.desk.file("probe-2.png")), "mine");
    // Each pixel of the panel as the window shows it.
    const std::vector<uint32_t> saved = ostrel::readPng(run.desk.file("probe-1.png"));
    const Seen seen = desktop.look();
    ASSERT_EQ(seen.width, 960);
    for (int y = 0; y < 240; ++y)
        for (int x = 0; x < 320; ++x)
            ASSERT_EQ(saved[static_cast<size_t>(y * 320 + x)], seen.at(3 * x + 1, 3 * y + 1)) << x << "," << y;
}

TEST_F(WindowTest, IsDarkWhileThePanelIs) {
    const WindowedRun run(
        desktop, "--window sh -c \"" + PROBE + "follow 1; " + SETTINGS + "backlight 11; " + PROBE + "follow 1; " +
                     SETTINGS + "backlight 10; " + PROBE + "follow 9\"");
    ASSERT_TRUE(isShown());
    EXPECT_EQ(desktop.title(), "sh (running) - ostrel-sim");
    desktop.click(30, 60);
    EXPECT_TRUE(soon([&] { return desktop.title() == "sh (running, panel dark) - ostrel-sim"; }));
    EXPECT_TRUE(soon([&] {
        const Seen seen = desktop.look();
        return seen.pixels == std::vector<uint32_t>(960 * 720, 0);
    }));
    EXPECT_TRUE(run.says("down 10 20\nup\n")) << run.output();
    desktop.click(60, 60);
    EXPECT_TRUE(soon([&] { return desktop.title() == "sh (running) - ostrel-sim"; }));
    EXPECT_TRUE(isShown());
    EXPECT_EQ(run.output(), "down 10 20\nup\ndown 20 20\nup\n");
}

TEST_F(WindowTest, RecordsWhatIsClickedForAScript) {
    WindowedRun run(desktop, "--window --record clicks.touch " + PROBE + "follow 9");
    ASSERT_TRUE(isShown());
    desktop.click(30, 60);
    EXPECT_TRUE(run.says("down 10 20\nup\n"));
    desktop.closeWindow();
    EXPECT_EQ(run.status(), 0);
    const Told told = run.desk.run("--script clicks.touch " + PROBE + "follow 9");
    EXPECT_EQ(told.errors, "");
    EXPECT_EQ(told.status, 0);
    EXPECT_EQ(told.output, "down 10 20\nup\n");
}

// The program is another one, the router the same: what was set and not committed is still there.
TEST_F(WindowTest, RestartsTheProgramAndKeepsTheSettings) {
    const WindowedRun run(
        desktop, "--window sh -c \"" + SETTINGS + "get 1 Nothing set 1 Nothing kept; exec " + PROBE + "follow 9\"");
    ASSERT_TRUE(isShown());
    EXPECT_TRUE(run.says("Nothing=\n"));
    desktop.type(key::R); // without Ctrl it is nothing
    desktop.click(30, 60);
    EXPECT_TRUE(run.says("Nothing=\ndown 10 20\nup\n"));
    desktop.type(key::R, key::CONTROL);
    EXPECT_TRUE(run.says("Nothing=\ndown 10 20\nup\nNothing=kept\n"));
    EXPECT_TRUE(isShown());
    EXPECT_TRUE(soon([&] { return desktop.title() == "sh (running) - ostrel-sim"; }));
    desktop.click(60, 60);
    EXPECT_TRUE(run.says("Nothing=\ndown 10 20\nup\nNothing=kept\ndown 20 20\nup\n"));
    EXPECT_EQ(run.errors(), "");
}

// What takes long here waits for the very line that tells of it.
TEST_F(WindowTest, TellsWhenARestartTakesLong) {
    const Desk files;
    files.write(
        "program", "trap 'until grep -q \"waiting for sh to end\" \"$1\"; do sleep 0.05; done; exit' TERM\n" + PROBE +
                       "follow 0\nsleep 0.5\necho ready\nwhile :; do sleep 0.05; done\n");
    const WindowedRun run(desktop, "--verbose --window sh '" + files.file("program") + "' \"$PWD/errors\"");
    EXPECT_TRUE(run.says("ready\n"));
    ASSERT_TRUE(isShown());
    desktop.type(key::R, key::CONTROL);
    EXPECT_TRUE(run.says("ready\nready\n")) << run.errors();
    EXPECT_NE(run.errors().find("ostrel-sim: waiting for sh to end\n"), std::string::npos) << run.errors();
}

TEST_F(WindowTest, EndsProgramAndSimulatorWhenItIsClosed) {
    WindowedRun run(desktop, "--window " + PROBE + "follow 9");
    ASSERT_TRUE(isShown());
    desktop.closeWindow();
    EXPECT_EQ(run.status(), 0);
    EXPECT_EQ(run.errors(), "");
    EXPECT_TRUE(soon([&] { return desktop.window() == 0; }));
}

TEST_F(WindowTest, EndsEverythingWhenTheDisplayGoesAway) {
    WindowedRun run(desktop, "--window " + PROBE + "follow 9");
    ASSERT_TRUE(isShown());
    desktop.stop();
    EXPECT_EQ(run.status(), 125);
    EXPECT_EQ(run.errors(), "ostrel-sim: the display is gone, and with it the window\n");
}

TEST_F(WindowTest, ClosesWithTheProgramAndPassesItsStatusOn) {
    WindowedRun run(desktop, "--window sh -c '" OSTREL_PROBE " follow 1; exit 3'");
    ASSERT_TRUE(isShown());
    desktop.click(30, 60);
    EXPECT_EQ(run.status(), 3);
    EXPECT_EQ(run.errors(), "ostrel-sim: sh exited with status 3\n");
    EXPECT_TRUE(soon([&] { return desktop.window() == 0; }));
}

TEST_F(WindowTest, ShowsAScriptThatFailsWhenItIsCutShort) {
    const Desk files;
    files.write("story", "tap 5 5\nwait 3600000\ntap 6 6\n");
    WindowedRun run(desktop, "--window --script '" + files.file("story") + "' " + PROBE + "follow 9");
    EXPECT_TRUE(run.says("down 5 5\nup\n"));
    ASSERT_TRUE(soon([&] { return desktop.pixel(15, 15) == 0xFFFFFF; }));
    desktop.pointAt(480, 360);
    desktop.type(key::R, key::CONTROL);
    const std::string refusal = "ostrel-sim: Ctrl+R restarts the program only when no script is played or recorded\n";
    EXPECT_TRUE(run.complains(refusal));
    desktop.closeWindow();
    EXPECT_EQ(run.status(), 1);
    EXPECT_EQ(
        run.errors(),
        refusal + "ostrel-sim: " + files.file("story") + ":2: the window was closed before 'wait 3600000' was done\n");
}

// A screen of sixteen bits shows the panel's own colours.
TEST(WindowOnAnOldScreen, ShowsThePanelsOwnPixels) {
    const XDesktop desktop("800x600x16");
    ASSERT_NE(desktop.name(), "");
    const WindowedRun run(desktop, "--window " + PROBE + "follow 9");
    EXPECT_TRUE(soon([&] {
        const Seen seen = desktop.look();
        bool isSame = seen.width == 640 && seen.height == 480;
        for (int i = 0; isSame && i < 640 * 480; ++i) {
            const int x = i % 640 / 2;
            const int y = i / 640 / 2;
            isSame = seen.pixels[static_cast<size_t>(i)] ==
                     static_cast<uint32_t>((x / 10) << 11 | (y * 63 / 239) << 5 | ((x + y) & 31));
        }
        return isSame;
    }));
}

TEST(WindowWithoutADisplay, SaysSoAndStartsNothing) {
    const Desk desk;
    const struct {
        const char* environment;
        const char* sentence;
    } cases[] = {
        {"env -u DISPLAY -u WAYLAND_DISPLAY -u SDL_VIDEODRIVER",
         "there is no display for a window: neither $DISPLAY nor $WAYLAND_DISPLAY is set; use --web or --headless"},
        {"env -u WAYLAND_DISPLAY -u SDL_VIDEODRIVER DISPLAY=:54321",
         "cannot open a window on the display :54321; use --web or --headless"},
        {"env -u WAYLAND_DISPLAY DISPLAY=:54321 SDL_VIDEODRIVER=dummy",
         "SDL_VIDEODRIVER=dummy shows no windows here; unset it, or use --web or --headless"},
        {"env -u WAYLAND_DISPLAY DISPLAY=:54321 SDL_VIDEODRIVER=offscreen",
         "SDL_VIDEODRIVER=offscreen shows no windows here; unset it, or use --web or --headless"},
        {"env -u WAYLAND_DISPLAY DISPLAY=:54321 SDL_VIDEODRIVER=nonsense",
         "SDL_VIDEODRIVER=nonsense shows no windows here; unset it, or use --web or --headless"},
    };
    for (const auto& [environment, sentence] : cases) {
        const Told told = desk.run("--window sh -c 'echo started'", environment);
        EXPECT_EQ(told.status, 125) << environment;
        EXPECT_EQ(told.output, "") << environment;
        EXPECT_EQ(told.errors, std::string("ostrel-sim: ") + sentence + "\n");
    }
}

// Nobody asked for a window: it is said, and the panel is on the web.
TEST(WindowWithoutADisplay, GivesWayToTheWebPanel) {
    const Desk desk;
    const Told told = desk.run("true", "env -u WAYLAND_DISPLAY -u SDL_VIDEODRIVER DISPLAY=:54321");
    EXPECT_EQ(told.status, 0);
    const std::string sentence =
        "ostrel-sim: cannot open a window on the display :54321; use --web or --headless\nostrel-sim: the panel is at ";
    EXPECT_EQ(told.errors.substr(0, sentence.size()), sentence);
}

} // namespace
