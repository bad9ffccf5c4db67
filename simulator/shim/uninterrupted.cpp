#include "simulator/shim/uninterrupted.h"

#include <ctime>

namespace ostrel {

Uninterrupted::~Uninterrupted() {
    // A write past the program's file size limit raises a signal that a driver's own writing would not. One that the
    // program had waiting already stays.
    sigset_t tooBig;
    sigemptyset(&tooBig);
    sigaddset(&tooBig, SIGXFSZ);
    if (sigismember(&before, SIGXFSZ) == 0) {
        const timespec atOnce = {};
        sigtimedwait(&tooBig, nullptr, &atOnce);
    }
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

} // namespace ostrel
