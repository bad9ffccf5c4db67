// One connection to the panel's port: finds out whether it is HTTP, a WebSocket or a VNC viewer, and carries a viewer's
// bytes to and from the VNC library. Never waits for the other side.
#ifndef OSTREL_SIMULATOR_WEB_CONNECTION_H
#define OSTREL_SIMULATOR_WEB_CONNECTION_H

#include "simulator/descriptor.h"
#include "simulator/event_loop.h"
#include "simulator/web/password_tries.h"
#include "simulator/web/rfb_gate.h"
#include "simulator/web/rfb_handshake.h"
#include "simulator/web/static_files.h"
#include "simulator/web/websocket.h"

#include <functional>
#include <string>
#include <vector>

namespace ostrel {

// What all connections share.
struct WebContext {
    EventLoop& loop;
    StaticFiles files;
    const VncPassword* password; // null: nobody is asked for one
    PasswordTries& tries;
    int64_t& lastRequestMs;         // of a browser
    std::vector<std::string> names; // what the panel's address may be called
    std::function<void(Descriptor)> addViewer;
};

class Connection {
  public:
    using Closed = std::function<void()>;

    // `peer` tells apart who tries passwords. `closed` is called once, last; it may destroy the connection.
    Connection(Descriptor connected, std::string peer, const WebContext& context, Closed closed);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    // Somebody who looks at the panel, or is about to.
    bool isViewer() const { return library.isOpen(); }

    // A viewer that has finished its handshake.
    bool isEstablished() const { return gate.isEstablished(); }

  private:
    enum class Kind { Unknown, Http, WebSocket, Viewer };

    void onSocket(short events);
    void onLibrary();
    void readSocket();
    void understand();
    void answerRequest();
    void greetTheSilent();
    void becomeViewer(Kind viewerKind);
    void takeFromViewer();
    bool shakeHands();
    void tellVerdict();
    bool passToLibrary();
    bool openLibrary();
    void queueForViewer(const std::string& bytes);
    void sendToViewer(const std::string& bytes);
    void flush();
    void closeSoon();
    void close();

    const WebContext& context;
    Descriptor socket;
    std::string peer;
    Closed closed;
    Kind kind = Kind::Unknown;
    std::string incoming;         // from the network, not understood yet
    std::string outgoing;         // to the network
    std::string webSocketAnswers; // to the last pings, or to the end: behind all that is outgoing
    std::string rfb;              // what a viewer says, not understood yet
    std::string toLibrary;        // passed, not taken yet
    size_t handshakeToSkip = 0;   // the library's own, which was made long before
    bool trusted = false;
    bool awaitsVerdict = false;
    bool closing = false;
    WebSocketDecoder webSocket;
    RfbHandshake handshake;
    RfbGate gate;
    Descriptor library;
    EventLoop::Timer timer = 0;
};

} // namespace ostrel

#endif
