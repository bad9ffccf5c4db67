#include "display/png_image.h"

#include "gui/display.h"

#include <algorithm>
#include <cerrno>
#include <csetjmp>
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

// A decoder over bytes in memory. libpng leaves a function that fails by a jump: the functions with a setjmp keep
// nothing in them that needs destroying.
class Decoder {
  public:
    Decoder(const uint8_t* bytes, size_t size, Reason& reason) : rest(bytes), restBytes(size), why(reason) {
        png = png_create_read_struct_2(PNG_LIBPNG_VER_STRING, this, fail, ignore, nullptr, allocateForPng, freeForPng);
        if (png != nullptr)
            info = png_create_info_struct(png);
    }
    ~Decoder() { png_destroy_read_struct(&png, &info, nullptr); }
    Decoder(const Decoder&) = delete;
    Decoder& operator=(const Decoder&) = delete;

    bool isReady() const { return info != nullptr; }
    unsigned width() const { return png_get_image_width(png, info); }
    unsigned height() const { return png_get_image_height(png, info); }

    bool readHeader() {
        if (setjmp(png_jmpbuf(png)) != 0)
            return false;
        png_set_read_fn(png, this, readSome);
        // What else a file may carry is skipped, and a wrong checksum anywhere means that the file is damaged.
        png_set_keep_unknown_chunks(png, PNG_HANDLE_CHUNK_NEVER, nullptr, -1);
        png_set_crc_action(png, PNG_CRC_ERROR_QUIT, PNG_CRC_ERROR_QUIT);
        png_read_info(png, info);
        return true;
    }

    // All rows as RGBA of 8 bits.
    bool readRows(uint8_t* rgba) {
        if (setjmp(png_jmpbuf(png)) != 0)
            return false;
        png_set_expand(png);
        png_set_scale_16(png);
        png_set_gray_to_rgb(png);
        png_set_add_alpha(png, 255, PNG_FILLER_AFTER);
        const int passes = png_set_interlace_handling(png);
        png_read_update_info(png, info);
        for (int pass = 0; pass < passes; ++pass) {
            for (size_t y = 0; y < height(); ++y)
                png_read_row(png, rgba + y * width() * CHANNELS, nullptr);
        }
        png_read_end(png, nullptr);
        return true;
    }

  private:
    [[noreturn]] static void fail(png_structp png, png_const_charp message) {
        const auto* self = static_cast<const Decoder*>(png_get_error_ptr(png));
        refuse(self->why, "it cannot be decoded (%s)", message);
        png_longjmp(png, 1);
    }

    static void ignore(png_structp, png_const_charp) {}

    static void readSome(png_structp png, png_bytep bytes, size_t count) {
        auto* self = static_cast<Decoder*>(png_get_io_ptr(png));
        if (count > self->restBytes)
            png_error(png, "it ends too early");
        memcpy(bytes, self->rest, count);
        self->rest += count;
        self->restBytes -= count;
    }

    static png_voidp allocateForPng(png_structp, png_alloc_size_t bytes) { return allocateBytes(bytes); }
    static void freeForPng(png_structp, png_voidp memory) { std::free(memory); }

    const uint8_t* rest;
    size_t restBytes;
    Reason& why;
    png_structp png = nullptr;
    png_infop info = nullptr;
};

} // namespace

bool decodePng(const uint8_t* bytes, size_t size, Image& image, Reason& why) {
    if (size == 0 || png_sig_cmp(bytes, 0, std::min(size, SIGNATURE_BYTES)) != 0)
        return refuse(why, "it is not a PNG file");
    Decoder decoder(bytes, size, why);
    if (!decoder.isReady())
        return refuse(why, "there is no memory to decode it");
    if (!decoder.readHeader())
        return false;
    const unsigned width = decoder.width();
    const unsigned height = decoder.height();
    if (width > IMAGE_MAX_SIDE || height > IMAGE_MAX_SIDE)
        return refuse(why, "its %ux%u pixels are more than %dx%d", width, height, IMAGE_MAX_SIDE, IMAGE_MAX_SIDE);
    const Buffer<uint8_t> rgba = allocate<uint8_t>(CHANNELS * width * height);
    if (rgba == nullptr)
        return refuse(why, "there is no memory for its %ux%u pixels", width, height);
    return decoder.readRows(rgba.get()) &&
           convert(rgba.get(), static_cast<int>(width), static_cast<int>(height), image, why);
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
    if (size < 0 || size > IMAGE_MAX_FILE_BYTES)
        return refuse(why, "it is longer than %d bytes", IMAGE_MAX_FILE_BYTES);
    const Buffer<uint8_t> bytes = allocate<uint8_t>(static_cast<size_t>(size));
    if (bytes == nullptr)
        return refuse(why, "there is no memory for its %ld bytes", static_cast<long>(size));
    const ssize_t length = file.read(bytes.get(), static_cast<size_t>(size));
    if (length < 0)
        return refuse(why, "%s", strerror(errno));
    return decodePng(bytes.get(), static_cast<size_t>(length), image, why);
}

} // namespace ostrel
