// Shows the log of a run while it grows. The simulator, the shim and the stand-in commands append to it with logLine.
#ifndef OSTREL_SIMULATOR_SHOWN_LOG_H
#define OSTREL_SIMULATOR_SHOWN_LOG_H

#include "simulator/descriptor.h"
#include "simulator/event_loop.h"

#include <string>

namespace ostrel {

class ShownLog {
  public:
    // Copies what is written to `file` from now on to standard error. Throws Failure.
    ShownLog(const std::string& file, EventLoop& loop);
    ~ShownLog();
    ShownLog(const ShownLog&) = delete;
    ShownLog& operator=(const ShownLog&) = delete;

  private:
    void copyRest();

    EventLoop& loop;
    Descriptor log;
    Descriptor changes;
};

} // namespace ostrel

#endif
