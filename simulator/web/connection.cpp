#include "simulator/web/connection.h"

#include "simulator/clock.h"
#include "simulator/web/origin.h"

#include <algorithm>
#include <cerrno>
#include <poll.h>
#include <sys/socket.h>
#include <utility>

namespace ostrel {
namespace {

// A browser speaks first, a VNC viewer waits for the server's greeting: who has been silent for so long is a viewer.
// While a page is read, the browser opens connections that it may use a good deal later.
constexpr int64_t SILENCE_MS = 1500;
constexpr int64_t BROWSER_SILENCE_MS = 5000;
constexpr int64_t PAGE_IS_READ_MS = 10'000;
// For a request, or for the handshake with somebody who types a password.
constexpr int64_t REQUEST_MS = 10'000;
constexpr int64_t HANDSHAKE_MS = 120'000;
// A viewer that takes pictures more slowly than it asks for them.
constexpr size_t MAX_OUTGOING_BYTES = 4U << 20;
// Stops reading from a viewer whose messages the library has not taken yet.
constexpr size_t MAX_TO_LIBRARY_BYTES = 64U << 10;
// What the library is told of a handshake that is long over, and how many bytes it says to that: its greeting, one kind
// of security, and that all is well.
constexpr const char* HANDSHAKE_FOR_LIBRARY = "RFB 003.008\n\1";
constexpr size_t LIBRARY_HANDSHAKE_BYTES = 12 + 2 + 4;

} // namespace

Connection::Connection(Descriptor connected, std::string peer, const WebContext& context, Closed closed)
    : context(context), socket(std::move(connected)), peer(std::move(peer)), closed(std::move(closed)),
      handshake(context.password) {
    context.loop.watch(socket.get(), POLLIN, [this](short events) { onSocket(events); });
    const bool pageIsRead = nowMs() - context.lastRequestMs < PAGE_IS_READ_MS;
    timer = context.loop.after(pageIsRead ? BROWSER_SILENCE_MS : SILENCE_MS, [this] { greetTheSilent(); });
}

Connection::~Connection() {
    context.loop.cancel(timer);
    context.loop.unwatch(socket.get());
    context.loop.unwatch(library.get());
}

void Connection::onSocket(short events) {
    if ((events & POLLOUT) != 0)
        flush();
    if (!socket.isOpen() || (events & ~POLLOUT) == 0)
        return;
    readSocket();
}

void Connection::readSocket() {
    char bytes[16384];
    const ssize_t count = recv(socket.get(), bytes, sizeof bytes, 0);
    if (count < 0 && (errno == EAGAIN || errno == EINTR))
        return;
    if (count <= 0) {
        close();
        return;
    }
    if (closing) // what comes after the end of the conversation
        return;
    incoming.append(bytes, static_cast<size_t>(count));
    understand();
}

void Connection::understand() {
    if (kind == Kind::Unknown) {
        kind = Kind::Http;
        context.loop.cancel(timer);
        timer = context.loop.after(REQUEST_MS, [this] { close(); });
    }
    if (kind == Kind::Http)
        answerRequest();
    else
        takeFromViewer();
}

void Connection::answerRequest() {
    HttpRequest request;
    const HttpResult result = readRequest(incoming, request);
    if (result == HttpResult::Incomplete)
        return;
    const auto refuse = [this](const char* status, const char* sentence) {
        outgoing += answer(status, "text/plain", sentence, true);
        closeSoon();
    };
    if (result == HttpResult::Malformed)
        return refuse("400 Bad Request", "This is not a proper request.\n");
    if (!isForThisPanel(request, context.names))
        return refuse(
            "421 Misdirected Request", context.names.empty()
                                           ? "The panel answers to IP addresses and localhost only.\n"
                                           : "The panel answers to IP addresses, localhost and this machine's own "
                                             "names only.\n");
    context.lastRequestMs = nowMs();
    if (request.target == "/panel") {
        const std::string accepted = acceptWebSocket(request);
        if (!isFromThisPanel(request))
            return refuse("403 Forbidden", "Only the panel's own page may connect.\n");
        if (accepted.empty())
            return refuse("426 Upgrade Required", "This address is for WebSockets.\n");
        outgoing += accepted;
        becomeViewer(Kind::WebSocket);
        if (socket.isOpen() && !incoming.empty())
            takeFromViewer();
        return;
    }
    if (request.method != "GET" && request.method != "HEAD")
        return refuse("405 Method Not Allowed", "The panel's page can only be read.\n");
    outgoing += answerWithFile(context.files, request.target, request.method == "GET", request.header("host"));
    closeSoon();
}

// On a busy machine the first bytes may have come while nobody looked.
void Connection::greetTheSilent() {
    char first = 0;
    if (recv(socket.get(), &first, 1, MSG_PEEK) < 0 && errno == EAGAIN)
        becomeViewer(Kind::Viewer);
    else
        readSocket();
}

void Connection::becomeViewer(Kind viewerKind) {
    kind = viewerKind;
    context.loop.cancel(timer);
    timer = context.loop.after(HANDSHAKE_MS, [this] { close(); });
    sendToViewer(RFB_GREETING);
}

void Connection::takeFromViewer() {
    bool alive = true;
    if (kind == Kind::WebSocket) {
        std::string answers;
        alive = webSocket.decode(incoming, rfb, answers);
        // To several pings one pong is enough, the last: who never reads cannot let them pile up.
        if (!answers.empty())
            webSocketAnswers = answers;
    } else
        rfb += std::exchange(incoming, "");
    alive = shakeHands() && passToLibrary() && alive;
    if (!alive)
        closeSoon();
    else
        flush();
}

bool Connection::shakeHands() {
    if (trusted || awaitsVerdict)
        return true;
    std::string answers;
    const RfbHandshake::Step step = handshake.take(rfb, answers);
    queueForViewer(answers);
    trusted = step == RfbHandshake::Step::Trusted;
    awaitsVerdict = step == RfbHandshake::Step::Answered;
    if (awaitsVerdict) {
        context.loop.cancel(timer);
        timer =
            context.loop.after(context.tries.holdBack(peer, handshake.isRight(), nowMs()), [this] { tellVerdict(); });
    }
    return step != RfbHandshake::Step::Refused;
}

void Connection::tellVerdict() {
    std::string answers;
    trusted = handshake.tellVerdict(answers) == RfbHandshake::Step::Trusted;
    awaitsVerdict = false;
    queueForViewer(answers);
    if (!trusted)
        return closeSoon();
    timer = context.loop.after(HANDSHAKE_MS, [this] { close(); });
    takeFromViewer();
}

bool Connection::passToLibrary() {
    if (!trusted)
        return true;
    if (!gate.pass(rfb, toLibrary))
        return false;
    if (gate.isEstablished())
        context.loop.cancel(std::exchange(timer, 0));
    return library.isOpen() || toLibrary.empty() || openLibrary();
}

bool Connection::openLibrary() {
    int ends[2] = {};
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, ends) != 0)
        return false;
    library = Descriptor(ends[0]);
    Descriptor viewer(ends[1]);
    handshakeToSkip = LIBRARY_HANDSHAKE_BYTES;
    // Lies ready before the library sees the viewer: it looks for it at once.
    const std::string prelude = HANDSHAKE_FOR_LIBRARY;
    if (send(library.get(), prelude.data(), prelude.size(), MSG_NOSIGNAL) != static_cast<ssize_t>(prelude.size()))
        return false;
    context.addViewer(std::move(viewer));
    context.loop.watch(library.get(), POLLIN, [this](short /*events*/) { onLibrary(); });
    return true;
}

void Connection::onLibrary() {
    char bytes[65536];
    const ssize_t count = recv(library.get(), bytes, sizeof bytes, 0);
    if (count <= 0) {
        if (count < 0 && (errno == EAGAIN || errno == EINTR))
            flush(); // the library took something
        else
            closeSoon();
        return;
    }
    const size_t skipped = std::min(handshakeToSkip, static_cast<size_t>(count));
    handshakeToSkip -= skipped;
    sendToViewer({bytes + skipped, bytes + count});
}

void Connection::queueForViewer(const std::string& bytes) {
    if (!bytes.empty())
        outgoing += kind == Kind::WebSocket ? binaryFrame(bytes) : bytes;
}

void Connection::sendToViewer(const std::string& bytes) {
    queueForViewer(bytes);
    if (outgoing.size() > MAX_OUTGOING_BYTES)
        close();
    else
        flush();
}

// Moves what can be moved in both directions and asks the loop for the rest.
void Connection::flush() {
    const ssize_t sent = send(socket.get(), outgoing.data(), outgoing.size(), MSG_NOSIGNAL);
    if (sent < 0 && errno != EAGAIN && errno != EINTR) {
        close();
        return;
    }
    if (sent > 0)
        outgoing.erase(0, static_cast<size_t>(sent));
    if (outgoing.empty())
        outgoing.swap(webSocketAnswers);
    // A viewer that has not taken the last picture gets no next one: its requests wait.
    const bool mayPass = library.isOpen() && outgoing.empty();
    if (mayPass && !toLibrary.empty()) {
        const ssize_t passed = send(library.get(), toLibrary.data(), toLibrary.size(), MSG_NOSIGNAL);
        if (passed > 0)
            toLibrary.erase(0, static_cast<size_t>(passed));
    }
    if (closing && outgoing.empty()) {
        shutdown(socket.get(), SHUT_WR);
        close();
        return;
    }
    const bool maySay = toLibrary.size() < MAX_TO_LIBRARY_BYTES && !awaitsVerdict;
    context.loop.change(socket.get(), static_cast<short>((maySay ? POLLIN : 0) | (outgoing.empty() ? 0 : POLLOUT)));
    if (library.isOpen())
        context.loop.change(library.get(), static_cast<short>(POLLIN | (mayPass && !toLibrary.empty() ? POLLOUT : 0)));
}

// Ends the connection when the other side has got its answer, or does not take it.
void Connection::closeSoon() {
    closing = true;
    context.loop.unwatch(library.get());
    library.reset();
    context.loop.cancel(timer);
    timer = context.loop.after(REQUEST_MS, [this] { close(); });
    flush();
}

// Through the loop: whoever called is done with this object by then.
void Connection::close() {
    if (!socket.isOpen())
        return;
    context.loop.unwatch(socket.get());
    context.loop.unwatch(library.get());
    socket.reset();
    library.reset();
    context.loop.cancel(timer);
    timer = context.loop.after(0, [this] { std::exchange(closed, nullptr)(); });
}

} // namespace ostrel
