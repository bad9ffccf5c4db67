// PNG files of every colour type and depth, for tests that read them.
#ifndef OSTREL_TESTS_SUPPORT_PNG_WRITER_H
#define OSTREL_TESTS_SUPPORT_PNG_WRITER_H

#include <cstdint>
#include <string>
#include <vector>

using Bytes = std::vector<uint8_t>;

struct PngPicture {
    int width = 0;
    int height = 0;
    int colourType = 0; // as in the file: 0 grey, 2 RGB, 3 palette, 4 grey with alpha, 6 RGBA
    int bitDepth = 8;
    bool isInterlaced = false;
    Bytes samples;      // rows packed as in the file, each beginning on a byte
    Bytes palette;      // three bytes an entry
    Bytes transparency; // the tRNS chunk: an alpha an entry, or the transparent colour's 16-bit samples; empty: none

    int channels() const;
    size_t rowBytes() const;

    // Sample `channel` of the pixel at (x, y), as it is in the file.
    unsigned sample(int x, int y, int channel) const;
};

// The file's bytes.
Bytes encodePng(const PngPicture& picture);

// One chunk with its length and its checksum.
Bytes pngChunk(const std::string& type, const Bytes& data);

// A file that has a header, valid but for what it says, and no pixels.
Bytes pngWithSize(uint32_t width, uint32_t height);

#endif
