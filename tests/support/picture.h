// RGB565 pictures in tests: cut from a canvas, typed in as rows of characters, read from and written to PNG files.
#ifndef OSTREL_TESTS_SUPPORT_PICTURE_H
#define OSTREL_TESTS_SUPPORT_PICTURE_H

#include "display/canvas.h"

#include <string>
#include <vector>

struct Picture {
    int width = 0;
    int height = 0;
    std::vector<uint16_t> pixels;

    uint16_t at(int x, int y) const {
        return pixels[static_cast<size_t>(y) * static_cast<size_t>(width) + static_cast<size_t>(x)];
    }
    uint16_t& at(int x, int y) {
        return pixels[static_cast<size_t>(y) * static_cast<size_t>(width) + static_cast<size_t>(x)];
    }
};

inline bool operator==(const Picture& a, const Picture& b) {
    return a.width == b.width && a.height == b.height && a.pixels == b.pixels;
}
inline bool operator!=(const Picture& a, const Picture& b) {
    return !(a == b);
}

Picture blankPicture(int width, int height, uint16_t colour);

// A copy of the part of `canvas` or `picture` inside `area`, which must lie on it.
Picture cut(const ostrel::Canvas& canvas, const ostrel::Rect& area);
Picture cut(const Picture& picture, const ostrel::Rect& area);

// The pixels that have `colour` as '#', the others as '.', one row a line: for tiny shapes typed into a test.
std::string shapeOf(const Picture& picture, uint16_t colour);

// PNG files of 8 bits a channel; RGB565 goes there and back unchanged. Reading what is not there or broken gives an
// empty picture; writing tells whether it worked.
Picture readPicture(const std::string& path);
bool writePicture(const Picture& picture, const std::string& path);

#endif
