#include "simulator/window/sdl_display.h"

#include "simulator/failure.h"
#include "simulator/simulator.h"
#include "simulator/window/sdl_window.h"

#include <SDL_syswm.h>
#include <cstdlib>
#include <cstring>
#include <string>
#include <unistd.h>
#include <wayland-client-core.h>

namespace ostrel {
namespace {

constexpr const char* WAY_OUT = "; use --web or --headless";

// SDL's own defaults suit games: they keep the screen awake, switch the desktop's effects off and take signals.
constexpr struct {
    const char* name;
    const char* value;
} HINTS[] = {
    {SDL_HINT_APP_NAME, "ostrel-sim"},
    {SDL_HINT_VIDEO_ALLOW_SCREENSAVER, "1"},
    {SDL_HINT_VIDEO_X11_NET_WM_BYPASS_COMPOSITOR, "0"},
    {SDL_HINT_NO_SIGNAL_HANDLERS, "1"},
    {SDL_HINT_TOUCH_MOUSE_EVENTS, "0"},
    {SDL_HINT_MOUSE_TOUCH_EVENTS, "0"},
};

std::string variable(const char* name) {
    const char* value = getenv(name); // NOLINT(concurrency-mt-unsafe): nothing here changes the environment meanwhile
    return value != nullptr ? value : "";
}

// SDL by itself would go on to drivers that show nothing, or that take the whole console.
std::string driversForDisplays() {
    const std::string x11 = variable("DISPLAY").empty() ? "" : "x11";
    const std::string wayland = variable("WAYLAND_DISPLAY").empty() ? "" : "wayland";
    return x11 + (x11.empty() || wayland.empty() ? "" : ",") + wayland;
}

// X gives no other choice than to end here; everything in the view ends with this process.
int endWithoutDisplay(Display* /*display*/) {
    say("the display is gone, and with it the window");
    _exit(exit_status::SIMULATOR_FAILED);
}

bool showsWindows(const char* driver) {
    return driver != nullptr && (strcmp(driver, "x11") == 0 || strcmp(driver, "wayland") == 0);
}

} // namespace

bool hasDisplay() {
    return !driversForDisplays().empty();
}

SdlDisplay::SdlDisplay() {
    if (!hasDisplay())
        throw Failure(
            std::string("there is no display for a window: neither $DISPLAY nor $WAYLAND_DISPLAY is set") + WAY_OUT);
    for (const auto& hint : HINTS)
        SDL_SetHint(hint.name, hint.value);
    SDL_SetHint(SDL_HINT_VIDEODRIVER, driversForDisplays().c_str()); // $SDL_VIDEODRIVER wins
    const bool isUp = SDL_InitSubSystem(SDL_INIT_VIDEO) == 0;
    const char* driver = SDL_GetCurrentVideoDriver();
    if (isUp && showsWindows(driver)) {
        // On X the picture travels through shared memory; SDL draws on Wayland with textures only.
        if (strcmp(driver, "x11") == 0)
            SDL_SetHint(SDL_HINT_FRAMEBUFFER_ACCELERATION, "0");
        XSetIOErrorHandler(endWithoutDisplay);
        SDL_StopTextInput(); // keys are keys here, no matter which input method the desktop has
        return;
    }
    const std::string found = driver != nullptr ? driver : variable("SDL_VIDEODRIVER");
    if (isUp)
        SDL_QuitSubSystem(SDL_INIT_VIDEO);
    if (!variable("SDL_VIDEODRIVER").empty())
        throw Failure("SDL_VIDEODRIVER=" + found + " shows no windows here; unset it, or" + (WAY_OUT + 1));
    throw Failure("cannot open a window on the display " + names() + WAY_OUT);
}

SdlDisplay::~SdlDisplay() {
    SDL_QuitSubSystem(SDL_INIT_VIDEO);
    SDL_Quit();
}

std::string SdlDisplay::names() {
    const std::string x11 = variable("DISPLAY");
    const std::string wayland = variable("WAYLAND_DISPLAY");
    return x11 + (x11.empty() || wayland.empty() ? "" : " or ") + wayland;
}

Extent SdlDisplay::usableScreen() {
    SDL_Rect bounds = {};
    if (SDL_GetDisplayUsableBounds(0, &bounds) != 0)
        return {};
    return {bounds.w, bounds.h};
}

int SdlDisplay::descriptor(SDL_Window* window) {
    SDL_SysWMinfo information = {};
    SDL_VERSION(&information.version);
    if (SDL_GetWindowWMInfo(window, &information) != SDL_TRUE)
        return -1;
    if (information.subsystem == SDL_SYSWM_WAYLAND)
        return wl_display_get_fd(information.info.wl.display);
    return ConnectionNumber(information.info.x11.display);
}

} // namespace ostrel
