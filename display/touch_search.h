// Which touch screen is the panel's.
//
// OSTREL_TOUCH names the device, or a FIFO. Without it the first event device that is a touch screen is taken.
// OSTREL_TOUCH_CALIBRATION corrects it: see TouchCalibration for the seven numbers. "-1 0 319 0 -1 239 1" is a panel
// mounted upside down. OSTREL_TOUCH_STALE_MS says after how long without a question strokes are stale.
#ifndef OSTREL_DISPLAY_TOUCH_SEARCH_H
#define OSTREL_DISPLAY_TOUCH_SEARCH_H

#include "display/touch_device.h"

#include <string>

namespace ostrel {

// Opens the first of `directory`'s event0, event1, ... that is a touch screen. False leaves `opened` alone and says
// why.
bool findTouchDevice(const std::string& directory, TouchDevice& opened, std::string& why);

// Opens what the variables name, or what is found in `directory`. Says so on standard error, in one line, when there
// is nothing; the device then is not open.
TouchDevice openPanelTouch(const std::string& directory);

} // namespace ostrel

#endif
