#include "display/framebuffer.h"

#include "display/pixel_format.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <linux/fb.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <unistd.h>

namespace ostrel {

namespace {

constexpr size_t FILE_BYTES = static_cast<size_t>(PANEL_WIDTH) * PANEL_HEIGHT * sizeof(uint16_t);

bool isChannel(const fb_bitfield& channel, uint32_t offset, uint32_t length) {
    return channel.offset == offset && channel.length == length && channel.msb_right == 0;
}

struct KnownFormat {
    PixelFormat format;
    uint32_t bitsPerPixel;
    fb_bitfield red, green, blue;
};

constexpr KnownFormat KNOWN_FORMATS[] = {
    // format               bits  red         green      blue
    {PixelFormat::Rgb565, 16, {11, 5, 0}, {5, 6, 0}, {0, 5, 0}},
    {PixelFormat::Bgr565, 16, {0, 5, 0}, {5, 6, 0}, {11, 5, 0}},
    {PixelFormat::Xrgb8888, 32, {16, 8, 0}, {8, 8, 0}, {0, 8, 0}},
};

const KnownFormat* formatOf(const fb_var_screeninfo& screen) {
    for (const KnownFormat& known : KNOWN_FORMATS) {
        if (screen.bits_per_pixel == known.bitsPerPixel && isChannel(screen.red, known.red.offset, known.red.length) &&
            isChannel(screen.green, known.green.offset, known.green.length) &&
            isChannel(screen.blue, known.blue.offset, known.blue.length))
            return &known;
    }
    return nullptr;
}

bool map(int file, size_t bytes, Framebuffer& opened, Reason& why) {
    void* const memory = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    if (memory == MAP_FAILED)
        return refuse(why, "its memory cannot be mapped: %s", strerror(errno));
    opened.mapping = memory;
    opened.mappedBytes = bytes;
    return true;
}

bool openDevice(int device, const fb_var_screeninfo& screen, Framebuffer& opened, Reason& why) {
    fb_fix_screeninfo fixed{};
    if (ioctl(device, FBIOGET_FSCREENINFO, &fixed) < 0)
        return refuse(why, "it does not tell its layout: %s", strerror(errno));
    if (screen.xres < PANEL_WIDTH || screen.yres < PANEL_HEIGHT)
        return refuse(
            why, "its %ux%u pixels are fewer than %dx%d", screen.xres, screen.yres, PANEL_WIDTH, PANEL_HEIGHT);
    const KnownFormat* const known = fixed.type == FB_TYPE_PACKED_PIXELS ? formatOf(screen) : nullptr;
    if (known == nullptr)
        return refuse(why, "its pixel format (%u bits) is none of RGB565, BGR565 and XRGB8888", screen.bits_per_pixel);

    // In 64 bits: a driver's numbers are not to be trusted to fit.
    const uint64_t column = uint64_t{screen.xoffset} + (screen.xres - PANEL_WIDTH) / 2;
    const uint64_t line = uint64_t{screen.yoffset} + (screen.yres - PANEL_HEIGHT) / 2;
    const uint64_t bytesPerPixel = known->bitsPerPixel / 8;
    const uint64_t first = line * fixed.line_length + column * bytesPerPixel;
    const uint64_t end = first + uint64_t{PANEL_HEIGHT - 1} * fixed.line_length + PANEL_WIDTH * bytesPerPixel;
    if ((column + PANEL_WIDTH) * bytesPerPixel > fixed.line_length || end > fixed.smem_len)
        return refuse(why, "its memory of %u bytes does not hold the screen that it describes", fixed.smem_len);

    // Memory that does not start on a page is mapped from the page's start.
    const size_t lead = fixed.smem_start % static_cast<size_t>(sysconf(_SC_PAGESIZE));
    if (!map(device, lead + fixed.smem_len, opened, why))
        return false;
    opened.panel = static_cast<uint8_t*>(opened.mapping) + lead + first;
    opened.strideBytes = fixed.line_length;
    opened.format = known->format;
    opened.device = device;
    return true;
}

bool openFile(int file, Framebuffer& opened, Reason& why) {
    if (lseek(file, 0, SEEK_END) != static_cast<off_t>(FILE_BYTES))
        return refuse(why, "it is neither a framebuffer device nor a file of %zu bytes", FILE_BYTES);
    if (!map(file, FILE_BYTES, opened, why))
        return false;
    opened.panel = static_cast<uint8_t*>(opened.mapping);
    opened.strideBytes = PANEL_WIDTH * sizeof(uint16_t);
    opened.format = PixelFormat::Rgb565;
    return true;
}

} // namespace

bool openFramebuffer(const char* path, Framebuffer& opened, Reason& why) {
    const int file = open(path, O_RDWR | O_CLOEXEC);
    if (file < 0)
        return refuse(why, "%s", strerror(errno));
    Framebuffer found;
    fb_var_screeninfo screen{};
    const bool isDevice = ioctl(file, FBIOGET_VSCREENINFO, &screen) >= 0;
    const bool usable = isDevice ? openDevice(file, screen, found, why) : openFile(file, found, why);
    // A mapping outlives its descriptor; only a device is talked to again.
    if (found.device < 0)
        close(file);
    if (usable)
        opened = found;
    return usable;
}

void closeFramebuffer(Framebuffer& framebuffer) {
    if (framebuffer.mapping != nullptr)
        munmap(framebuffer.mapping, framebuffer.mappedBytes);
    if (framebuffer.device >= 0)
        close(framebuffer.device);
    framebuffer = {};
}

void show(const Framebuffer& framebuffer, const Canvas& canvas, const Rect& area) {
    const Rect part = intersection(area, {0, 0, canvas.width, canvas.height});
    if (framebuffer.panel == nullptr || part.isEmpty())
        return;
    const size_t bytesPerPixel = bytesOf(framebuffer.format);
    auto columns = static_cast<size_t>(part.right - part.left);
    auto rows = static_cast<size_t>(part.bottom - part.top);
    const size_t left = static_cast<size_t>(part.left) * bytesPerPixel;
    uint8_t* line = framebuffer.panel + static_cast<size_t>(part.top) * framebuffer.strideBytes + left;
    const uint16_t* source = canvas.row(part.top) + part.left;
    // Whole lines that follow each other on both sides are one run.
    if (columns == static_cast<size_t>(canvas.stridePx) && framebuffer.strideBytes == columns * bytesPerPixel) {
        columns *= rows;
        rows = 1;
    }
    for (; rows > 0; --rows, line += framebuffer.strideBytes, source += canvas.stridePx)
        encodeRun(framebuffer.format, line, source, columns);
}

void readBack(const Framebuffer& framebuffer, const Canvas& canvas) {
    for (int y = 0; framebuffer.panel != nullptr && y < canvas.height; ++y)
        decodeRun(
            framebuffer.format, canvas.row(y), framebuffer.panel + static_cast<size_t>(y) * framebuffer.strideBytes,
            static_cast<size_t>(canvas.width));
}

} // namespace ostrel
