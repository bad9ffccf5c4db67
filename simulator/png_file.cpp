#include "simulator/png_file.h"

#include "simulator/failure.h"

#include <cstdio>
#include <png.h>

namespace ostrel {

void writePng(const std::string& path, const Picture& picture) {
    std::vector<unsigned char> bytes;
    bytes.reserve(size_t{3} * PANEL_PIXELS);
    for (const uint16_t pixel : picture) {
        const uint32_t colour = toRgb888(pixel);
        for (const int shift : {16, 8, 0})
            bytes.push_back(static_cast<unsigned char>(colour >> shift & 0xFFU));
    }
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    image.width = PANEL_WIDTH;
    image.height = PANEL_HEIGHT;
    image.format = PNG_FORMAT_RGB;
    const std::string unfinished = path + ".part";
    errno = 0;
    if (png_image_write_to_file(&image, unfinished.c_str(), 0, bytes.data(), 0, nullptr) == 0) {
        const int reason = errno;
        remove(unfinished.c_str());
        throw reason != 0 ? writeFailure(path, reason)
                          : Failure("cannot write " + path + ": " + std::string(image.message));
    }
    if (rename(unfinished.c_str(), path.c_str()) != 0)
        throw writeFailure(path);
}

std::vector<uint32_t> readPng(const std::string& path) {
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_file(&image, path.c_str()) == 0)
        throw Failure("cannot read " + path + ": " + std::string(image.message));
    if (image.width != PANEL_WIDTH || image.height != PANEL_HEIGHT) {
        png_image_free(&image);
        throw Failure("cannot compare with " + path + ": it is not a picture of 320 by 240 pixels");
    }
    image.format = PNG_FORMAT_RGB;
    std::vector<unsigned char> bytes(size_t{3} * PANEL_PIXELS);
    if (png_image_finish_read(&image, nullptr, bytes.data(), 0, nullptr) == 0)
        throw Failure("cannot read " + path + ": " + std::string(image.message));
    std::vector<uint32_t> colours;
    colours.reserve(PANEL_PIXELS);
    for (size_t i = 0; i < bytes.size(); i += 3)
        colours.push_back(static_cast<uint32_t>(bytes[i] << 16 | bytes[i + 1] << 8 | bytes[i + 2]));
    return colours;
}

} // namespace ostrel
