#include "display/touch_search.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <vector>

namespace ostrel {

namespace {

// The directory's event0, event1, ... in the order of their numbers.
std::vector<std::string> eventNodes(const std::string& directory) {
    std::vector<std::string> names;
    DIR* const listing = opendir(directory.c_str());
    if (listing == nullptr)
        return names;
    while (const dirent* const entry = readdir(listing)) {
        const std::string name = entry->d_name;
        if (name.size() > 5 && name.compare(0, 5, "event") == 0 &&
            name.find_first_not_of("0123456789", 5) == std::string::npos)
            names.push_back(name);
    }
    closedir(listing);
    std::sort(names.begin(), names.end(), [](const std::string& a, const std::string& b) {
        return a.size() != b.size() ? a.size() < b.size() : a < b;
    });
    return names;
}

void calibrate(TouchDevice& device, const char* text) {
    if (text == nullptr || *text == '\0' || parseCalibration(text, device.scale.calibration))
        return;
    fprintf(
        stderr,
        "ostrel: OSTREL_TOUCH_CALIBRATION is \"%s\": not seven whole numbers \"a b c d e f divisor\". The pen is not "
        "corrected.\n",
        text);
}

void setPatience(TouchDevice& device, const char* text) {
    constexpr long MOST_MS = 24L * 3600 * 1000;
    if (text == nullptr || *text == '\0')
        return;
    char* end = nullptr;
    const long ms = strtol(text, &end, 10);
    if (*end == '\0' && ms >= 1 && ms <= MOST_MS)
        device.staleAfterMs = ms;
    else
        fprintf(
            stderr,
            "ostrel: OSTREL_TOUCH_STALE_MS is \"%s\": not a whole number of milliseconds up to a day. Old strokes are "
            "dropped after %d ms.\n",
            text, static_cast<int>(STALE_AFTER_MS));
}

} // namespace

bool findTouchDevice(const std::string& directory, TouchDevice& opened, std::string& why) {
    why = "there is none";
    for (const std::string& name : eventNodes(directory)) {
        TouchDevice device;
        std::string path = directory;
        path.append("/").append(name);
        if (!openTouchDevice(path.c_str(), device, why))
            continue;
        if (isTouchScreen(device)) {
            opened = device;
            return true;
        }
        why = "none is a touch screen";
        closeTouchDevice(device);
    }
    return false;
}

TouchDevice openPanelTouch(const std::string& directory) {
    const char* const named = getenv("OSTREL_TOUCH");
    const bool isNamed = named != nullptr && *named != '\0';
    TouchDevice device;
    std::string why;
    if (isNamed ? openTouchDevice(named, device, why) : findTouchDevice(directory, device, why)) {
        calibrate(device, getenv("OSTREL_TOUCH_CALIBRATION"));
        setPatience(device, getenv("OSTREL_TOUCH_STALE_MS"));
        return device;
    }
    const std::string path = isNamed ? named : directory + "/event*";
    fprintf(
        stderr,
        "ostrel: no touch screen at %s: %s. The pen stays up; run the program with 'ostrel-sim PROGRAM', or name a "
        "touch device in OSTREL_TOUCH.\n",
        path.c_str(), why.c_str());
    return device;
}

} // namespace ostrel
