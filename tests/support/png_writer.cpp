#include "tests/support/png_writer.h"

#include <zlib.h>

namespace {

void append(Bytes& bytes, const Bytes& more) {
    bytes.insert(bytes.end(), more.begin(), more.end());
}

void appendWord(Bytes& bytes, uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes.push_back(static_cast<uint8_t>(value >> shift));
}

Bytes header(uint32_t width, uint32_t height, int bitDepth, int colourType, bool isInterlaced) {
    Bytes data;
    appendWord(data, width);
    appendWord(data, height);
    append(data, {static_cast<uint8_t>(bitDepth), static_cast<uint8_t>(colourType), 0, 0, isInterlaced});
    return pngChunk("IHDR", data);
}

const Bytes SIGNATURE = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};

// Where the pixels of each of the seven passes start and how far they are apart; the eighth row is a file without.
struct Pass {
    int left, top, stepX, stepY;
};
constexpr Pass PASSES[] = {{0, 0, 8, 8}, {4, 0, 8, 8}, {0, 4, 4, 8}, {2, 0, 4, 4},
                           {0, 2, 2, 4}, {1, 0, 2, 2}, {0, 1, 1, 2}, {0, 0, 1, 1}};

// The rows of one pass, each behind a filter byte that says "none".
Bytes rowsOf(const PngPicture& picture, const Pass& pass) {
    Bytes rows;
    if (pass.left >= picture.width)
        return rows;
    for (int y = pass.top; y < picture.height; y += pass.stepY) {
        rows.push_back(0);
        unsigned filledBits = 8;
        for (int x = pass.left; x < picture.width; x += pass.stepX) {
            for (int channel = 0; channel < picture.channels(); ++channel) {
                const unsigned sample = picture.sample(x, y, channel);
                for (int bit = picture.bitDepth - 1; bit >= 0; --bit) {
                    if (filledBits == 8) {
                        rows.push_back(0);
                        filledBits = 0;
                    }
                    rows.back() = static_cast<uint8_t>(rows.back() | (sample >> bit & 1) << (7 - filledBits++));
                }
            }
        }
    }
    return rows;
}

Bytes compressed(const Bytes& bytes) {
    uLongf size = compressBound(bytes.size());
    Bytes packed(size);
    compress(packed.data(), &size, bytes.data(), bytes.size());
    packed.resize(size);
    return packed;
}

} // namespace

int PngPicture::channels() const {
    constexpr int CHANNELS[] = {1, 0, 3, 1, 2, 0, 4};
    return CHANNELS[colourType];
}

size_t PngPicture::rowBytes() const {
    const auto bitsPerPixel = static_cast<size_t>(channels()) * static_cast<size_t>(bitDepth);
    return (static_cast<size_t>(width) * bitsPerPixel + 7) / 8;
}

unsigned PngPicture::sample(int x, int y, int channel) const {
    const uint8_t* const row = samples.data() + static_cast<size_t>(y) * rowBytes();
    const auto bit = static_cast<size_t>((x * channels() + channel) * bitDepth);
    if (bitDepth == 16)
        return static_cast<unsigned>(row[bit / 8] << 8 | row[bit / 8 + 1]);
    const auto shift = 8 - static_cast<unsigned>(bitDepth) - bit % 8;
    return row[bit / 8] >> shift & ((1U << bitDepth) - 1);
}

Bytes pngChunk(const std::string& type, const Bytes& data) {
    Bytes named(type.begin(), type.end());
    append(named, data);
    Bytes chunk;
    appendWord(chunk, static_cast<uint32_t>(data.size()));
    append(chunk, named);
    appendWord(chunk, static_cast<uint32_t>(crc32(0, named.data(), static_cast<uInt>(named.size()))));
    return chunk;
}

Bytes encodePng(const PngPicture& picture) {
    Bytes file = SIGNATURE;
    append(
        file, header(
                  static_cast<uint32_t>(picture.width), static_cast<uint32_t>(picture.height), picture.bitDepth,
                  picture.colourType, picture.isInterlaced));
    if (!picture.palette.empty())
        append(file, pngChunk("PLTE", picture.palette));
    if (!picture.transparency.empty())
        append(file, pngChunk("tRNS", picture.transparency));
    Bytes rows;
    for (int pass = picture.isInterlaced ? 0 : 7; pass < (picture.isInterlaced ? 7 : 8); ++pass)
        append(rows, rowsOf(picture, PASSES[pass]));
    append(file, pngChunk("IDAT", compressed(rows)));
    append(file, pngChunk("IEND", {}));
    return file;
}

Bytes pngWithSize(uint32_t width, uint32_t height) {
    Bytes file = SIGNATURE;
    append(file, header(width, height, 8, 6, false));
    append(file, pngChunk("IDAT", compressed(Bytes(64))));
    append(file, pngChunk("IEND", {}));
    return file;
}
