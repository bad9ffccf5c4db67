// Where the panel's picture lies in a window, and which of the panel's pixels is where. All in the window's pixels.
#ifndef OSTREL_SIMULATOR_WINDOW_PLACEMENT_H
#define OSTREL_SIMULATOR_WINDOW_PLACEMENT_H

namespace ostrel {

struct Position {
    int x = 0;
    int y = 0;
};

struct Extent {
    int width = 0;
    int height = 0;
};

// Covers left <= x < left + width, and the same downwards.
struct Area {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
};

inline bool operator==(const Area& a, const Area& b) {
    return a.left == b.left && a.top == b.top && a.width == b.width && a.height == b.height;
}

// The largest whole multiple of the panel that fits into the window, centred; in a window smaller than the panel the
// whole panel, shrunk in proportion.
Area placePanel(Extent window);

// The multiple of the panel that a new window shows: the largest that fits on the screen with the window's frame.
int zoomFor(Extent usableScreen);

bool contains(const Area& area, Position position);

// The panel's pixel at a position in the window, for the picture at `picture`; beside it the nearest one of its edge.
Position panelPixelAt(const Area& picture, Position position);

// The pixels of the window that show the panel's pixels `pixels`.
Area shownAt(const Area& picture, const Area& pixels);

} // namespace ostrel

#endif
