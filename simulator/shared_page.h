// One page of memory that the simulator and every program inside share: who waits for the pen, where the pen is, and
// whether the panel is lit. The layout is the same for 32-bit and 64-bit programs; nothing in it outlives a run.
#ifndef OSTREL_SIMULATOR_SHARED_PAGE_H
#define OSTREL_SIMULATOR_SHARED_PAGE_H

#include <atomic>
#include <cstdint>

namespace ostrel {

struct SharedPage {
    std::atomic<uint32_t> programs; // processes that have loaded the shim so far; 0: nobody reports questions

    // Questions for the pen, reported by the shim and cleared whenever there is something to read. `waiting` is set
    // while a program blocks for an empty stream; `glances` counts looks at it that returned at once.
    std::atomic<uint32_t> waiting;
    std::atomic<uint32_t> glances;

    // The pen as last put into the stream, for EVIOCGKEY and EVIOCGABS.
    std::atomic<uint32_t> penDown;
    std::atomic<int32_t> penX;
    std::atomic<int32_t> penY;

    // The panel: set by the shim, shown by the simulator. Dark is backlightOff or blanked.
    std::atomic<uint32_t> backlightOff; // the backlight device's last request
    std::atomic<uint32_t> blanked;      // FBIOBLANK's last argument: 0 is FB_BLANK_UNBLANK
};
static_assert(sizeof(SharedPage) == 32, "the layout is shared between architectures");
static_assert(std::atomic<uint32_t>::is_always_lock_free, "atomics work across processes only without locks");

} // namespace ostrel

#endif
