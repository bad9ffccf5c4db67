// The panel's memory: a framebuffer device in whatever format it has, or a file of the panel's size, which is a
// 320x240 RGB565 picture. Knows how to show and to read back a part of it; never decides what to show.
#ifndef OSTREL_DISPLAY_FRAMEBUFFER_H
#define OSTREL_DISPLAY_FRAMEBUFFER_H

#include "display/canvas.h"
#include "display/reason.h"

namespace ostrel {

enum class PixelFormat { Rgb565, Bgr565, Xrgb8888 };

struct Framebuffer {
    uint8_t* panel = nullptr; // the panel's first pixel, inside a larger screen perhaps; null: none is open
    size_t strideBytes = 0;
    PixelFormat format = PixelFormat::Rgb565;
    int device = -1; // to be asked for power; -1 for a file
    void* mapping = nullptr;
    size_t mappedBytes = 0;
};

// Opens and maps the framebuffer at `path`. False leaves `opened` alone and says why.
bool openFramebuffer(const char* path, Framebuffer& opened, Reason& why);
void closeFramebuffer(Framebuffer& framebuffer);

// Copies the clipped `area` of the panel-sized `canvas` to the framebuffer.
void show(const Framebuffer& framebuffer, const Canvas& canvas, const Rect& area);

// Fills `canvas` with what the framebuffer shows.
void readBack(const Framebuffer& framebuffer, const Canvas& canvas);

} // namespace ostrel

#endif
