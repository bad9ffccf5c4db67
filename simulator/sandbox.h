// The program's view of the files, as arguments for bubblewrap.
#ifndef OSTREL_SIMULATOR_SANDBOX_H
#define OSTREL_SIMULATOR_SANDBOX_H

#include <string>
#include <vector>

namespace ostrel {

struct TopLevelEntry {
    std::string path;       // "/usr"
    std::string linkTarget; // of a symbolic link; else empty
};

struct View {
    std::vector<TopLevelEntry> topLevel;
    std::string state;           // the state directory
    std::string callerDirectory; // where the simulator was started
    std::string assets;          // becomes /ostrel
    std::string support;         // shim and stand-in commands
    bool asRoot = false;
};

// The host's top-level entries.
std::vector<TopLevelEntry> listTopLevel();

// Everything between "bwrap" and the program. The root is a fresh tmpfs into which each of the host's top-level entries
// is bound; binding the whole root and adding to it would make the added mount points on the host.
std::vector<std::string> sandboxArguments(const View& view);

// The folder of the router's own under which the host's `path` cannot be seen in the view; empty when it can.
std::string hiddenBy(const std::string& path);

} // namespace ostrel

#endif
