// The screen's timeout, and the idle counter that follows it.
#ifndef OSTREL_APPS_SETTINGS_IDLE_H
#define OSTREL_APPS_SETTINGS_IDLE_H

#include <string>

// What is stored for "never": a year. Programs that arm the counter whatever is stored do not darken at once, as with
// 0, and the ticks of a year still fit the counter.
constexpr const char* NEVER_SECONDS = "31536000";

// Whether the panel ever goes dark with this timeout in seconds, as it is stored. One that would darken it at once,
// before anyone could change it, is none.
bool darkens(const std::string& timeout);

// Arms or disarms the idle counter as the stored timeout says. Call it at the start and when the timeout may have
// changed.
void followTimeout();

#endif
