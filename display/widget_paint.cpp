#include "display/widget_paint.h"

#include "display/glyph_raster.h"
#include "display/panel.h"
#include "display/rounded.h"
#include "display/stroke.h"
#include "display/text_draw.h"

#include <algorithm>

namespace ostrel {

namespace {

constexpr int CORNER = 6;
constexpr int MARK_SIDE = 20; // ring and tick box
constexpr int MARK_LEFT = 12;
constexpr int SWITCH_WIDTH = 40;
constexpr int SWITCH_HEIGHT = 22;
constexpr int SWITCH_RIGHT = 12;
constexpr int VALUE_GAP = 10;

Rect inset(const Rect& box, int by) {
    return {box.left + by, box.top + by, box.right - by, box.bottom - by};
}

int middleOf(const Rect& box) {
    return box.top + (box.bottom - box.top) / 2;
}

// A rectangle of `width` by `height`, its middle at the box's.
Rect centred(const Rect& box, int left, int width, int height) {
    return rectAt(left, middleOf(box) - height / 2, width, height);
}

// A rounded outline `thickness` pixels wide around `inside`.
void paintOutlined(
    const Canvas& canvas, const Rect& box, int radius, int thickness, uint16_t outline, uint16_t inside) {
    fillRounded(canvas, box, radius, outline);
    fillRounded(canvas, inset(box, thickness), radius - thickness, inside);
}

// What most elements stand on. One that cannot be touched is flat, and needs an outline to be seen.
void paintSurface(const Canvas& canvas, const Element& element) {
    fill(canvas, element.box, background());
    if (element.isDisabled)
        paintOutlined(canvas, element.box, CORNER, 1, element.tones.edge, element.tones.face);
    else
        fillRounded(canvas, element.box, CORNER, element.tones.face);
}

void paintLine(
    const Canvas& canvas, const Element& element, std::wstring_view text, int left, int right, uint16_t colour,
    Align align) {
    const int top = middleOf(element.box) - capitalCentre(element.line);
    drawFitted(canvas, text, left, top, right - left, element.line, colour, align);
}

void paintCentredText(const Canvas& canvas, const Element& element, const WidgetLook& look) {
    paintLine(
        canvas, element, element.text, element.box.left + look.textLeft, element.box.right - look.textRight,
        element.tones.text, Align::Centre);
}

// The text from the left. What follows a tab is a value, and stands at the right end.
void paintRowText(
    const Canvas& canvas, const Element& element, const WidgetLook& look, uint16_t label, uint16_t value) {
    const int left = element.box.left + look.textLeft;
    int right = element.box.right - look.textRight;
    const size_t tab = element.text.find(L'\t');
    if (tab != std::wstring_view::npos) {
        const std::wstring_view second = element.text.substr(tab + 1);
        const int valueWidth = std::min(widthOf(second, element.line), (right - left) * 3 / 5);
        paintLine(canvas, element, second, right - valueWidth, right, value, Align::Right);
        right -= valueWidth + VALUE_GAP;
    }
    paintLine(canvas, element, element.text.substr(0, tab), left, right, label, Align::Left);
}

void paintRowText(const Canvas& canvas, const Element& element, const WidgetLook& look) {
    paintRowText(canvas, element, look, element.tones.text, element.tones.mark);
}

void paintTick(const Canvas& canvas, const Rect& box, uint16_t colour) {
    const auto x = static_cast<float>(box.left);
    const auto y = static_cast<float>(box.top);
    const Point tick[] = {{x + 5.2F, y + 10.4F}, {x + 8.8F, y + 14.0F}, {x + 15.0F, y + 6.4F}};
    strokeThrough(canvas, tick, 3, 2.6F, colour);
}

} // namespace

void paintButton(const Canvas& canvas, const Element& element, const WidgetLook& look) {
    paintSurface(canvas, element);
    paintCentredText(canvas, element, look);
}

void paintListRow(const Canvas& canvas, const Element& element, const WidgetLook& look) {
    paintSurface(canvas, element);
    paintRowText(canvas, element, look);
    const auto x = static_cast<float>(element.box.right - 18);
    const auto y = static_cast<float>(middleOf(element.box));
    const Point chevron[] = {{x, y - 5}, {x + 5, y}, {x, y + 5}};
    strokeThrough(canvas, chevron, 3, 2.2F, element.tones.mark);
}

void paintField(const Canvas& canvas, const Element& element, const WidgetLook& look) {
    fill(canvas, element.box, background());
    paintOutlined(canvas, element.box, CORNER, element.isSelected ? 2 : 1, element.tones.edge, element.tones.face);
    // A field is there for its value: the label beside it is the quiet one.
    const bool hasLabel = element.text.find(L'\t') != std::wstring_view::npos;
    paintRowText(canvas, element, look, hasLabel ? element.tones.mark : element.tones.text, element.tones.text);
}

void paintChoice(const Canvas& canvas, const Element& element, const WidgetLook& look) {
    paintSurface(canvas, element);
    const Rect ring = centred(element.box, element.box.left + MARK_LEFT, MARK_SIDE, MARK_SIDE);
    const uint16_t colour = element.isSelected ? element.tones.mark : element.tones.edge;
    paintOutlined(canvas, ring, MARK_SIDE / 2, 2, colour, element.tones.face);
    if (element.isSelected)
        fillRounded(canvas, inset(ring, 5), MARK_SIDE / 2 - 5, colour);
    paintRowText(canvas, element, look);
}

void paintSwitch(const Canvas& canvas, const Element& element, const WidgetLook& look) {
    paintSurface(canvas, element);
    const Rect track =
        centred(element.box, element.box.right - SWITCH_RIGHT - SWITCH_WIDTH, SWITCH_WIDTH, SWITCH_HEIGHT);
    Rect knob = inset(track, 3);
    if (element.isSelected) {
        fillRounded(canvas, track, SWITCH_HEIGHT / 2, element.tones.mark);
        knob.left = knob.right - (SWITCH_HEIGHT - 6);
        fillRounded(
            canvas, knob, SWITCH_HEIGHT / 2,
            element.tones.text == element.tones.mark ? element.tones.face : element.tones.text);
    } else {
        paintOutlined(canvas, track, SWITCH_HEIGHT / 2, 2, element.tones.edge, element.tones.face);
        knob.right = knob.left + (SWITCH_HEIGHT - 6);
        fillRounded(canvas, inset(knob, 1), SWITCH_HEIGHT / 2, element.tones.mark);
    }
    paintRowText(canvas, element, look);
}

void paintCheckRow(const Canvas& canvas, const Element& element, const WidgetLook& look) {
    paintSurface(canvas, element);
    const Rect box = centred(element.box, element.box.left + MARK_LEFT, MARK_SIDE, MARK_SIDE);
    if (element.isSelected) {
        fillRounded(canvas, box, 5, element.tones.mark);
        paintTick(canvas, box, readableOn(element.tones.mark));
    } else {
        paintOutlined(canvas, box, 5, 2, element.tones.edge, element.tones.face);
    }
    paintRowText(canvas, element, look);
}

void paintTab(const Canvas& canvas, const Element& element, const WidgetLook& look) {
    const Rect& box = element.box;
    fill(canvas, box, background());
    // Rounded above, square below: the lower corners lie outside the element, to which the canvas is clipped.
    fillRounded(canvas, {box.left, box.top, box.right, box.bottom + CORNER}, CORNER, element.tones.face);
    const int thickness = element.isSelected ? 3 : 1;
    fill(canvas, {box.left, box.bottom - thickness, box.right, box.bottom}, element.tones.mark);
    paintCentredText(canvas, element, look);
}

void paintCaption(const Canvas& canvas, const Element& element, const WidgetLook& look) {
    fill(canvas, element.box, element.tones.face);
    paintRowText(canvas, element, look);
}

} // namespace ostrel
