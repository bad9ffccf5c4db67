#include "display/pixel_format.h"

#include <cstring>

namespace ostrel {

namespace {

uint16_t withRedAndBlueSwapped(uint16_t colour) {
    return static_cast<uint16_t>(colour << 11 | (colour & 0x07E0) | colour >> 11);
}

// The high bits repeated below themselves: white stays white, and black black.
uint32_t widened(uint16_t colour) {
    const uint32_t red = colour >> 11;
    const uint32_t green = colour >> 5 & 0x3FU;
    const uint32_t blue = colour & 0x1FU;
    return 0xFF000000U | (red << 3 | red >> 2) << 16 | (green << 2 | green >> 4) << 8 | (blue << 3 | blue >> 2);
}

uint16_t narrowed(uint32_t colour) {
    return static_cast<uint16_t>((colour >> 8 & 0xF800U) | (colour >> 5 & 0x07E0U) | (colour >> 3 & 0x001FU));
}

template<typename From, typename To, To CONVERT(From)>
void convertRun(void* to, const void* from, size_t count) {
    auto* target = static_cast<uint8_t*>(to);
    const auto* source = static_cast<const uint8_t*>(from);
    for (; count > 0; --count, source += sizeof(From), target += sizeof(To)) {
        // Through copies, since nothing says that a device's lines begin at even addresses.
        From value;
        memcpy(&value, source, sizeof value);
        const To converted = CONVERT(value);
        memcpy(target, &converted, sizeof converted);
    }
}

} // namespace

size_t bytesOf(PixelFormat format) {
    return format == PixelFormat::Xrgb8888 ? 4 : 2;
}

void encodeRun(PixelFormat format, uint8_t* device, const uint16_t* pixels, size_t count) {
    switch (format) {
    case PixelFormat::Rgb565:
        memcpy(device, pixels, count * sizeof *pixels);
        break;
    case PixelFormat::Bgr565:
        convertRun<uint16_t, uint16_t, withRedAndBlueSwapped>(device, pixels, count);
        break;
    case PixelFormat::Xrgb8888:
        convertRun<uint16_t, uint32_t, widened>(device, pixels, count);
        break;
    }
}

void decodeRun(PixelFormat format, uint16_t* pixels, const uint8_t* device, size_t count) {
    switch (format) {
    case PixelFormat::Rgb565:
        memcpy(pixels, device, count * sizeof *pixels);
        break;
    case PixelFormat::Bgr565:
        convertRun<uint16_t, uint16_t, withRedAndBlueSwapped>(pixels, device, count);
        break;
    case PixelFormat::Xrgb8888:
        convertRun<uint32_t, uint16_t, narrowed>(pixels, device, count);
        break;
    }
}

} // namespace ostrel
