// Between the simulator and launch, the first process of the program's view: launch reports over a socket, and ends the
// programs when the simulator writes to that socket or goes away.
#ifndef OSTREL_SIMULATOR_LAUNCH_PROTOCOL_H
#define OSTREL_SIMULATOR_LAUNCH_PROTOCOL_H

namespace ostrel {

enum class LaunchEvent : int {
    Started,    // value: 0
    ExecFailed, // value: errno
    Exited,     // value: the exit status
    Signalled,  // value: the signal's number
    DumpedCore, // value: the signal's number
    KeptCore,   // value: the signal's number; the dump is state::CORE
};

struct LaunchReport {
    LaunchEvent event;
    int value;
};

// launch CONTROL_SOCKET STANDARD_ERROR PROGRAM ARGUMENTS...
enum : int { LAUNCH_CONTROL = 1, LAUNCH_STDERR = 2, LAUNCH_PROGRAM = 3 };

} // namespace ostrel

#endif
