// SDL's connection to the display, as a scope.
#ifndef OSTREL_SIMULATOR_WINDOW_SDL_DISPLAY_H
#define OSTREL_SIMULATOR_WINDOW_SDL_DISPLAY_H

#include "simulator/window/placement.h"

#include <SDL.h>
#include <string>

namespace ostrel {

class SdlDisplay {
  public:
    // Throws Failure when there is no display that shows windows.
    SdlDisplay();
    ~SdlDisplay();
    SdlDisplay(const SdlDisplay&) = delete;
    SdlDisplay& operator=(const SdlDisplay&) = delete;

    // As the environment names what is tried.
    static std::string names();

    // What the desktop leaves to windows, in the units of window sizes.
    static Extent usableScreen();

    // Readable when something happened to `window`.
    static int descriptor(SDL_Window* window);
};

} // namespace ostrel

#endif
