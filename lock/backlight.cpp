#include "lock/backlight.h"

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace {

constexpr char DEVICE[] = "/dev/ostrel_backlight";
constexpr char CREATE_NODE[] = "mknod /dev/ostrel_backlight c `cat /proc/devices | grep ostrel_backlight | "
                               "awk '{print $1}'` 0";
constexpr unsigned long REQUEST_ON = 10;
constexpr unsigned long REQUEST_OFF = 11;

int request(unsigned long number) {
    int device = open(DEVICE, O_RDONLY);
    if (device < 0) {
        // NOLINTNEXTLINE(bugprone-unused-return-value,cert-env33-c): whether the node is there now, the open tells
        [[maybe_unused]] const int status = system(CREATE_NODE);
        device = open(DEVICE, O_RDONLY);
    }
    if (ioctl(device, number, 1) < 0)
        perror("ioctl period");
    return close(device);
}

} // namespace

int backlightEnable() {
    return request(REQUEST_ON);
}

int backlightDisable() {
    return request(REQUEST_OFF);
}
