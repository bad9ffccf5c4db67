// The panel for browsers and VNC viewers, on one loopback port.
#ifndef OSTREL_SIMULATOR_WEB_WEB_PANEL_H
#define OSTREL_SIMULATOR_WEB_WEB_PANEL_H

#include "simulator/event_loop.h"
#include "simulator/panel.h"
#include "simulator/touch_stream.h"
#include "simulator/web/connection.h"
#include "simulator/web/vnc_server.h"

#include <list>
#include <memory>
#include <string>

namespace ostrel {

class WebPanel {
  public:
    // Listens on `port` of 127.0.0.1; 0: on 6080, or any free one when that is taken. Throws Failure.
    WebPanel(const std::string& title, int port, EventLoop& loop, Panel& panel, TouchStream& stream);
    ~WebPanel();
    WebPanel(const WebPanel&) = delete;
    WebPanel& operator=(const WebPanel&) = delete;

    // "http://127.0.0.1:6080/"
    std::string address() const;

  private:
    void listenOn(int port);
    void accept();
    void makeRoom();
    void addViewer(Descriptor socket);
    void point();
    void look();
    void lookClosely();
    bool isSeen() const;

    EventLoop& loop;
    Panel& panel;
    TouchStream& stream;
    WebContext context;
    VncServer vnc;
    Descriptor listener;
    std::list<std::unique_ptr<Connection>> connections;
    uintptr_t penHolder = 0; // the viewer whose pen is down
    int64_t lookCloselyUntilMs = 0;
    EventLoop::Timer timer = 0;
};

} // namespace ostrel

#endif
