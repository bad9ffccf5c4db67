#include "simulator/web/web_panel.h"

#include "simulator/clock.h"
#include "simulator/failure.h"
#include "simulator/paths.h"
#include "simulator/web/origin.h"

#include <algorithm>
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

// On failure the descriptor is closed and `reason` is errno.
Descriptor bound(const IpAddress& address, int port, int& reason) {
    Descriptor listener(socket(address.isIpv6() ? AF_INET6 : AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    const int on = 1;
    const int off = 0;
    setsockopt(listener.get(), SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    if (address.isIpv6()) // "::" is for IPv4 too
        setsockopt(listener.get(), IPPROTO_IPV6, IPV6_V6ONLY, &off, sizeof off);
    sockaddr_storage place;
    const socklen_t size = address.fill(place, port);
    if (!listener.isOpen() || bind(listener.get(), reinterpret_cast<const sockaddr*>(&place), size) != 0 ||
        listen(listener.get(), SOMAXCONN) != 0) {
        reason = errno;
        listener.reset();
    }
    return listener;
}

int portOf(const Descriptor& listener) {
    sockaddr_storage place = {};
    socklen_t size = sizeof place;
    getsockname(listener.get(), reinterpret_cast<sockaddr*>(&place), &size);
    return ntohs(
        place.ss_family == AF_INET6 ? reinterpret_cast<const sockaddr_in6&>(place).sin6_port
                                    : reinterpret_cast<const sockaddr_in&>(place).sin_port);
}

StaticFiles pageFiles() {
    struct stat status = {};
    if (stat((std::string(NOVNC) + "/core/rfb.js").c_str(), &status) != 0)
        throw Failure("noVNC is missing, which shows the panel in browsers; apt-get install novnc, or use --headless");
    return {pageDirectory(), NOVNC};
}

} // namespace

WebPanel::WebPanel(const std::string& title, const WebFace& face, EventLoop& loop, Panel& panel, TouchStream& stream)
    : loop(loop), panel(panel), stream(stream), address(face.address),
      password(face.password.empty() ? std::nullopt : std::optional<VncPassword>(face.password)),
      context{
          loop,
          pageFiles(),
          password ? &*password : nullptr,
          tries,
          lastRequestMs,
          face.address.isLoopback() ? std::vector<std::string>() : namesOfThisMachine(),
          [this](Descriptor socket) { addViewer(std::move(socket)); }},
      vnc(title) {
    listenOn(face.port);
    loop.watch(listener.get(), POLLIN, [this](short /*events*/) { accept(); });
    loop.watch(vnc.pointerDescriptor(), POLLIN, [this](short /*events*/) { point(); });
    look();
}

WebPanel::~WebPanel() {
    loop.cancel(timer);
    loop.unwatch(listener.get());
    loop.unwatch(vnc.pointerDescriptor());
}

void WebPanel::listenOn(int wanted) {
    int reason = 0;
    listener = bound(address, wanted != 0 ? wanted : USUAL_PORT, reason);
    if (!listener.isOpen() && wanted == 0 && reason == EADDRINUSE)
        listener = bound(address, 0, reason);
    if (!listener.isOpen() && reason == EADDRINUSE)
        throw Failure(
            "port " + std::to_string(wanted) + " is taken; choose another one with --web=PORT, or --web for any");
    if (!listener.isOpen() && reason == EADDRNOTAVAIL)
        throw Failure(
            "this machine does not have the address " + address.text() +
            "; choose one of its own with --address, or 0.0.0.0 for all of them");
    if (!listener.isOpen())
        throw systemFailure(
            "cannot listen on port " + std::to_string(wanted != 0 ? wanted : USUAL_PORT) + " of " + address.text(),
            reason);
    port = portOf(listener);
}

std::string WebPanel::url(const IpAddress& at) const {
    return "http://" + at.inUrl() + ":" + std::to_string(port) + "/";
}

std::string WebPanel::whereabouts() const {
    if (!address.isWildcard())
        return url(address);
    std::string places = url(IpAddress()) + " on this machine";
    for (const IpAddress& other : addressesOfThisMachine())
        if (address.isIpv6() || !other.isIpv6())
            places += " and at " + url(other);
    return places;
}

void WebPanel::accept() {
    sockaddr_storage from = {};
    socklen_t size = sizeof from;
    auto* const peer = reinterpret_cast<sockaddr*>(&from);
    Descriptor socket(accept4(listener.get(), peer, &size, SOCK_CLOEXEC | SOCK_NONBLOCK));
    const std::optional<IpAddress> viewer = IpAddress::of(peer);
    if (!socket.isOpen() || !viewer)
        return;
    const int on = 1;
    setsockopt(socket.get(), IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    setsockopt(socket.get(), SOL_SOCKET, SO_KEEPALIVE, &on, sizeof on);
    makeRoom();
    const auto place = connections.insert(connections.end(), nullptr);
    *place = std::make_unique<Connection>(
        std::move(socket), viewer->neighbourhood(), context, [this, place] { connections.erase(place); });
}

// Whoever has not got anywhere for longest makes room for a new one; with nothing but viewers, the oldest of them.
void WebPanel::makeRoom() {
    if (connections.size() < MAX_CONNECTIONS)
        return;
    const auto idle = std::find_if(
        connections.begin(), connections.end(), [](const auto& connection) { return !connection->isEstablished(); });
    connections.erase(idle != connections.end() ? idle : connections.begin());
}

// Some viewers take one picture and go: it is the panel as it is now.
void WebPanel::addViewer(Descriptor socket) {
    lookClosely();
    vnc.addViewer(std::move(socket));
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
    look();
}

// A framebuffer tells nobody that it has changed: it has to be looked at.
void WebPanel::look() {
    const bool seen = isSeen();
    panel.look();
    if (shownChanges != panel.changes()) { // scripts look at the panel, too
        shownChanges = panel.changes();
        vnc.show(panel.picture());
        lookCloselyUntilMs = nowMs() + CLOSE_LOOKS_FOR_MS;
    }
    const int64_t delayMs = !seen ? UNSEEN_LOOK_MS : nowMs() < lookCloselyUntilMs ? CLOSE_LOOK_MS : LOOK_MS;
    timer = loop.after(delayMs, [this] { look(); });
}

} // namespace ostrel
