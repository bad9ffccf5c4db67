// The panel in a window of the desktop.
#ifndef OSTREL_SIMULATOR_WINDOW_SDL_WINDOW_H
#define OSTREL_SIMULATOR_WINDOW_SDL_WINDOW_H

#include "simulator/event_loop.h"
#include "simulator/panel.h"
#include "simulator/touch_stream.h"

#include <functional>
#include <memory>
#include <string>

namespace ostrel {

// The environment names a display, which may still turn out to be out of reach.
bool hasDisplay();

// What the user asks for with the window. Called from the loop.
struct WindowRequests {
    std::function<void()> close;
    std::function<void()> restart;
};

class SdlWindow {
  public:
    // `program` is its name, for the title and the names of pictures. Throws Failure when there is no display, or one
    // on which nobody would see the window.
    SdlWindow(
        const std::string& program, EventLoop& loop, Panel& panel, TouchStream& stream, const WindowRequests& requests);
    ~SdlWindow();
    SdlWindow(const SdlWindow&) = delete;
    SdlWindow& operator=(const SdlWindow&) = delete;

    // What the title says of the program; a panel that is dark is told beside it.
    void setState(const std::string& state);

  private:
    struct Desktop;
    std::unique_ptr<Desktop> desktop;
};

} // namespace ostrel

#endif
