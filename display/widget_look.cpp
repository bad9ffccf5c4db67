#include "display/widget_look.h"

#include "display/panel.h"
#include "display/widget_paint.h"

#include <iterator>

namespace ostrel {

namespace {

using namespace theme;

constexpr Tones BUTTON_NORMAL{BUTTON, WHITE, WHITE, BUTTON};
constexpr Tones BUTTON_PRESSED{ACCENT, BLACK, BLACK, ACCENT};
constexpr Tones ROW_NORMAL{SURFACE, WHITE, TEXT_QUIET, OUTLINE};
constexpr Tones ROW_PRESSED{BUTTON, WHITE, WHITE, BUTTON};
constexpr Tones CHOICE_CHOSEN{SURFACE_CHOSEN, WHITE, ACCENT, ACCENT};
constexpr Tones FIELD_NORMAL{SUNKEN, WHITE, TEXT_QUIET, OUTLINE};
constexpr Tones FIELD_CHOSEN{SUNKEN_CHOSEN, WHITE, TEXT_QUIET, ACCENT};
constexpr Tones FIELD_DISABLED{BLACK, TEXT_DISABLED, TEXT_DISABLED, OUTLINE_DISABLED};
constexpr Tones TAB_NORMAL{SURFACE, TEXT_QUIET, OUTLINE, OUTLINE};
constexpr Tones TAB_CHOSEN{SURFACE_CHOSEN, WHITE, ACCENT, ACCENT};
constexpr Tones TAB_DISABLED{FLAT, TEXT_DISABLED, OUTLINE_DISABLED, OUTLINE_DISABLED};
constexpr Tones CAPTION_NORMAL{BLACK, TEXT_QUIET, WHITE, OUTLINE};
constexpr Tones CAPTION_CHOSEN{BLACK, WHITE, WHITE, OUTLINE};
constexpr Tones CAPTION_DISABLED{BLACK, TEXT_DISABLED, TEXT_DISABLED, OUTLINE};
constexpr Tones DANGER_NORMAL{DANGER, WHITE, WHITE, DANGER};
constexpr Tones DANGER_HELD{DANGER_PRESSED, BLACK, BLACK, DANGER_PRESSED};

// By kind number. Distances: text left, text right, natural width beyond them, natural height beyond the line box.
constexpr WidgetLook LOOKS[] = {
    {paintButton, 6, 6, 20, 16, BUTTON_NORMAL, BUTTON_PRESSED, DISABLED, true},
    {paintListRow, 12, 28, 8, 16, ROW_NORMAL, ROW_PRESSED, DISABLED, true},
    {paintField, 12, 12, 0, 12, FIELD_NORMAL, FIELD_CHOSEN, FIELD_DISABLED, false},
    {paintChoice, 42, 10, 0, 16, ROW_NORMAL, CHOICE_CHOSEN, DISABLED, false},
    {paintSwitch, 12, 60, 8, 16, ROW_NORMAL, CHOICE_CHOSEN, DISABLED, false},
    {paintCheckRow, 42, 10, 0, 16, ROW_NORMAL, CHOICE_CHOSEN, DISABLED, false},
    {paintTab, 6, 6, 16, 16, TAB_NORMAL, TAB_CHOSEN, TAB_DISABLED, false},
    {paintCaption, 2, 2, 0, 0, CAPTION_NORMAL, CAPTION_CHOSEN, CAPTION_DISABLED, false},
    {nullptr, 0, 0, 0, 0, {}, {}, {}, false}, // the text item, which is drawn as drawText does
    {paintButton, 6, 6, 20, 16, DANGER_NORMAL, DANGER_HELD, DISABLED, true},
};
static_assert(std::size(LOOKS) == 10, "one row a kind");

// The sum of the channels as the eye weighs them, 0 to 255.
int brightnessOf(uint16_t colour) {
    const int red = (colour >> 11) * 255 / 31;
    const int green = (colour >> 5 & 0x3F) * 255 / 63;
    const int blue = (colour & 0x1F) * 255 / 31;
    return (2 * red + 5 * green + blue) / 8;
}

Tones disabledTones(uint16_t face, uint16_t text) {
    const uint16_t faded = mixed(background(), face, 96);
    const uint16_t quiet = mixed(faded, text, 128);
    return {faded, quiet, quiet, mixed(faded, text, 64)};
}

Tones ownTones(const WidgetRecord& record, const WidgetLook& look) {
    const uint16_t face = colourOf(record.colourA);
    const uint16_t named = colourOf(record.colourB);
    const uint16_t text = named != face ? named : readableOn(face);
    if (record.touchable == -1)
        return disabledTones(face, text);
    if (record.selected == 0)
        return {face, text, text, mixed(face, text, 128)};
    if (look.isPressed)
        return {text, face, face, text};
    const uint16_t chosen = mixed(face, text, 56);
    return {chosen, text, text, text};
}

} // namespace

uint16_t readableOn(uint16_t face) {
    return brightnessOf(face) > 120 ? BLACK : WHITE;
}

const WidgetLook& lookOf(int kind) {
    const bool isKind = kind >= 0 && kind < static_cast<int>(std::size(LOOKS)) && LOOKS[kind].paint != nullptr;
    return LOOKS[isKind ? kind : 0];
}

Tones tonesOf(const WidgetRecord& record, const WidgetLook& look) {
    if (record.colourA != 0 || record.colourB != 0)
        return ownTones(record, look);
    if (record.touchable == -1)
        return look.disabled;
    return record.selected != 0 ? look.selected : look.normal;
}

} // namespace ostrel
