// The WebSocket protocol's server side: handshake and frames.
#ifndef OSTREL_SIMULATOR_WEB_WEBSOCKET_H
#define OSTREL_SIMULATOR_WEB_WEBSOCKET_H

#include "simulator/web/http.h"

#include <cstdint>
#include <string>

namespace ostrel {

// The answer to an upgrade request; empty when it is not a proper one.
std::string acceptWebSocket(const HttpRequest& request);

// A frame that carries `payload` to the browser.
std::string binaryFrame(const std::string& payload);

// Takes the browser's frames apart.
class WebSocketDecoder {
  public:
    // Removes whole frames from `bytes`, appends what they carry to `payload` and what has to be answered to `answers`.
    // False when the connection is over: the browser said so, or sent what no browser sends.
    bool decode(std::string& bytes, std::string& payload, std::string& answers);

  private:
    struct Frame;
    bool take(const Frame& received, std::string& payload, std::string& answers);

    bool inMessage = false; // more frames of the current message follow
};

} // namespace ostrel

#endif
