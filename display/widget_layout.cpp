#include "display/widget_layout.h"

#include "display/glyph_raster.h"
#include "display/text_draw.h"
#include "display/widget_look.h"

#include <algorithm>
#include <climits>

namespace ostrel {

namespace {

constexpr int REACH = 16384;

int withinReach(int coordinate) {
    return std::clamp(coordinate, -REACH, REACH);
}

int justBefore(int coordinate) {
    return coordinate == INT_MIN ? INT_MIN : coordinate - 1;
}

int naturalWidth(const WidgetRecord& record, int line) {
    const int text = widthOf(textOf(record), line);
    if (record.type == TEXT_ITEM)
        return text + (record.word9 == 0 ? 0 : 2 * FIELD_MARGIN);
    const WidgetLook& look = lookOf(record.type);
    return text + look.textLeft + look.textRight + look.spareWidth;
}

int naturalHeight(const WidgetRecord& record, int line) {
    return line + (record.type == TEXT_ITEM ? 0 : lookOf(record.type).spareHeight);
}

} // namespace

int lineOf(const WidgetRecord& record) {
    return record.fontSize == 0 ? int{DEFAULT_LINE} : lineFor(record.fontSize);
}

std::wstring_view textOf(const WidgetRecord& record) {
    return {record.text, wcsnlen(record.text, WIDGET_TEXT_LENGTH)};
}

Rect boxOf(const WidgetRecord& record) {
    const int line = lineOf(record);
    const int width = record.width != 0 ? record.width : naturalWidth(record, line);
    // A text item's constructor sets no height: what stands there means nothing.
    const bool isTall = record.height != 0 && record.type != TEXT_ITEM;
    return rectAt(record.x, record.y, width, isTall ? record.height : naturalHeight(record, line));
}

TouchArea touchAreaOf(const Rect& box) {
    return {justBefore(box.left), box.right, justBefore(box.top), box.bottom};
}

Rect withinReach(const Rect& box) {
    return {withinReach(box.left), withinReach(box.top), withinReach(box.right), withinReach(box.bottom)};
}

} // namespace ostrel
