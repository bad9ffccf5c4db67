#include "simulator/web/websocket.h"

#include <gcrypt.h>

namespace ostrel {
namespace {

constexpr size_t MAX_CONTROL_BYTES = 125;

enum Opcode : unsigned { Continuation = 0, Text = 1, Binary = 2, Close = 8, Ping = 9, Pong = 10 };
enum CloseCode : unsigned { ProtocolError = 1002, CannotAccept = 1003, TooBig = 1009 };

std::string base64(const unsigned char* bytes, size_t size) {
    constexpr const char* DIGITS = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (size_t i = 0; i < size; i += 3) {
        uint32_t group = 0;
        for (size_t j = 0; j < 3; ++j)
            group = group << 8 | (i + j < size ? bytes[i + j] : 0U);
        for (size_t j = 0; j < 4; ++j)
            text += i + j <= size ? DIGITS[group >> (18 - 6 * j) & 63U] : '=';
    }
    return text;
}

std::string acceptKey(const std::string& key) {
    const std::string salted = key + "258EAFA5-E914-47DA-95CA-C5AB0DC85B11";
    unsigned char digest[20];
    gcry_md_hash_buffer(GCRY_MD_SHA1, digest, salted.data(), salted.size());
    return base64(digest, sizeof digest);
}

std::string frame(unsigned opcode, const std::string& payload) {
    constexpr unsigned FINAL = 0x80;
    std::string bytes(1, static_cast<char>(FINAL | opcode));
    const size_t size = payload.size();
    const auto appendBigEndian = [&](unsigned lengthBytes) {
        for (unsigned i = lengthBytes; i-- > 0;)
            bytes += static_cast<char>(static_cast<uint64_t>(size) >> (8 * i) & 0xFFU);
    };
    if (size <= MAX_CONTROL_BYTES)
        bytes += static_cast<char>(size);
    else if (size <= 0xFFFF) {
        bytes += static_cast<char>(126);
        appendBigEndian(2);
    } else {
        bytes += static_cast<char>(127);
        appendBigEndian(8);
    }
    return bytes + payload;
}

std::string closeFrame(unsigned code) {
    return frame(Close, {static_cast<char>(code >> 8), static_cast<char>(code & 0xFFU)});
}

} // namespace

struct WebSocketDecoder::Frame {
    bool final = false;
    unsigned opcode = 0;
    std::string payload;
};

std::string acceptWebSocket(const HttpRequest& request) {
    constexpr size_t KEY_LENGTH = 24;
    const std::string key = request.header("sec-websocket-key");
    if (request.method != "GET" || !request.hasWord("upgrade", "websocket") ||
        !request.hasWord("connection", "upgrade") || request.header("sec-websocket-version") != "13" ||
        key.size() != KEY_LENGTH)
        return "";
    const bool namesProtocol = request.hasWord("sec-websocket-protocol", "binary");
    return "HTTP/1.1 101 Switching Protocols\r\nUpgrade: websocket\r\nConnection: Upgrade\r\nSec-WebSocket-Accept: " +
           acceptKey(key) + (namesProtocol ? "\r\nSec-WebSocket-Protocol: binary" : "") + "\r\n\r\n";
}

std::string binaryFrame(const std::string& payload) {
    return frame(Binary, payload);
}

bool WebSocketDecoder::decode(std::string& bytes, std::string& payload, std::string& answers) {
    constexpr unsigned FINAL = 0x80;
    constexpr unsigned RESERVED = 0x70;
    constexpr unsigned MASKED = 0x80;
    constexpr size_t MASK_BYTES = 4;
    const auto at = [&](size_t index) { return static_cast<unsigned char>(bytes[index]); };
    while (bytes.size() >= 2) {
        size_t length = at(1) & 0x7FU;
        size_t header = 2;
        if ((at(0) & RESERVED) != 0 || (at(1) & MASKED) == 0) {
            answers += closeFrame(ProtocolError);
            return false;
        }
        if (length == 126) {
            header = 4;
            if (bytes.size() < header)
                return true;
            length = static_cast<size_t>(at(2)) << 8 | at(3);
        }
        if (length == 127 && header == 2) { // 64 KiB and more: pen events and requests are a few bytes long
            answers += closeFrame(TooBig);
            return false;
        }
        if (bytes.size() < header + MASK_BYTES + length)
            return true;
        Frame received;
        received.final = (at(0) & FINAL) != 0;
        received.opcode = at(0) & 0x0FU;
        for (size_t i = 0; i < length; ++i)
            received.payload += static_cast<char>(at(header + MASK_BYTES + i) ^ at(header + i % MASK_BYTES));
        bytes.erase(0, header + MASK_BYTES + length);
        if (!take(received, payload, answers))
            return false;
    }
    return true;
}

bool WebSocketDecoder::take(const Frame& received, std::string& payload, std::string& answers) {
    const bool isControl = received.opcode >= Close;
    if (isControl && (!received.final || received.payload.size() > MAX_CONTROL_BYTES)) {
        answers += closeFrame(ProtocolError);
        return false;
    }
    switch (received.opcode) {
    case Continuation:
    case Binary:
        if ((received.opcode == Continuation) != inMessage) {
            answers += closeFrame(ProtocolError);
            return false;
        }
        inMessage = !received.final;
        payload += received.payload;
        return true;
    case Ping:
        answers += frame(Pong, received.payload);
        return true;
    case Pong:
        return true;
    case Close:
        answers += frame(Close, received.payload.substr(0, 2));
        return false;
    default: // texts, and what is not defined
        answers += closeFrame(received.opcode == Text ? CannotAccept : ProtocolError);
        return false;
    }
}

} // namespace ostrel
