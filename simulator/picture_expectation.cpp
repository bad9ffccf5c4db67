#include "simulator/picture_expectation.h"

#include "simulator/failure.h"
#include "simulator/png_file.h"

#include <algorithm>
#include <filesystem>

namespace ostrel {
namespace {

struct Difference {
    int pixels = 0;
    int left = PANEL_WIDTH;
    int top = PANEL_HEIGHT;
    int right = -1;
    int bottom = -1;
};

Difference compare(const std::vector<uint32_t>& colours, const Picture& picture) {
    Difference difference;
    for (int i = 0; i < PANEL_PIXELS; ++i) {
        const auto index = static_cast<size_t>(i);
        if (colours[index] == toRgb888(picture[index]))
            continue;
        ++difference.pixels;
        difference.left = std::min(difference.left, i % PANEL_WIDTH);
        difference.right = std::max(difference.right, i % PANEL_WIDTH);
        difference.top = std::min(difference.top, i / PANEL_WIDTH);
        difference.bottom = std::max(difference.bottom, i / PANEL_WIDTH);
    }
    return difference;
}

// The differing pixels in red over a dim picture.
Picture marked(const std::vector<uint32_t>& colours, Picture picture) {
    constexpr uint16_t RED = 0xF800;
    constexpr uint16_t UPPER_BITS = 0x39E7; // halves twice each channel without one reaching into the next
    for (size_t i = 0; i < picture.size(); ++i)
        picture[i] = colours[i] != toRgb888(picture[i]) ? RED : static_cast<uint16_t>(picture[i] >> 2 & UPPER_BITS);
    return picture;
}

} // namespace

PictureExpectation::PictureExpectation(const std::string& file) : file(file), colours(readPng(file)) {}

bool PictureExpectation::isMetBy(const Picture& picture) const {
    return compare(colours, picture).pixels == 0;
}

std::string PictureExpectation::explain(const Picture& picture) const {
    const std::string name = std::filesystem::path(file).stem().string();
    std::error_code error;
    std::filesystem::copy_file(file, name + ".expected.png", std::filesystem::copy_options::overwrite_existing, error);
    if (error)
        throw writeFailure(name + ".expected.png", error.value());
    writePng(name + ".actual.png", picture);
    writePng(name + ".difference.png", marked(colours, picture));
    const Difference difference = compare(colours, picture);
    return std::to_string(difference.pixels) + " pixels differ from " + file + ", within " +
           std::to_string(difference.left) + "," + std::to_string(difference.top) + " to " +
           std::to_string(difference.right) + "," + std::to_string(difference.bottom) + "; see " + name +
           ".expected.png, .actual.png and .difference.png";
}

std::string saveActual(const std::string& file, const Picture& picture) {
    const std::string actual = std::filesystem::path(file).stem().string() + ".actual.png";
    try {
        writePng(actual, picture);
    } catch (const Failure& failure) {
        return failure.what();
    }
    return "the panel is saved as " + actual + ": if it is right, rename it to " + file;
}

} // namespace ostrel
