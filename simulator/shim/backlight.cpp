#include "simulator/shim/device.h"
#include "simulator/shim/requests.h"
#include "simulator/store/log.h"

#include <cerrno>

namespace ostrel {
namespace {

constexpr unsigned long BACKLIGHT_ON = 10;
constexpr unsigned long BACKLIGHT_OFF = 11;

} // namespace

int requestBacklight(unsigned long request, void* /*argument*/) {
    if (request != BACKLIGHT_ON && request != BACKLIGHT_OFF)
        return -ENOTTY;
    sharedPage()->backlightOff = request == BACKLIGHT_OFF ? 1 : 0;
    logLine(stateDirectory(), "backlight %s", request == BACKLIGHT_ON ? "on" : "off");
    return 0;
}

} // namespace ostrel
