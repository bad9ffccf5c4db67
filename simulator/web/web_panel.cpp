#include "simulator/web/web_panel.h"

#include "simulator/clock.h"
#include "simulator/failure.h"
#include "simulator/paths.h"

#include <algorithm>
#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>

namespace ostrel {
namespace {

constexpr int USUAL_PORT = 6080;
constexpr size_t MAX_CONNECTIONS = 64;
constexpr const char* NOVNC = "/usr/share/novnc";

// What a browser shows at 60 pictures a second; closely, while something is going on.
constexpr int64_t LOOK_MS = 16;
constexpr int64_t CLOSE_LOOK_MS = 1;
constexpr int64_t CLOSE_LOOKS_FOR_MS = 60;
constexpr int64_t UNSEEN_LOOK_MS = 500;

sockaddr_in loopback(int port) {
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}

// On failure the descriptor is closed and `reason` is errno.
Descriptor bound(int port, int& reason) {
    Descriptor listener(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    const int on = 1;
    setsockopt(listener.get(), SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    const sockaddr_in address = loopback(port);
    if (bind(listener.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        listen(listener.get(), SOMAXCONN) != 0) {
        reason = errno;
        listener.reset();
    }
    return listener;
}

StaticFiles pageFiles() {
    struct stat status = {};
    if (stat((std::string(NOVNC) + "/core/rfb.js").c_str(), &status) != 0)
        throw Failure("noVNC is missing, which shows the panel in browsers; apt-get install novnc, or use --headless");
    return {pageDirectory(), NOVNC};
}

} // namespace

WebPanel::WebPanel(const std::string& title, int port, EventLoop& loop, Panel& panel, TouchStream& stream)
    : loop(loop), panel(panel),
      stream(stream), context{loop, pageFiles(), port, [this](Descriptor socket) { addViewer(std::move(socket)); }},
      vnc(title) {
    listenOn(port);
    loop.watch(listener.get(), POLLIN, [this](short /*events*/) { accept(); });
    loop.watch(vnc.pointerDescriptor(), POLLIN, [this](short /*events*/) { point(); });
    look();
}

WebPanel::~WebPanel() {
    loop.cancel(timer);
    loop.unwatch(listener.get());
    loop.unwatch(vnc.pointerDescriptor());
}

void WebPanel::listenOn(int port) {
    int reason = 0;
    listener = bound(port != 0 ? port : USUAL_PORT, reason);
    if (!listener.isOpen() && port == 0)
        listener = bound(0, reason);
    if (!listener.isOpen() && reason == EADDRINUSE)
        throw Failure(
            "port " + std::to_string(port) + " is taken; choose another one with --web=PORT, or --web for any");
    if (!listener.isOpen())
        throw systemFailure("cannot listen on port " + std::to_string(port), reason);
    sockaddr_in address = {};
    socklen_t size = sizeof address;
    getsockname(listener.get(), reinterpret_cast<sockaddr*>(&address), &size);
    context.port = ntohs(address.sin_port);
}

std::string WebPanel::address() const {
    return "http://127.0.0.1:" + std::to_string(context.port) + "/";
}

void WebPanel::accept() {
    Descriptor socket(accept4(listener.get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
    if (!socket.isOpen())
        return;
    const int on = 1;
    setsockopt(socket.get(), IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    setsockopt(socket.get(), SOL_SOCKET, SO_KEEPALIVE, &on, sizeof on);
    makeRoom();
    const auto place = connections.insert(connections.end(), nullptr);
    *place = std::make_unique<Connection>(std::move(socket), context, [this, place] { connections.erase(place); });
}

// Whoever has not got anywhere for longest makes room for a new one; with nothing but viewers, the oldest of them.
void WebPanel::makeRoom() {
    if (connections.size() < MAX_CONNECTIONS)
        return;
    const auto idle = std::find_if(
        connections.begin(), connections.end(), [](const auto& connection) { return !connection->isEstablished(); });
    connections.erase(idle != connections.end() ? idle : connections.begin());
}

void WebPanel::addViewer(Descriptor socket) {
    vnc.addViewer(std::move(socket));
    lookClosely();
}

bool WebPanel::isSeen() const {
    return std::any_of(
        connections.begin(), connections.end(), [](const auto& connection) { return connection->isViewer(); });
}

// There is one pen: while a viewer holds it down, the others only watch.
void WebPanel::point() {
    for (const PointerEvent& event : vnc.takePointerEvents()) {
        if (penHolder != 0 && penHolder != event.viewer)
            continue;
        if (event.pressed)
            stream.press(event.x, event.y);
        else
            stream.release();
        penHolder = event.pressed ? event.viewer : 0;
    }
    lookClosely();
}

void WebPanel::lookClosely() {
    lookCloselyUntilMs = nowMs() + CLOSE_LOOKS_FOR_MS;
    loop.cancel(timer);
    timer = loop.after(0, [this] { look(); });
}

// A framebuffer tells nobody that it has changed: it has to be looked at.
void WebPanel::look() {
    const bool seen = isSeen();
    if (panel.look()) {
        vnc.show(panel.picture());
        lookCloselyUntilMs = nowMs() + CLOSE_LOOKS_FOR_MS;
    }
    const int64_t delayMs = !seen ? UNSEEN_LOOK_MS : nowMs() < lookCloselyUntilMs ? CLOSE_LOOK_MS : LOOK_MS;
    timer = loop.after(delayMs, [this] { look(); });
}

} // namespace ostrel
