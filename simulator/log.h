// The log of one run: what the program asked its devices and commands to do. The shim and the stand-in commands append
// to the same file.
#ifndef OSTREL_SIMULATOR_LOG_H
#define OSTREL_SIMULATOR_LOG_H

#include "simulator/descriptor.h"
#include "simulator/event_loop.h"

#include <string>

namespace ostrel {

class Log {
  public:
    // Throws Failure.
    Log(const std::string& file, EventLoop& loop);
    ~Log();
    Log(const Log&) = delete;
    Log& operator=(const Log&) = delete;

    void write(const std::string& line);

    // Copies what is written from now on, by whomever, to standard error.
    void show();

    // Copies what has not been copied yet, when the log is shown.
    void copyRest();

  private:
    EventLoop& loop;
    Descriptor appending;
    Descriptor reading;
    Descriptor changes;
    std::string path;
};

} // namespace ostrel

#endif
