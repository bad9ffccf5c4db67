#include "display/widget_draw.h"

#include "display/glyph_raster.h"
#include "display/natural_sizes.h"
#include "display/panel.h"
#include "display/text_draw.h"
#include "display/widget_layout.h"
#include "display/widget_look.h"

#include <algorithm>

namespace ostrel {

namespace {

constexpr int CAPTION = 7;
constexpr wchar_t BULLET = L'\u2022';

bool passwordsAreHidden = true;

std::wstring_view bullets(size_t count) {
    static wchar_t row[WIDGET_TEXT_LENGTH];
    std::fill(row, row + count, BULLET);
    return {row, count};
}

bool isMasked(const WidgetRecord& record) {
    return record.password != 0 && passwordsAreHidden;
}

// Bullets are drawn larger than letters, around the same middle: at a text's size they would be specks.
int shownLine(const WidgetRecord& record) {
    const int line = lineOf(record);
    return isMasked(record) ? std::min(line * 7 / 5, int{LARGEST_LINE}) : line;
}

std::wstring_view shownText(const WidgetRecord& record) {
    const std::wstring_view text = textOf(record);
    return isMasked(record) ? bullets(text.size()) : text;
}

void paintTextItem(const Canvas& canvas, const WidgetRecord& record, const Rect& box) {
    const int line = shownLine(record);
    const int top = box.top + capitalCentre(lineOf(record)) - capitalCentre(line);
    fill(canvas, box, background());
    drawInField(
        canvas, shownText(record), box.left, top, box.right - box.left, line, colourOf(record.colourA), record.word9);
}

// A caption stands on the page itself: its first colour is its text's, its second, if any, a surface for it.
Tones captionTones(const WidgetRecord& record, const Tones& usual) {
    Tones tones = usual;
    tones.face = colourOf(record.colourB) != 0 ? colourOf(record.colourB) : background();
    if (colourOf(record.colourA) != 0)
        tones.text = tones.mark = colourOf(record.colourA);
    else if (readableOn(tones.face) == theme::BLACK)
        tones.text = tones.mark = theme::BLACK;
    return tones;
}

void paintElement(const Canvas& canvas, const WidgetRecord& record, const Rect& box) {
    const WidgetLook& look = lookOf(record.type);
    Element element;
    element.box = box;
    element.text = shownText(record);
    element.line = shownLine(record);
    element.isSelected = record.selected != 0;
    element.isDisabled = record.touchable == -1;
    element.tones = tonesOf(record, look);
    if (record.type == CAPTION)
        element.tones = captionTones(record, element.tones);
    look.paint(canvas, element, look);
}

} // namespace

void hidePasswords(bool hide) {
    passwordsAreHidden = hide;
}

Rect drawElement(Canvas& canvas, const WidgetRecord& record) {
    const Rect box = withinReach(boxOf(record));
    Rect changed;
    if (record.width == 0)
        changed = fill(canvas, replaceNaturalBox(record, box), background());
    if (box.isEmpty())
        return changed;
    const ClipTo own(canvas, box);
    if (record.type == TEXT_ITEM)
        paintTextItem(canvas, record, box);
    else
        paintElement(canvas, record, box);
    return united(changed, canvas.clip);
}

Rect eraseElement(const Canvas& canvas, const WidgetRecord& record) {
    const Rect box = withinReach(boxOf(record));
    const Rect changed = fill(canvas, box, background());
    return record.width != 0 ? changed : united(changed, fill(canvas, replaceNaturalBox(record, {}), background()));
}

} // namespace ostrel
