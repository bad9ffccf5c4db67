// The settings that the pages show and change, and how changes are stored.
//
// A page keeps a Batch. What the user edits becomes drafts in it; the store is not touched before store(), so leaving
// the page costs nothing. A new setting is added to the list below.
#ifndef OSTREL_APPS_SETTINGS_STORE_H
#define OSTREL_APPS_SETTINGS_STORE_H

#include <string>
#include <vector>

enum class Section { Main, Rtdev };

struct Setting {
    Section section;
    const char* name;
};

namespace setting {

constexpr Setting LANGUAGE{Section::Main, "Language"};
constexpr Setting SCREEN_LOCK{Section::Main, "ScreenLock"};
constexpr Setting PIN{Section::Main, "PIN"};
constexpr Setting WIFI_NAME{Section::Main, "WifiName"};
constexpr Setting WIFI_SECURITY{Section::Main, "WifiSecurity"};
constexpr Setting WIFI_PASSWORD{Section::Main, "WifiPassword"};
constexpr Setting DHCP{Section::Main, "DHCP"};
constexpr Setting ADDRESS{Section::Main, "IPAddress"};
constexpr Setting MASK{Section::Main, "NetMask"};
constexpr Setting GATEWAY{Section::Main, "Gateway"};
constexpr Setting SHOW_PASSWORDS{Section::Rtdev, "ShowPass"};
constexpr Setting SCREEN_TIMEOUT{Section::Rtdev, "ScreenTimeout"};

} // namespace setting

constexpr int RESTART_SECONDS = 20; // until the services answer again after a commit

// What is stored now; empty when there is none.
std::string readSetting(const Setting& setting);

class Batch {
  public:
    // The draft, or what is stored as long as there is none. What is stored is read once, until discard().
    const std::string& get(const Setting& setting);

    // "1" is on.
    bool isOn(const Setting& setting) { return get(setting) == "1"; }

    // Drafts `value`. One that is already stored is no change.
    void set(const Setting& setting, const std::string& value);
    void setOn(const Setting& setting, bool on) { set(setting, on ? "1" : "0"); }

    // Back to what is stored: of one setting, and of all, which are read anew when they are next asked for.
    void revert(const Setting& setting);
    void discard() { entries.clear(); }

    bool changed() const;

    // Stores what changed: added one by one in the order in which the settings were first asked for, one save for each
    // section concerned, one commit, and progress on the panel while the services restart. The caller draws its page
    // again. Without changes nothing happens, which is a success. False when the device did not take a value: then all
    // is put back, nothing is saved, and the drafts are kept.
    bool store();

  private:
    struct Entry {
        Setting setting;
        std::string stored;
        std::string draft;
        bool isChanged() const { return stored != draft; }
    };
    Entry& entryOf(const Setting& setting);
    bool isChanged(Section section) const;

    std::vector<Entry> entries;
};

#endif
