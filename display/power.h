// Switching the screen's light, by whatever switches this machine has.
#ifndef OSTREL_DISPLAY_POWER_H
#define OSTREL_DISPLAY_POWER_H

namespace ostrel {

enum class Power { Off, On };

// Blanks or unblanks the framebuffer device; nothing for -1, a panel that is a file.
void switchScreen(int device, Power power);

// The backlight device if the machine has it, else every backlight that the kernel lists.
void switchBacklight(Power power);

} // namespace ostrel

#endif
