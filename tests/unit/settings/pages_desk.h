// The pages on a desk: a router with factory settings, English texts, and fingers. Calls stand in one log.
#ifndef OSTREL_TESTS_UNIT_SETTINGS_PAGES_DESK_H
#define OSTREL_TESTS_UNIT_SETTINGS_PAGES_DESK_H

#include "apps/settings/pages.h"
#include "tests/support/desk.h"

#include <cstdio>
#include <cstring>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

class PagesDesk : public Desk {
  protected:
    PagesDesk() {
        fakeSettings().working[1] = {{"Language", "english"},
                                     {"WifiName", "Ostrel"},
                                     {"WifiSecurity", "wpa2"},
                                     {"WifiPassword", "change-me-soon"},
                                     {"DHCP", "0"},
                                     {"IPAddress", "192.168.1.1"},
                                     {"NetMask", "255.255.255.0"},
                                     {"Gateway", "192.168.1.254"}};
        fakeSettings().working[2] = {{"ShowPass", "0"}, {"ScreenTimeout", "300"}};
        fakeSettings().committed = fakeSettings().working;
        fakeSleep().log = false;
        std::snprintf(lang.file, sizeof lang.file, "%s", OSTREL_LANGUAGES "/english.xml");
        [[maybe_unused]] static const bool prepared = [] {
            preparePages();
            const Modal images; // the first one loads them
            return true;
        }();
        goHome();
        display().calls.clear();
    }

    // One touch of a finger, on a page.
    static void touch(int x, int y) { touchPage(x, y); }

    // A message that the next touch brings up is tapped away.
    static void tapAwayNext() {
        display().pen = {{160, 120}, {-1, -1}};
        display().penRead = 0;
    }

    // The keyboard that is open takes a text, as it were typed, and its Done.
    static void typeInstead(const wchar_t* text) {
        Keyboard& keyboard = shownPage().screen->keyboard;
        ASSERT_EQ(keyboard.active, 1);
        while (textLen(keyboard.text) > 0)
            keyboard.deleteChar();
        for (; *text != 0; ++text)
            keyboard.appendChar(*text);
        keyboard.doneOnTouch();
    }

    // Of the calls since the last take: what changes settings, and commands.
    static std::string stored() { return callsWith({", 0x1003", ", 0x1004", "system("}); }

    // Likewise: the texts of message boxes.
    static std::string said() { return callsWith({"drawText("}); }

    static std::string callsWith(const std::vector<std::string>& parts) {
        std::istringstream log(display().take());
        std::string kept;
        for (std::string line; std::getline(log, line);)
            for (const std::string& part : parts)
                if (line.find(part) != std::string::npos)
                    kept += line + "\n";
        return kept;
    }
};

constexpr const char* RESTART = "system(\"killall nvram_daemon\")\n"
                                "system(\"nvram_daemon &\")\n"
                                "system(\"init_system restart&\")\n";

#endif
