#include "simulator/window/placement.h"

#include "simulator/panel.h"

#include <algorithm>

namespace ostrel {
namespace {

// Title bar and borders, which nobody tells before the window is there.
constexpr int FRAME_WIDTH = 16;
constexpr int FRAME_HEIGHT = 56;

int zoomWithin(Extent window) {
    return std::min(window.width / PANEL_WIDTH, window.height / PANEL_HEIGHT);
}

// A window shows panel column c from the first of its columns whose share of the width reaches c.
int firstShown(int panelIndex, int shown, int panelSize) {
    return (panelIndex * shown + panelSize - 1) / panelSize;
}

} // namespace

Area placePanel(Extent window) {
    const int zoom = zoomWithin(window);
    Extent picture = {zoom * PANEL_WIDTH, zoom * PANEL_HEIGHT};
    if (zoom == 0) {
        picture.width = std::min(window.width, window.height * PANEL_WIDTH / PANEL_HEIGHT);
        picture.height = picture.width * PANEL_HEIGHT / PANEL_WIDTH;
    }
    return {
        (window.width - picture.width) / 2, (window.height - picture.height) / 2, std::max(picture.width, 1),
        std::max(picture.height, 1)};
}

int zoomFor(Extent usableScreen) {
    return std::max(1, zoomWithin({usableScreen.width - FRAME_WIDTH, usableScreen.height - FRAME_HEIGHT}));
}

bool contains(const Area& area, Position position) {
    return position.x >= area.left && position.x - area.left < area.width && position.y >= area.top &&
           position.y - area.top < area.height;
}

Position panelPixelAt(const Area& picture, Position position) {
    const int x = std::clamp(position.x - picture.left, 0, picture.width - 1);
    const int y = std::clamp(position.y - picture.top, 0, picture.height - 1);
    return {x * PANEL_WIDTH / picture.width, y * PANEL_HEIGHT / picture.height};
}

Area shownAt(const Area& picture, const Area& pixels) {
    const int left = firstShown(pixels.left, picture.width, PANEL_WIDTH);
    const int top = firstShown(pixels.top, picture.height, PANEL_HEIGHT);
    const int right = firstShown(pixels.left + pixels.width, picture.width, PANEL_WIDTH);
    const int bottom = firstShown(pixels.top + pixels.height, picture.height, PANEL_HEIGHT);
    return {picture.left + left, picture.top + top, right - left, bottom - top};
}

} // namespace ostrel
