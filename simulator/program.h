// The program under the simulator: found, started in its view of the files, and told about when it ends.
#ifndef OSTREL_SIMULATOR_PROGRAM_H
#define OSTREL_SIMULATOR_PROGRAM_H

#include "simulator/descriptor.h"
#include "simulator/ending.h"
#include "simulator/event_loop.h"
#include "simulator/launch_protocol.h"

#include <functional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace ostrel {

// The absolute path of what a shell would run as `name`. Throws Failure with status 127 or 126.
std::string resolveProgram(const std::string& name);

class Program {
  public:
    using Ended = std::function<void(const Ending& ending)>;

    explicit Program(EventLoop& loop) : loop(loop) {}
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    // Starts `program` (an absolute path and arguments) through bubblewrap, for the router in `stateDirectory`. `ended`
    // is called once, from the loop; Failure's message is in the ending when there was no way to start it. Throws
    // Failure when bubblewrap is missing.
    void start(
        const std::vector<std::string>& sandbox, const std::vector<std::string>& program,
        const std::string& stateDirectory, Ended ended);

    // Asks the program, and everything that it started, to end.
    void terminate();

    bool isRunning() const { return bubblewrap > 0; }

    // The view is made and the program runs in it.
    bool hasStarted() const { return reported; }

  private:
    void hear();
    void hearBubblewrap();
    void cleanUp();

    EventLoop& loop;
    Ended ended;
    std::string path;
    std::string stateDirectory;
    pid_t bubblewrap = 0;
    Descriptor control;
    Descriptor complaints; // what bubblewrap says on its standard error
    std::string complaint;
    bool reported = false;
    LaunchReport lastReport = {};
};

} // namespace ostrel

#endif
