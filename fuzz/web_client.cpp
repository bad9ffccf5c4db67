// Any bytes from a web client or a VNC viewer, in pieces of any size, through everything that stands between the
// network and the VNC library: the request, the WebSocket's frames, the handshake with its password, and the gate.
// Whatever comes: nobody is trusted without the password, what reaches the library is whole messages of known kinds, no
// buffer grows past what has arrived, and the pieces' sizes make no difference.
//
// The first byte chooses a raw viewer, a WebSocket or a browser's request, with or without a password. The second one
// seeds the sizes of the pieces.
#include "simulator/web/http.h"
#include "simulator/web/origin.h"
#include "simulator/web/rfb_gate.h"
#include "simulator/web/rfb_handshake.h"
#include "simulator/web/websocket.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

using namespace ostrel;

namespace {

void require(bool holds, const char* what) {
    if (holds)
        return;
    std::fprintf(stderr, "%s\n", what);
    std::abort();
}

// As a connection does it, with the time left out.
class Visitor {
  public:
    Visitor(bool isWebSocket, bool isBrowser, const VncPassword* password)
        : asksFirst(isBrowser), framed(isWebSocket), handshake(password), needsPassword(password != nullptr) {}

    // False when the connection is over.
    bool receive(const std::string& bytes) {
        arrived += bytes.size();
        incoming += bytes;
        if (asksFirst && !request())
            return false;
        if (asksFirst)
            return true; // more of the request is to come
        const bool alive = framed ? webSocket.decode(incoming, rfb, answers) : takeAll();
        const bool goesOn = shakeHands() && pass();
        require(incoming.size() + rfb.size() <= arrived, "more than has arrived");
        require(answers.size() <= 200 + arrived, "answers more than it is told");
        return alive && goesOn;
    }

    std::string accepted; // what the library gets
    bool trusted = false;

  private:
    bool takeAll() {
        rfb += incoming;
        incoming.clear();
        return true;
    }

    bool request() {
        HttpRequest read;
        const HttpResult result = readRequest(incoming, read);
        require(result != HttpResult::Incomplete || incoming.size() < MAX_REQUEST_BYTES, "an endless request");
        if (result == HttpResult::Incomplete)
            return true;
        if (result == HttpResult::Malformed || !isForThisPanel(read, {"desk"}) || !isFromThisPanel(read))
            return false;
        const std::string host = read.header("host");
        require(host.find("evil") == std::string::npos, "a stranger's name");
        const std::string accept = acceptWebSocket(read);
        require(accept.find('\0') == std::string::npos, "a header with a zero");
        asksFirst = false;
        framed = true;
        return !accept.empty();
    }

    bool shakeHands() {
        if (trusted)
            return true;
        RfbHandshake::Step step = handshake.take(rfb, answers);
        if (step == RfbHandshake::Step::Answered) {
            require(needsPassword, "a password that nobody asked for");
            step = handshake.tellVerdict(answers);
            require(handshake.isRight() == (step == RfbHandshake::Step::Trusted), "a verdict that is not one");
        } else
            require(step != RfbHandshake::Step::Trusted || !needsPassword, "trusted without a password");
        trusted = step == RfbHandshake::Step::Trusted;
        return step != RfbHandshake::Step::Refused;
    }

    bool pass() { return !trusted || gate.pass(rfb, accepted); }

    bool asksFirst;
    bool framed;
    std::string incoming;
    std::string rfb;
    std::string answers;
    size_t arrived = 0;
    WebSocketDecoder webSocket;
    RfbHandshake handshake;
    RfbGate gate;
    bool needsPassword;
};

// ClientInit, and then whole messages of the kinds that the library knows.
void requireWholeMessages(const std::string& accepted) {
    constexpr size_t SIZES[] = {20, 0, 0, 10, 8, 6};
    size_t at = 1;
    while (at < accepted.size()) {
        const auto message = static_cast<unsigned char>(accepted[at]);
        require(message <= 5 && message != 1, "a message that is unknown");
        const auto byte = [&](size_t index) {
            return static_cast<size_t>(static_cast<unsigned char>(accepted[index]));
        };
        require(message != 2 || at + 4 <= accepted.size(), "a list without its length");
        at += message == 2 ? 4 + 4 * (byte(at + 2) << 8 | byte(at + 3)) : SIZES[message];
    }
    require(accepted.empty() || at == accepted.size(), "a part of a message");
}

std::string play(const std::string& story, unsigned choice, unsigned seed, const VncPassword* password) {
    Visitor visitor((choice & 3) == 1, (choice & 3) >= 2, password);
    size_t at = 0;
    for (bool alive = true; alive && at < story.size();) {
        seed = seed * 1103515245U + 12345U;
        const size_t size = std::min<size_t>(1 + (seed >> 16) % 97, story.size() - at);
        alive = visitor.receive(story.substr(at, size));
        at += size;
    }
    requireWholeMessages(visitor.accepted);
    require(visitor.trusted || visitor.accepted.empty(), "a stranger reaches the library");
    return visitor.accepted;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const VncPassword password("r0ut3r!");
    if (size < 2)
        return 0;
    const unsigned choice = data[0];
    const std::string story(reinterpret_cast<const char*>(data) + 2, size - 2);
    const VncPassword* const asked = (choice & 4) != 0 ? &password : nullptr;
    const std::string once = play(story, choice, data[1], asked);
    // A challenge is new each time, so that nobody guesses its answer; without one, pieces make no difference.
    require(asked == nullptr || once.empty(), "a guess came through");
    if (asked == nullptr) {
        const std::string again = play(story, choice, data[1] + 1U, nullptr);
        require(once == again || once.rfind(again, 0) == 0 || again.rfind(once, 0) == 0, "pieces make a difference");
    }
    return 0;
}
