// The state directory of one simulated router: made when missing, and locked while a simulator uses it.
#ifndef OSTREL_SIMULATOR_STATE_DIRECTORY_H
#define OSTREL_SIMULATOR_STATE_DIRECTORY_H

#include "simulator/descriptor.h"
#include "simulator/shared_page.h"

#include <string>

namespace ostrel {

// $XDG_STATE_HOME/ostrel-sim/NAME, or below ~/.local/state. Throws Failure for a user without a home directory.
std::string defaultStateDirectory(const std::string& name);

class StateDirectory {
  public:
    // Makes the router as it is when its power comes on: a dark framebuffer, nobody touching. `fresh` forgets settings
    // and flash too. Throws Failure, also when another simulator has the directory.
    StateDirectory(const std::string& path, bool fresh);
    ~StateDirectory();
    StateDirectory(const StateDirectory&) = delete;
    StateDirectory& operator=(const StateDirectory&) = delete;

    const std::string& path() const { return directory; }
    std::string file(const char* name) const { return directory + "/" + name; }
    SharedPage& page() const { return *shared; }

  private:
    void lock();
    void forget() const;
    void makeFiles() const;
    void mapPage();

    std::string directory;
    Descriptor lockFile;
    SharedPage* shared = nullptr;
};

} // namespace ostrel

#endif
