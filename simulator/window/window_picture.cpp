#include "simulator/window/window_picture.h"

#include <algorithm>
#include <cstddef>

namespace ostrel {
namespace {

constexpr Area WHOLE_PANEL = {0, 0, PANEL_WIDTH, PANEL_HEIGHT};

// The smallest area of the panel that holds every difference; its width is 0 when there is none.
Area difference(const Picture& a, const Picture& b) {
    int left = PANEL_WIDTH;
    int right = 0;
    int top = PANEL_HEIGHT;
    int bottom = 0;
    for (int y = 0; y < PANEL_HEIGHT; ++y) {
        const auto row = a.begin() + std::ptrdiff_t{y} * PANEL_WIDTH;
        const auto end = row + PANEL_WIDTH;
        const auto other = b.begin() + std::ptrdiff_t{y} * PANEL_WIDTH;
        const auto first = std::mismatch(row, end, other).first;
        if (first == end)
            continue;
        int last = PANEL_WIDTH - 1;
        while (row[last] == other[last])
            --last;
        left = std::min(left, static_cast<int>(first - row));
        right = std::max(right, last + 1);
        top = std::min(top, y);
        bottom = y + 1;
    }
    return {left, top, std::max(right - left, 0), std::max(bottom - top, 0)};
}

} // namespace

void WindowPicture::fit(Extent size) {
    extent = size;
    placement = placePanel(size);
    image.assign(static_cast<size_t>(size.width) * static_cast<size_t>(size.height), SURROUND);
    isWhole = false;
}

Area WindowPicture::draw(const Picture& picture) {
    if (!isWhole) {
        shown = picture;
        paint(shownAt(placement, WHOLE_PANEL));
        isWhole = true;
        return {0, 0, extent.width, extent.height};
    }
    const Area changed = difference(shown, picture);
    if (changed.width == 0)
        return {};
    shown = picture;
    const Area area = shownAt(placement, changed);
    paint(area);
    return area;
}

void WindowPicture::paint(const Area& area) {
    std::vector<int> columns;
    for (int x = area.left; x < area.left + area.width; ++x)
        columns.push_back(panelPixelAt(placement, {x, placement.top}).x);
    int paintedRow = -1;
    for (int y = area.top; y < area.top + area.height; ++y) {
        uint32_t* target = image.data() + static_cast<std::ptrdiff_t>(y) * extent.width + area.left;
        const int row = panelPixelAt(placement, {placement.left, y}).y;
        if (row == paintedRow)
            std::copy_n(target - extent.width, area.width, target);
        else
            for (const int column : columns)
                *target++ = toRgb888(shown[static_cast<size_t>(row) * PANEL_WIDTH + static_cast<size_t>(column)]);
        paintedRow = row;
    }
}

} // namespace ostrel
