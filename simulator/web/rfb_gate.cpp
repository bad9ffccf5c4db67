#include "simulator/web/rfb_gate.h"

#include <algorithm>

namespace ostrel {
namespace {

constexpr size_t MAX_ENCODINGS = 1024;
constexpr uint32_t MAX_CUT_TEXT = 1U << 20;

enum Message : unsigned { SetPixelFormat = 0, SetEncodings = 2, UpdateRequest = 3, Key = 4, Pointer = 5, CutText = 6 };

struct MessageSize {
    unsigned message;
    size_t bytes;
};
constexpr MessageSize FIXED_SIZES[] = {{SetPixelFormat, 20}, {UpdateRequest, 10}, {Key, 8}, {Pointer, 6}};

// Everything that shows exact pixels, and the hint how hard to compress. Left out: encodings that lose colours, the
// JPEG qualities that let Tight lose them, and extensions that a panel has no use for.
constexpr int32_t ENCODINGS[] = {0 /*raw*/,  1 /*copy*/,  2 /*RRE*/,   5 /*hextile*/,
                                 6 /*zlib*/, 7 /*tight*/, 16 /*ZRLE*/, -224 /*last rectangle*/};
constexpr int32_t COMPRESSION_LEAST = -256;
constexpr int32_t COMPRESSION_MOST = -247;

bool isWanted(int32_t encoding) {
    return std::find(std::begin(ENCODINGS), std::end(ENCODINGS), encoding) != std::end(ENCODINGS) ||
           (encoding >= COMPRESSION_LEAST && encoding <= COMPRESSION_MOST);
}

uint32_t bigEndian(const std::string& bytes, size_t at, size_t count) {
    uint32_t value = 0;
    for (size_t i = 0; i < count; ++i)
        value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
    return value;
}

// True colour in 8, 16 or 32 bits, each channel within the pixel and filling its bits.
bool isUsablePixelFormat(const std::string& message) {
    const uint32_t bits = bigEndian(message, 4, 1);
    const bool trueColour = bigEndian(message, 7, 1) != 0;
    if ((bits != 8 && bits != 16 && bits != 32) || !trueColour)
        return false;
    for (size_t channel = 0; channel < 3; ++channel) {
        const uint32_t most = bigEndian(message, 8 + 2 * channel, 2);
        const uint32_t shift = bigEndian(message, 14 + channel, 1);
        if (most == 0 || most > 255 || (most & (most + 1)) != 0 || shift >= bits ||
            most > (~0U >> (32 - bits)) >> shift)
            return false;
    }
    return true;
}

void move(std::string& from, size_t count, std::string& to) {
    to.append(from, 0, count);
    from.erase(0, count);
}

} // namespace

bool RfbGate::pass(std::string& bytes, std::string& accepted) {
    if (!established && !bytes.empty()) { // ClientInit is one byte
        move(bytes, 1, accepted);
        established = true;
    }
    Step step = Step::Passed;
    while (step == Step::Passed && !bytes.empty())
        step = passMessage(bytes, accepted);
    return step != Step::Refused;
}

RfbGate::Step RfbGate::passMessage(std::string& bytes, std::string& accepted) {
    if (toDrop > 0)
        return dropCutText(bytes);
    const unsigned message = static_cast<unsigned char>(bytes[0]);
    if (message == SetEncodings)
        return passEncodings(bytes, accepted);
    if (message == CutText)
        return dropCutText(bytes);
    for (const MessageSize& row : FIXED_SIZES) {
        if (row.message != message)
            continue;
        if (bytes.size() < row.bytes)
            return Step::Incomplete;
        if (message == SetPixelFormat && !isUsablePixelFormat(bytes))
            return Step::Refused;
        move(bytes, row.bytes, accepted);
        return Step::Passed;
    }
    return Step::Refused;
}

RfbGate::Step RfbGate::passEncodings(std::string& bytes, std::string& accepted) {
    constexpr size_t HEADER = 4;
    if (bytes.size() < HEADER)
        return Step::Incomplete;
    const size_t count = bigEndian(bytes, 2, 2);
    if (count > MAX_ENCODINGS)
        return Step::Refused;
    if (bytes.size() < HEADER + 4 * count)
        return Step::Incomplete;
    std::string wanted;
    for (size_t i = 0; i < count; ++i)
        if (isWanted(static_cast<int32_t>(bigEndian(bytes, HEADER + 4 * i, 4))))
            wanted.append(bytes, HEADER + 4 * i, 4);
    const size_t left = wanted.size() / 4;
    accepted += {static_cast<char>(SetEncodings), 0, static_cast<char>(left >> 8), static_cast<char>(left & 0xFFU)};
    accepted += wanted;
    bytes.erase(0, HEADER + 4 * count);
    return Step::Passed;
}

// A panel has no clipboard. Extended clipboards give their length as a negative number.
RfbGate::Step RfbGate::dropCutText(std::string& bytes) {
    constexpr size_t HEADER = 8;
    if (toDrop == 0) {
        if (bytes.size() < HEADER)
            return Step::Incomplete;
        const uint32_t field = bigEndian(bytes, 4, 4);
        const uint32_t length = (field & 0x80000000U) != 0 ? ~field + 1 : field;
        if (length > MAX_CUT_TEXT)
            return Step::Refused;
        toDrop = HEADER + length;
    }
    const size_t now = static_cast<size_t>(std::min<uint64_t>(toDrop, bytes.size()));
    bytes.erase(0, now);
    toDrop -= now;
    return Step::Passed;
}

} // namespace ostrel
