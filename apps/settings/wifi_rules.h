// What a Wi-Fi network takes as its name and its password. The rules give the key of the refusal (notice.h), or null
// when the text is right.
#ifndef OSTREL_APPS_SETTINGS_WIFI_RULES_H
#define OSTREL_APPS_SETTINGS_WIFI_RULES_H

#include <string>

enum : int {
    WIFI_NAME_BYTES = 32, // the name is sent as bytes, so that letters beyond plain ASCII count twice and more
    WIFI_PASSWORD_LEAST = 8,
    WIFI_PASSWORD_MOST = 63,
};

// Of a network's name: 1 to 32 bytes.
const char* wrongWithWifiName(const std::string& name);

// Of the password of a network that has one: 8 to 63 printable ASCII characters.
const char* wrongWithWifiPassword(const std::string& password);

#endif
