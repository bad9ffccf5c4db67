#include "display/natural_sizes.h"

#include "display/panel.h"

#include <iterator>

namespace ostrel {

namespace {

struct DrawnElement {
    int32_t x = 0;
    int32_t y = 0;
    int32_t type = 0;
    unsigned page = 0;
    Rect box; // empty: the entry is free
};

// As many as fit on a page; the oldest gives way.
DrawnElement drawnElements[64];
unsigned oldest = 0;

// Null when nothing was drawn there since the panel was cleared.
DrawnElement* find(const WidgetRecord& record) {
    for (DrawnElement& drawn : drawnElements)
        if (drawn.x == record.x && drawn.y == record.y && drawn.type == record.type && drawn.page == pageNumber() &&
            !drawn.box.isEmpty())
            return &drawn;
    return nullptr;
}

} // namespace

Rect replaceNaturalBox(const WidgetRecord& record, const Rect& box) {
    DrawnElement* drawn = find(record);
    const Rect before = drawn != nullptr ? drawn->box : Rect{};
    if (drawn == nullptr && !box.isEmpty())
        drawn = &drawnElements[oldest++ % std::size(drawnElements)];
    if (drawn != nullptr)
        *drawn = {record.x, record.y, record.type, pageNumber(), box};
    return before;
}

} // namespace ostrel
