// Which addresses of the router make sense together.
#ifndef OSTREL_APPS_SETTINGS_NETWORK_RULES_H
#define OSTREL_APPS_SETTINGS_NETWORK_RULES_H

#include <string>

// Whether `mask` is an IPv4 network mask: ones, then zeros, with room for the router and another device.
bool isNetworkMask(const std::string& mask);

// The key of the refusal (notice.h) of what is wrong first with three addresses as a whole; null when nothing is.
const char* wrongWithNetwork(const std::string& address, const std::string& mask, const std::string& gateway);

#endif
