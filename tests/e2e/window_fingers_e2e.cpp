// Fingers on the window. The X server's test extension has none: these are put into SDL's own queue, as a touch
// screen's events are.
#include "simulator/window/sdl_window.h"
#include "tests/e2e/windowed_run.h"
#include "tests/unit/simulator/stream_reader.h"

#include <SDL.h>
#include <gtest/gtest.h>
#include <optional>
#include <sys/stat.h>

using namespace ostrel;

namespace {

class WindowFingers : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_NE(desktop.name(), "") << "Xvfb does not start";
        setenv("DISPLAY", desktop.name().c_str(), 1);
        unsetenv("WAYLAND_DISPLAY");
        unsetenv("SDL_VIDEODRIVER");
        const Descriptor framebuffer(open(directory.file("fb0").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
        ASSERT_EQ(ftruncate(framebuffer.get(), 153600), 0);
        ASSERT_EQ(mkfifo(directory.file("event0").c_str(), 0600), 0);
        panel.emplace(directory.file("fb0"), page);
        stream.emplace(directory.file("event0"), Bits::Unknown, loop, page);
        reader.emplace(directory.file("event0"));
        window.emplace("fingers", loop, *panel, *stream, WindowRequests{[] {}, [] {}});
    }

    static void put(SDL_Event event) { EXPECT_EQ(SDL_PushEvent(&event), 1); }

    // `x` and `y` are shares of the window, which is 960 by 720.
    static void finger(uint32_t type, SDL_FingerID number, float x, float y) {
        SDL_Event event = {};
        event.tfinger.type = type;
        event.tfinger.fingerId = number;
        event.tfinger.x = x;
        event.tfinger.y = y;
        put(event);
    }

    // The mouse that SDL makes of a finger.
    static void imitatedButton(uint32_t type, uint8_t state) {
        SDL_Event event = {};
        event.button.type = type;
        event.button.which = SDL_TOUCH_MOUSEID;
        event.button.button = SDL_BUTTON_LEFT;
        event.button.state = state;
        put(event);
    }

    // Everything that has come, as soon as it is as long as `expected`.
    std::string told(const std::string& expected) {
        std::string text;
        soon([&] {
            loop.runOnce(10);
            const std::string part = reader->read();
            text += (text.empty() || part.empty() ? "" : " ") + part;
            return text.size() >= expected.size();
        });
        return text;
    }

    XDesktop desktop;
    TemporaryDirectory directory;
    EventLoop loop;
    SharedPage page = {};
    std::optional<Panel> panel;
    std::optional<TouchStream> stream;
    std::optional<StreamReader> reader;
    std::optional<SdlWindow> window;
};

TEST_F(WindowFingers, AreThePenAlsoBeyondTheWindow) {
    finger(SDL_FINGERDOWN, 1, 0.5F, 0.25F);
    finger(SDL_FINGERMOTION, 1, 0.25F, 0.5F);
    finger(SDL_FINGERMOTION, 1, 1.2F, -0.3F);
    finger(SDL_FINGERUP, 1, 1.2F, -0.3F);
    const std::string expected = "X160 Y60 down | X80 Y120 | X319 Y0 | up |";
    EXPECT_EQ(told(expected), expected);
}

TEST_F(WindowFingers, CountOnceAndOneAtATime) {
    finger(SDL_FINGERDOWN, 1, 0.5F, 0.25F);
    imitatedButton(SDL_MOUSEBUTTONDOWN, SDL_PRESSED);
    finger(SDL_FINGERDOWN, 2, 0.75F, 0.75F);
    finger(SDL_FINGERMOTION, 2, 0.1F, 0.1F);
    imitatedButton(SDL_MOUSEBUTTONUP, SDL_RELEASED);
    finger(SDL_FINGERUP, 2, 0.1F, 0.1F);
    finger(SDL_FINGERUP, 1, 0.5F, 0.25F);
    finger(SDL_FINGERDOWN, 3, 0.0F, 0.0F);
    finger(SDL_FINGERUP, 3, 0.0F, 0.0F);
    const std::string expected = "X160 Y60 down | up | X0 Y0 down | up |";
    EXPECT_EQ(told(expected), expected);
}

} // namespace
