#include "tests/support/picture.h"

#include <png.h>

Picture blankPicture(int width, int height, uint16_t colour) {
    return {width, height, std::vector<uint16_t>(static_cast<size_t>(width) * static_cast<size_t>(height), colour)};
}

Picture cut(const ostrel::Canvas& canvas, const ostrel::Rect& area) {
    Picture part{area.right - area.left, area.bottom - area.top, {}};
    for (int y = area.top; y < area.bottom; ++y)
        part.pixels.insert(part.pixels.end(), canvas.row(y) + area.left, canvas.row(y) + area.right);
    return part;
}

Picture cut(const Picture& picture, const ostrel::Rect& area) {
    Picture part{area.right - area.left, area.bottom - area.top, {}};
    for (int y = area.top; y < area.bottom; ++y)
        for (int x = area.left; x < area.right; ++x)
            part.pixels.push_back(picture.at(x, y));
    return part;
}

std::string shapeOf(const Picture& picture, uint16_t colour) {
    std::string rows;
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x)
            rows += picture.at(x, y) == colour ? '#' : '.';
        rows += '\n';
    }
    return rows;
}

Picture readPicture(const std::string& path) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_file(&image, path.c_str()) == 0)
        return {};
    image.format = PNG_FORMAT_RGB;
    std::vector<uint8_t> bytes(PNG_IMAGE_SIZE(image));
    if (png_image_finish_read(&image, nullptr, bytes.data(), 0, nullptr) == 0)
        return {};
    Picture picture{static_cast<int>(image.width), static_cast<int>(image.height), {}};
    for (size_t i = 0; i + 2 < bytes.size(); i += 3)
        picture.pixels.push_back(
            static_cast<uint16_t>((bytes[i] >> 3) << 11 | (bytes[i + 1] >> 2) << 5 | bytes[i + 2] >> 3));
    return picture;
}

bool writePicture(const Picture& picture, const std::string& path) {
    std::vector<uint8_t> bytes;
    for (const uint16_t colour : picture.pixels) {
        const int red = colour >> 11;
        const int green = colour >> 5 & 0x3F;
        const int blue = colour & 0x1F;
        bytes.push_back(static_cast<uint8_t>(red << 3 | red >> 2));
        bytes.push_back(static_cast<uint8_t>(green << 2 | green >> 4));
        bytes.push_back(static_cast<uint8_t>(blue << 3 | blue >> 2));
    }
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(picture.width);
    image.height = static_cast<png_uint_32>(picture.height);
    image.format = PNG_FORMAT_RGB;
    return png_image_write_to_file(&image, path.c_str(), 0, bytes.data(), 0, nullptr) != 0;
}
