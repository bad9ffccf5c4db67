// Which of the simulated devices a descriptor refers to. Found by device and inode number of the bound file, so that
// dup, fork, close and passing descriptors around need no bookkeeping.
#ifndef OSTREL_SIMULATOR_SHIM_DEVICE_H
#define OSTREL_SIMULATOR_SHIM_DEVICE_H

#include "simulator/shared_page.h"

namespace ostrel {

enum class Device { None, Framebuffer, Touch, Nvram, Backlight };

// Leaves errno alone when the descriptor is open.
Device deviceOf(int fd);

// The page that is shared with the simulator; null outside of it.
SharedPage* sharedPage();

// Absolute path of the state directory; null outside the simulator.
const char* stateDirectory();

// The next definition of a function that this library takes over.
void* nextDefinition(const char* name);

} // namespace ostrel

#endif
