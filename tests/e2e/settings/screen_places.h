// Where the Screen page and the PIN's page are touched.
#ifndef OSTREL_TESTS_E2E_SETTINGS_SCREEN_PLACES_H
#define OSTREL_TESTS_E2E_SETTINGS_SCREEN_PLACES_H

#include "tests/e2e/settings/settings_desk.h"

// On the home page.
constexpr Point SCREEN = {82, 141};

constexpr Point HALF_AN_HOUR = {160, 123};
constexpr Point NEVER = {262, 123};
constexpr Point LOCK = {160, 169};
constexpr Point CHANGE_PIN = {96, 215};
constexpr Point SCREEN_SAVE = {251, 215};

constexpr Point CURRENT_PIN = {160, 108};
constexpr Point NEW_PIN = {160, 158};
constexpr Point REPEATED_PIN = {160, 208};

#endif
