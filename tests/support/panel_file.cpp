#include "tests/support/panel_file.h"

#include "display/panel.h"

#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <unistd.h>

using namespace ostrel;

PanelFile::PanelFile(uint16_t before) {
    char name[] = "/tmp/ostrel-panel-XXXXXX";
    const int file = mkstemp(name);
    close(file);
    filePath = name;
    overwrite(before);
    setenv("OSTREL_FRAMEBUFFER", name, 1);
    reopenPanel();
}

PanelFile::~PanelFile() {
    unlink(filePath.c_str());
}

Picture PanelFile::picture() const {
    Picture shown = blankPicture(PANEL_WIDTH, PANEL_HEIGHT, 0);
    std::ifstream file(filePath, std::ios::binary);
    file.read(reinterpret_cast<char*>(shown.pixels.data()), static_cast<std::streamsize>(shown.pixels.size() * 2));
    EXPECT_TRUE(file.good()) << filePath;
    return shown;
}

Picture PanelFile::picture(const Rect& area) const {
    Picture shown = picture();
    return cut(canvasOver(shown.pixels.data(), PANEL_WIDTH, PANEL_HEIGHT, PANEL_WIDTH), area);
}

uint16_t PanelFile::at(int x, int y) const {
    return picture().at(x, y);
}

void PanelFile::overwrite(uint16_t colour) const {
    const Picture painted = blankPicture(PANEL_WIDTH, PANEL_HEIGHT, colour);
    // In place: the library has the file mapped.
    std::fstream file(filePath, std::ios::binary | std::ios::in | std::ios::out);
    file.write(
        reinterpret_cast<const char*>(painted.pixels.data()), static_cast<std::streamsize>(painted.pixels.size() * 2));
    EXPECT_TRUE(file.good()) << filePath;
}
