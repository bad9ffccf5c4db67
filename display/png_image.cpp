#include "display/png_image.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <png.h>
#include <unistd.h>

namespace ostrel {

namespace {

constexpr size_t SIGNATURE_BYTES = 8;
constexpr size_t CHANNELS = 4;

class File {
  public:
    // Not waiting: a pipe that nobody writes to would block the program.
    explicit File(const char* path) : descriptor(open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {}
    ~File() {
        if (isOpen())
            close(descriptor);
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    bool isOpen() const { return descriptor >= 0; }
    off_t size() const { return lseek(descriptor, 0, SEEK_END); }

    // From the start: how many of `count` bytes there were, or -1.
    ssize_t read(uint8_t* bytes, size_t count) const {
        size_t got = 0;
        while (got < count) {
            const ssize_t step = pread(descriptor, bytes + got, count - got, static_cast<off_t>(got));
            if (step < 0 && errno == EINTR)
                continue;
            if (step < 0)
                return -1;
            if (step == 0)
                break;
            got += static_cast<size_t>(step);
        }
        return static_cast<ssize_t>(got);
    }

  private:
    int descriptor;
};

// Rounded to the nearest colour that the panel has.
uint16_t panelColour(const uint8_t* rgb) {
    const int red = (rgb[0] * 31 + 127) / 255;
    const int green = (rgb[1] * 63 + 127) / 255;
    const int blue = (rgb[2] * 31 + 127) / 255;
    return static_cast<uint16_t>(red << 11 | green << 5 | blue);
}

bool convert(const uint8_t* rgba, int width, int height, Image& image, Reason& why) {
    const size_t count = static_cast<size_t>(width) * static_cast<size_t>(height);
    Image made{width, height, allocate<uint16_t>(count), allocate<uint8_t>(count)};
    if (made.colours == nullptr || made.alpha == nullptr)
        return refuse(why, "there is no memory for its %dx%d pixels", width, height);
    bool isOpaque = true;
    for (size_t i = 0; i < count; ++i, rgba += CHANNELS) {
        made.colours[i] = panelColour(rgba);
        made.alpha[i] = rgba[3];
        isOpaque = isOpaque && rgba[3] == 255;
    }
    if (isOpaque)
        made.alpha.reset();
    image = std::move(made);
    return true;
}

// The header has been read into `reader`.
bool decodePixels(png_image& reader, Image& image, Reason& why) {
    if (reader.width > MAX_IMAGE_SIDE || reader.height > MAX_IMAGE_SIDE)
        return refuse(
            why, "its %ux%u pixels are more than %dx%d", reader.width, reader.height, MAX_IMAGE_SIDE, MAX_IMAGE_SIDE);
    reader.format = PNG_FORMAT_RGBA;
    // Image editors mean sRGB when they save 16 bits and say nothing.
    reader.flags |= PNG_IMAGE_FLAG_16BIT_sRGB;
    const Buffer<uint8_t> rgba = allocate<uint8_t>(PNG_IMAGE_SIZE(reader));
    if (rgba == nullptr)
        return refuse(why, "there is no memory to decode its %ux%u pixels", reader.width, reader.height);
    if (png_image_finish_read(&reader, nullptr, rgba.get(), 0, nullptr) == 0)
        return refuse(why, "it is broken (%s)", reader.message);
    return convert(rgba.get(), static_cast<int>(reader.width), static_cast<int>(reader.height), image, why);
}

} // namespace

bool decodePng(const uint8_t* bytes, size_t size, Image& image, Reason& why) {
    if (png_sig_cmp(bytes, 0, std::min(size, SIGNATURE_BYTES)) != 0)
        return refuse(why, "it is not a PNG file");
    png_image reader{};
    reader.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_memory(&reader, bytes, size) == 0)
        return refuse(why, "it is broken (%s)", reader.message);
    const bool isDecoded = decodePixels(reader, image, why);
    png_image_free(&reader);
    return isDecoded;
}

bool loadPng(const char* path, Image& image, Reason& why) {
    const File file(path);
    if (!file.isOpen())
        return refuse(why, "%s", strerror(errno));
    // Read before measured: a directory has a size too, but says on reading what it is.
    uint8_t signature[SIGNATURE_BYTES];
    const ssize_t got = file.read(signature, sizeof signature);
    if (got < 0)
        return refuse(why, "%s", strerror(errno));
    if (png_sig_cmp(signature, 0, static_cast<size_t>(got)) != 0)
        return refuse(why, "it is not a PNG file");
    const off_t size = file.size();
    if (size < 0 || size > MAX_IMAGE_FILE_BYTES)
        return refuse(why, "it is longer than %d bytes", MAX_IMAGE_FILE_BYTES);
    const Buffer<uint8_t> bytes = allocate<uint8_t>(static_cast<size_t>(size));
    if (bytes == nullptr)
        return refuse(why, "there is no memory for its %ld bytes", static_cast<long>(size));
    const ssize_t length = file.read(bytes.get(), static_cast<size_t>(size));
    if (length < 0)
        return refuse(why, "%s", strerror(errno));
    return decodePng(bytes.get(), static_cast<size_t>(length), image, why);
}

} // namespace ostrel
