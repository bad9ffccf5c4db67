#include "display/power.h"

#include <cstdio>
#include <dirent.h>
#include <fcntl.h>
#include <linux/fb.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace ostrel {

namespace {

constexpr const char* BACKLIGHT_DEVICE = "/dev/ostrel_backlight";
constexpr unsigned long BACKLIGHT_ON = 10;
constexpr unsigned long BACKLIGHT_OFF = 11;
constexpr const char* BACKLIGHT_CLASS = "/sys/class/backlight";

bool switchBacklightDevice(Power power) {
    const int device = open(BACKLIGHT_DEVICE, O_RDONLY | O_CLOEXEC);
    if (device < 0)
        return false;
    const bool switched = ioctl(device, power == Power::On ? BACKLIGHT_ON : BACKLIGHT_OFF, 1) >= 0;
    close(device);
    return switched;
}

void switchListedBacklight(const char* name, Power power) {
    char path[320];
    snprintf(path, sizeof path, "%s/%s/bl_power", BACKLIGHT_CLASS, name);
    const int file = open(path, O_WRONLY | O_CLOEXEC);
    if (file < 0)
        return;
    char level[4];
    const int length = snprintf(level, sizeof level, "%d", power == Power::On ? FB_BLANK_UNBLANK : FB_BLANK_POWERDOWN);
    // A light that will not be switched stays as it is: nobody could be told on a panel.
    [[maybe_unused]] const ssize_t written = write(file, level, static_cast<size_t>(length));
    close(file);
}

} // namespace

void switchScreen(int device, Power power) {
    if (device >= 0)
        ioctl(device, FBIOBLANK, power == Power::On ? FB_BLANK_UNBLANK : FB_BLANK_POWERDOWN);
}

void switchBacklight(Power power) {
    if (switchBacklightDevice(power))
        return;
    DIR* const lights = opendir(BACKLIGHT_CLASS);
    if (lights == nullptr)
        return;
    while (const dirent* const light = readdir(lights)) {
        if (light->d_name[0] != '.')
            switchListedBacklight(light->d_name, power);
    }
    closedir(lights);
}

} // namespace ostrel
