// What lies in a simulator's state directory and what the programs inside are told about it. The simulator, the shim
// and the stand-in commands meet here and nowhere else.
#ifndef OSTREL_SIMULATOR_STATE_H
#define OSTREL_SIMULATOR_STATE_H

namespace ostrel {

// Files of the state directory. Those with a router path are bound there in the program's view.
namespace state {
constexpr const char* FRAMEBUFFER = "fb0";            // 153,600 bytes, 320x240 RGB565 little-endian
constexpr const char* TOUCH = "event0";               // FIFO of struct input_event
constexpr const char* NVRAM = "apsoc_nvram";          // empty: its ioctls are answered by the shim
constexpr const char* BACKLIGHT = "ostrel_backlight"; // empty, likewise
constexpr const char* FLASH = "mtdblock5";            // a directory: what is mounted as /data
constexpr const char* SHARED_PAGE = "shared";         // struct SharedPage, mapped by everybody
constexpr const char* LOG = "log";                    // text, one line a write, opened with O_APPEND
constexpr const char* OLD_LOG = "log.old";            // what was the log before it became too long in this run
constexpr const char* LOCK = "lock";                  // flock'ed by the simulator that runs here
constexpr const char* CORE = "core";                  // what a program that crashed left, if it left something
constexpr const char* STORE = "settings";             // the committed settings; the store adds names that begin so
} // namespace state

namespace router {
constexpr const char* FRAMEBUFFER = "/dev/fb0";
constexpr const char* TOUCH = "/dev/input/event0";
constexpr const char* NVRAM = "/dev/apsoc_nvram";
constexpr const char* BACKLIGHT = "/dev/ostrel_backlight";
constexpr const char* FLASH = "/dev/mtdblock5";
constexpr const char* DATA = "/data";
constexpr const char* ASSETS = "/ostrel";
} // namespace router

// Environment of the programs inside.
namespace variable {
constexpr const char* STATE = "OSTREL_SIM_STATE"; // absolute path of the state directory, the same inside and outside
constexpr const char* SPEED = "OSTREL_SIM_SPEED"; // sleeps are divided by this decimal number; unset: 1
// Of the display library: after how many milliseconds without a question strokes are dropped.
constexpr const char* STALE_MS = "OSTREL_TOUCH_STALE_MS";
} // namespace variable

// In the program's view: the shim as $LIB/ostrel-shim.so, launch, and the folder of stand-in commands that comes first
// on the PATH. In the build and once installed these stand in ../libexec/ostrel-sim beside ostrel-sim's own folder.
namespace inside {
constexpr const char* SUPPORT = "/.ostrel-sim";
constexpr const char* COMMANDS = "/.ostrel-sim/commands";
constexpr const char* SHIM = "/.ostrel-sim/$LIB/ostrel-shim.so";
} // namespace inside

} // namespace ostrel

#endif
