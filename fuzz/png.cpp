// Any bytes as an image: decoded or refused with a reason, and what is decoded can be drawn.
#include "display/png_image.h"
#include "gui/display.h"

#include <cstdlib>
#include <vector>
#include <zlib.h>

using namespace ostrel;

extern "C" size_t LLVMFuzzerMutate(uint8_t* data, size_t size, size_t maxSize);

namespace {

constexpr size_t SIGNATURE_BYTES = 8;
constexpr size_t CHUNK_FRAME_BYTES = 12; // length, type and checksum

size_t wordAt(const uint8_t* bytes) {
    return static_cast<size_t>(bytes[0]) << 24 | static_cast<size_t>(bytes[1]) << 16 |
           static_cast<size_t>(bytes[2]) << 8 | bytes[3];
}

void repairChecksums(uint8_t* file, size_t size) {
    size_t at = SIGNATURE_BYTES;
    while (at + CHUNK_FRAME_BYTES <= size && wordAt(file + at) <= size - at - CHUNK_FRAME_BYTES) {
        const size_t length = wordAt(file + at);
        uint8_t* const checksum = file + at + 8 + length;
        const auto right = static_cast<uint32_t>(crc32(0, file + at + 4, static_cast<uInt>(length + 4)));
        for (int i = 0; i < 4; ++i)
            checksum[i] = static_cast<uint8_t>(right >> (24 - 8 * i));
        at += CHUNK_FRAME_BYTES + length;
    }
}

} // namespace

// Most changes get right checksums, or hardly any would be looked at behind them.
extern "C" size_t LLVMFuzzerCustomMutator(uint8_t* data, size_t size, size_t maxSize, unsigned seed) {
    const size_t changed = LLVMFuzzerMutate(data, size, maxSize);
    if (seed % 8 != 0)
        repairChecksums(data, changed);
    return changed;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Image image;
    Reason why;
    if (!decodePng(data, size, image, why)) {
        if (why.text[0] == 0 || image.colours != nullptr)
            std::abort();
        return 0;
    }
    if (image.width < 1 || image.width > IMAGE_MAX_SIDE || image.height < 1 || image.height > IMAGE_MAX_SIDE)
        std::abort();
    static std::vector<uint16_t> pixels(size_t{PANEL_WIDTH} * PANEL_HEIGHT);
    const Canvas canvas = canvasOver(pixels.data(), PANEL_WIDTH, PANEL_HEIGHT, PANEL_WIDTH);
    drawOver(canvas, image, -3, 200);
    drawReplacing(canvas, image, 300, -2, 0x057D);
    return 0;
}
