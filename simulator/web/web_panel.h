// The panel for browsers and VNC viewers, on one port.
#ifndef OSTREL_SIMULATOR_WEB_WEB_PANEL_H
#define OSTREL_SIMULATOR_WEB_WEB_PANEL_H

#include "simulator/event_loop.h"
#include "simulator/panel.h"
#include "simulator/touch_stream.h"
#include "simulator/web/connection.h"
#include "simulator/web/ip_address.h"
#include "simulator/web/vnc_server.h"

#include <list>
#include <memory>
#include <optional>
#include <string>

namespace ostrel {

// Where the panel is shown and to whom.
struct WebFace {
    IpAddress address;
    int port;             // 0: 6080, or any free one when that is taken
    std::string password; // empty: nobody is asked for one
};

class WebPanel {
  public:
    // Listens at once. Throws Failure.
    WebPanel(const std::string& title, const WebFace& face, EventLoop& loop, Panel& panel, TouchStream& stream);
    ~WebPanel();
    WebPanel(const WebPanel&) = delete;
    WebPanel& operator=(const WebPanel&) = delete;

    // "http://127.0.0.1:6080/", or all the addresses where the panel is, and for whom.
    std::string whereabouts() const;

  private:
    void listenOn(int wanted);
    std::string url(const IpAddress& at) const;
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
    IpAddress address;
    int port = 0;
    std::optional<VncPassword> password;
    PasswordTries tries;
    int64_t lastRequestMs = INT64_MIN / 2; // never
    WebContext context;
    VncServer vnc;
    Descriptor listener;
    std::list<std::unique_ptr<Connection>> connections;
    uintptr_t penHolder = 0;   // the viewer whose pen is down
    uint64_t shownChanges = 0; // as the panel counts them
    int64_t lookCloselyUntilMs = 0;
    EventLoop::Timer timer = 0;
};

} // namespace ostrel

#endif
