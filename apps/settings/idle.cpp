#include "idle.h"

#include "store.h"

#include <ostrel.h>

#include <cstdlib>

void followTimeout() {
    const long seconds = std::strtol(readSetting(setting::SCREEN_TIMEOUT).c_str(), nullptr, 10);
    cntEn = seconds > 0 && seconds < std::strtol(NEVER_SECONDS, nullptr, 10) ? 1 : 0;
}
