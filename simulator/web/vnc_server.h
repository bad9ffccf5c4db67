// The VNC library on a thread of its own: it may block while it answers a viewer, and nothing else does. It never sees
// the network, only one end of a socket pair for each viewer.
#ifndef OSTREL_SIMULATOR_WEB_VNC_SERVER_H
#define OSTREL_SIMULATOR_WEB_VNC_SERVER_H

#include "simulator/descriptor.h"
#include "simulator/panel.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace ostrel {

// What a viewer's pointer does. A viewer that goes away lets go.
struct PointerEvent {
    uintptr_t viewer;
    bool pressed;
    int x;
    int y;
};

class VncServer {
  public:
    // `name` is what viewers show as title.
    explicit VncServer(const std::string& name);
    ~VncServer();
    VncServer(const VncServer&) = delete;
    VncServer& operator=(const VncServer&) = delete;

    // Shows a picture to all viewers. From any thread.
    void show(const Picture& picture);

    // A viewer whose RFB_GREETING was sent already; its version has been written to the other end of the pair.
    void addViewer(Descriptor socket);

    // Readable when takePointerEvents has something.
    int pointerDescriptor() const;
    std::vector<PointerEvent> takePointerEvents();

  private:
    struct Worker;
    std::unique_ptr<Worker> worker;
};

} // namespace ostrel

#endif
