#include "idle.h"

#include "store.h"

#include <ostrel.h>

#include <cstdlib>

bool darkens(const std::string& timeout) {
    const long seconds = std::strtol(timeout.c_str(), nullptr, 10);
    return seconds > 0 && seconds < std::strtol(NEVER_SECONDS, nullptr, 10);
}

void followTimeout() {
    cntEn = darkens(readSetting(setting::SCREEN_TIMEOUT)) ? 1 : 0;
}
