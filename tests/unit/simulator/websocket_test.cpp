#include "simulator/web/websocket.h"

#include <gtest/gtest.h>

using namespace ostrel;

namespace {

HttpRequest upgrade() {
    HttpRequest request;
    request.method = "GET";
    request.headers = {
        {"upgrade", "websocket"},
        {"connection", "keep-alive, Upgrade"},
        {"sec-websocket-version", "13"},
        {"sec-websocket-key", "dGhlIHNhbXBsZSBub25jZQ=="}};
    return request;
}

// A browser's frame: masked. `first` holds the final bit and the opcode.
std::string frame(unsigned char first, const std::string& payload) {
    const std::string mask = "\x11\x22\x33\x44";
    std::string bytes(1, static_cast<char>(first));
    if (payload.size() < 126)
        bytes += static_cast<char>(0x80 | payload.size());
    else {
        bytes += static_cast<char>(0xFE);
        bytes += static_cast<char>(payload.size() >> 8);
        bytes += static_cast<char>(payload.size() & 0xFF);
    }
    bytes += mask;
    for (size_t i = 0; i < payload.size(); ++i)
        bytes += static_cast<char>(payload[i] ^ mask[i % 4]);
    return bytes;
}

constexpr unsigned char CONTINUED = 0x02;
constexpr unsigned char WHOLE = 0x82;
constexpr unsigned char LAST = 0x80;
constexpr unsigned char TEXT = 0x81;
constexpr unsigned char CLOSE = 0x88;
constexpr unsigned char PING = 0x89;
constexpr unsigned char PONG = 0x8A;

struct Decoded {
    bool alive;
    std::string payload;
    std::string answers;
};

Decoded decode(std::string bytes) {
    WebSocketDecoder decoder;
    Decoded decoded;
    decoded.alive = decoder.decode(bytes, decoded.payload, decoded.answers);
    return decoded;
}

TEST(WebSocket, AnswersTheHandshakeOfTheStandardsExample) {
    EXPECT_EQ(
        acceptWebSocket(upgrade()), "HTTP/1.1 101 Switching Protocols\r\nUpgrade: websocket\r\nConnection: Upgrade\r\n"
                                    "Sec-WebSocket-Accept: s3pPLMBiTxaQ9kYGzzhZRbK+xOo=\r\n\r\n");
    HttpRequest request = upgrade();
    request.headers["sec-websocket-protocol"] = "base64, binary";
    EXPECT_NE(acceptWebSocket(request).find("\r\nSec-WebSocket-Protocol: binary\r\n"), std::string::npos);
}

TEST(WebSocket, RefusesAnIncompleteHandshake) {
    for (const char* header : {"upgrade", "connection", "sec-websocket-version", "sec-websocket-key"}) {
        HttpRequest request = upgrade();
        request.headers.erase(header);
        EXPECT_EQ(acceptWebSocket(request), "") << header;
        request.headers[header] = "x";
        EXPECT_EQ(acceptWebSocket(request), "") << header;
    }
    HttpRequest request = upgrade();
    request.method = "POST";
    EXPECT_EQ(acceptWebSocket(request), "");
}

TEST(WebSocket, TakesFramesApartHoweverTheyArrive) {
    const std::string bytes = frame(WHOLE, "one") + frame(CONTINUED, "t") + frame(PING, "hi") + frame(LAST, "wo") +
                              frame(PONG, "") + frame(WHOLE, std::string(126, 'x'));
    WebSocketDecoder decoder;
    std::string received;
    std::string payload;
    std::string answers;
    for (const char byte : bytes) {
        received += byte;
        ASSERT_TRUE(decoder.decode(received, payload, answers));
    }
    EXPECT_EQ(payload, "onetwo" + std::string(126, 'x'));
    EXPECT_EQ(answers, "\x8A\x02hi");
    EXPECT_EQ(received, "");
}

TEST(WebSocket, EndsWhenTheBrowserSaysSo) {
    const Decoded decoded = decode(frame(CLOSE, "\x03\xE8 bye") + frame(WHOLE, "late"));
    EXPECT_FALSE(decoded.alive);
    EXPECT_EQ(decoded.payload, "");
    EXPECT_EQ(decoded.answers, "\x88\x02\x03\xE8");
}

TEST(WebSocket, EndsOnWhatNoBrowserSends) {
    const std::string protocolError = "\x88\x02\x03\xEA";
    std::string unmasked = frame(WHOLE, "x");
    unmasked[1] = 1;
    const struct {
        const char* what;
        std::string bytes;
        std::string answer;
    } cases[] = {
        {"not masked", unmasked, protocolError},
        {"a reserved bit", frame(0xC2, "x"), protocolError},
        {"a text", frame(TEXT, "x"), "\x88\x02\x03\xEB"},
        {"an unknown kind", frame(0x83, "x"), protocolError},
        {"an unknown control", frame(0x8B, "x"), protocolError},
        {"a part of no message", frame(LAST, "x"), protocolError},
        {"a message within a message", frame(CONTINUED, "x") + frame(WHOLE, "y"), protocolError},
        {"a ping in parts", frame(0x09, "x"), protocolError},
        {"a large ping", frame(PING, std::string(126, 'x')), protocolError},
        {"64 KiB and more", "\x82\xFF", "\x88\x02\x03\xF1"},
    };
    for (const auto& [what, bytes, answer] : cases) {
        const Decoded decoded = decode(bytes);
        EXPECT_FALSE(decoded.alive) << what;
        EXPECT_EQ(decoded.answers, answer) << what;
    }
}

TEST(WebSocket, WritesLengthsInThreeForms) {
    EXPECT_EQ(
        binaryFrame("ab"), "\x82\x02"
                           "ab");
    EXPECT_EQ(binaryFrame(std::string(125, 'x')).substr(0, 2), "\x82\x7D");
    EXPECT_EQ(binaryFrame(std::string(126, 'x')).substr(0, 4), std::string("\x82\x7E\x00\x7E", 4));
    EXPECT_EQ(binaryFrame(std::string(65535, 'x')).substr(0, 4), "\x82\x7E\xFF\xFF");
    EXPECT_EQ(binaryFrame(std::string(65536, 'x')).substr(0, 10), std::string("\x82\x7F\0\0\0\0\0\x01\0\0", 10));
}

} // namespace
