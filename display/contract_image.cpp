#include "gui/display.h"

struct ImagePNG::Store {
    int loaded = 0;
};

ImagePNG::ImagePNG() : store(new Store) {}
ImagePNG::~ImagePNG() {
    delete store;
}
int ImagePNG::loadPNG(char*) {
    return store->loaded++;
}
void ImagePNG::drawPNG(int, int, int, int, int) {}
