// ImagePNG: a store of images, as gui/display.h promises it.
#include "display/panel.h"
#include "display/png_image.h"
#include "gui/display.h"

#include <cstdio>
#include <new>
#include <vector>

using namespace ostrel;

struct ImagePNG::Store {
    std::vector<Image> images; // by index; one that could not be loaded has no pixels
    int loaded = 0;
};

ImagePNG::ImagePNG() : store(new Store) {}

ImagePNG::~ImagePNG() {
    delete store;
}

int ImagePNG::loadPNG(char* path) {
    const int index = store->loaded++;
    Image image;
    Reason why;
    if (path == nullptr || !loadPng(path, image, why)) {
        fprintf(
            stderr, "ostrel: no image from %s: %s. Its place stays empty.\n", path != nullptr ? path : "(null)",
            path != nullptr ? why.text : "no file was named");
        return index;
    }
    store->images.resize(static_cast<size_t>(index) + 1);
    store->images.back() = std::move(image);
    return index;
}

void ImagePNG::drawPNG(int x, int y, int a, int, int index) {
    if (index < 0 || static_cast<size_t>(index) >= store->images.size())
        return;
    const Image& image = store->images[static_cast<size_t>(index)];
    flush(a == 0 ? drawReplacing(panelCanvas(), image, x, y, background()) : drawOver(panelCanvas(), image, x, y));
}
