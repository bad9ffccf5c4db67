// The backlight's own driver, for programs that switch it themselves. The toolkit never does: it uses turnOn and
// turnOff.
#ifndef OSTREL_LOCK_BACKLIGHT_H
#define OSTREL_LOCK_BACKLIGHT_H

#include "util/api.h"

// Switch the backlight on and off through "/dev/ostrel_backlight". A missing device node is created once with mknod,
// with the driver's number from "/proc/devices". A request that fails is reported on standard error as "ioctl period"
// with the system's reason. The result is that of closing the device: 0, or -1 when it could not be opened.
OSTREL_API int backlightEnable();
OSTREL_API int backlightDisable();

#endif
