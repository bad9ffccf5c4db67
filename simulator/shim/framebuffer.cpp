// The panel's answers as a framebuffer device: its one format, and switching it dark.
#include "simulator/shim/device.h"
#include "simulator/shim/program_memory.h"
#include "simulator/shim/requests.h"

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <linux/fb.h>

namespace ostrel {
namespace {

constexpr uint32_t WIDTH = 320;
constexpr uint32_t HEIGHT = 240;
constexpr uint32_t BYTES_PER_PIXEL = 2;

fb_var_screeninfo format() {
    fb_var_screeninfo info = {};
    info.xres = info.xres_virtual = WIDTH;
    info.yres = info.yres_virtual = HEIGHT;
    info.bits_per_pixel = 8 * BYTES_PER_PIXEL;
    info.red = {11, 5, 0};
    info.green = {5, 6, 0};
    info.blue = {0, 5, 0};
    return info;
}

fb_fix_screeninfo memory() {
    fb_fix_screeninfo info = {};
    memcpy(info.id, "ostrel-sim", sizeof "ostrel-sim");
    info.smem_len = WIDTH * HEIGHT * BYTES_PER_PIXEL;
    info.type = FB_TYPE_PACKED_PIXELS;
    info.visual = FB_VISUAL_TRUECOLOR;
    info.line_length = WIDTH * BYTES_PER_PIXEL;
    return info;
}

int setFormat(void* argument) {
    const fb_var_screeninfo only = format();
    fb_var_screeninfo wanted = {};
    const int error = copyFromProgram(&wanted, argument, sizeof wanted);
    if (error != 0)
        return error;
    if (wanted.xres != only.xres || wanted.yres != only.yres || wanted.bits_per_pixel != only.bits_per_pixel)
        return -EINVAL;
    return copyToProgram(argument, &only, sizeof only);
}

} // namespace

int requestFramebuffer(unsigned long request, void* argument) {
    switch (request) {
    case FBIOGET_VSCREENINFO: {
        const fb_var_screeninfo info = format();
        return copyToProgram(argument, &info, sizeof info);
    }
    case FBIOGET_FSCREENINFO: {
        const fb_fix_screeninfo info = memory();
        return copyToProgram(argument, &info, sizeof info);
    }
    case FBIOPUT_VSCREENINFO:
        return setFormat(argument);
    case FBIOBLANK: {
        const auto level = reinterpret_cast<uintptr_t>(argument);
        if (level > FB_BLANK_POWERDOWN)
            return -EINVAL;
        sharedPage()->blanked = static_cast<uint32_t>(level);
        return 0;
    }
    default:
        return -ENOTTY;
    }
}

} // namespace ostrel
