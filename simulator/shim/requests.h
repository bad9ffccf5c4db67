// What each simulated device does for one ioctl request: the result of ioctl, or a negative errno. The argument is the
// program's, an address or a number, and is not to be trusted.
#ifndef OSTREL_SIMULATOR_SHIM_REQUESTS_H
#define OSTREL_SIMULATOR_SHIM_REQUESTS_H

namespace ostrel {

int requestFramebuffer(unsigned long request, void* argument);
int requestTouch(unsigned long request, void* argument);
int requestSettings(unsigned long request, void* argument);
int requestBacklight(unsigned long request, void* argument);

} // namespace ostrel

#endif
