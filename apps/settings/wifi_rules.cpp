#include "wifi_rules.h"

#include <algorithm>

const char* wrongWithWifiName(const std::string& name) {
    if (name.empty())
        return "wifi_no_name";
    return name.size() > WIFI_NAME_BYTES ? "wifi_name_long" : nullptr;
}

const char* wrongWithWifiPassword(const std::string& password) {
    const bool isPlain = std::all_of(password.begin(), password.end(), [](char c) { return c >= ' ' && c <= '~'; });
    if (!isPlain)
        return "wifi_signs";
    if (password.size() < WIFI_PASSWORD_LEAST)
        return "wifi_short";
    return password.size() > WIFI_PASSWORD_MOST ? "wifi_long" : nullptr;
}
