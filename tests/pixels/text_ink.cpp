#include "tests/pixels/text_ink.h"

#include "display/panel.h"

#include <algorithm>
#include <cmath>
#include <cstring>

using namespace ostrel;

namespace {

constexpr Rect PANEL = {0, 0, 320, 240};
constexpr int TITLE_X = 90;
constexpr int TITLE_Y = 10;
constexpr int FAR = 400; // more room than any text needs

// Kinds with their text in the middle; the others but the text item have it at their left end.
bool isCentred(const WidgetRecord& record) {
    return record.type == 0 || record.type == 6 || record.type > 8 || record.type < 0 ||
           (record.type == 8 && record.word9 != 0);
}

bool takesValue(const WidgetRecord& record) {
    return (record.type >= 1 && record.type <= 5) || record.type == 7;
}

WidgetRecord withText(WidgetRecord record, const std::wstring& text) {
    std::fill(std::begin(record.text), std::end(record.text), L'\0');
    text.copy(record.text, WIDGET_TEXT_LENGTH - 1);
    return record;
}

// With so much room on the sides where its text may grow that nothing has to be made smaller.
WidgetRecord widened(WidgetRecord record, int left, int right) {
    record.x -= left;
    record.width += left + right;
    return record;
}

Ink inkOfText(const WidgetRecord& record, const std::wstring& text, const std::wstring& none) {
    return inkOf([&] { drawWidget(withText(record, text)); }, [&] { drawWidget(withText(record, none)); });
}

bool operator==(const InkPixel& a, const InkPixel& b) {
    return a.x == b.x && a.y == b.y && a.text == b.text;
}

bool contains(const Ink& all, const Ink& part) {
    return std::all_of(part.begin(), part.end(), [&](const InkPixel& pixel) {
        const auto found = std::lower_bound(all.begin(), all.end(), pixel, [](const InkPixel& a, const InkPixel& b) {
            return a.y != b.y ? a.y < b.y : a.x < b.x;
        });
        return found != all.end() && *found == pixel;
    });
}

double linear(int level, int most) {
    const double share = static_cast<double>(level) / most;
    return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
}

double luminance(uint16_t colour) {
    return 0.2126 * linear(colour >> 11, 31) + 0.7152 * linear(colour >> 5 & 0x3F, 63) +
           0.0722 * linear(colour & 0x1F, 31);
}

double contrast(uint16_t a, uint16_t b) {
    const double first = luminance(a);
    const double second = luminance(b);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

} // namespace

Ink inkOf(const std::function<void()>& drawWith, const std::function<void()>& drawWithout) {
    lcd_clear(0);
    drawWithout();
    const Picture without = cut(panelCanvas(), PANEL);
    lcd_clear(0);
    drawWith();
    Ink ink;
    for (int y = 0; y < PANEL.bottom; ++y) {
        const uint16_t* const with = panelCanvas().row(y);
        const uint16_t* const ground = &without.pixels[static_cast<size_t>(y) * PANEL.right];
        if (std::memcmp(with, ground, PANEL.right * sizeof *with) == 0)
            continue;
        for (int x = 0; x < PANEL.right; ++x)
            if (with[x] != ground[x])
                ink.push_back({x, y, with[x], ground[x]});
    }
    return ink;
}

ElementText::ElementText(const WidgetRecord& record) : label(record.text) {
    const size_t tab = label.find(L'\t');
    hasValue = takesValue(record) && tab != std::wstring::npos;
    if (!hasValue)
        return;
    value = label.substr(tab + 1);
    label.resize(tab);
}

std::string misfitOf(const WidgetRecord& record, bool isUsersValue) {
    const ElementText text(record);
    const std::wstring none = text.hasValue ? L"\t" : L"";
    const Ink shown = inkOfText(record, record.text, none);
    const bool centred = isCentred(record);
    // A text item that is not centred is cut by the panel's edge alone.
    if (record.type == 8 && !centred)
        return record.x + textWidth(text.label.c_str(), record.fontSize) <= PANEL.right ? "" : "it is cut";
    const Ink label =
        inkOfText(widened(record, centred ? FAR / 2 : 0, centred ? FAR / 2 : FAR), text.label + none, none);
    if (label.empty() && text.label.find_first_not_of(L" \n") != std::wstring::npos)
        return "nothing is drawn of the text";
    if (!contains(shown, label))
        return text.hasValue ? "the label is made smaller, cut or covered" : "it is made smaller or cut";
    if (!text.hasValue || isUsersValue)
        return "";
    const Ink value = inkOfText(widened(record, FAR, 0), L"\t" + text.value, none);
    return contains(shown, value) ? "" : "the value is made smaller, cut or covered";
}

// Anywhere but in its place a title is drawn as it comes.
std::string misfitOfTitle(const wchar_t* title) {
    const auto nothing = [] {};
    const Ink shown = inkOf([&] { drawFontBigWhiteString(title, TITLE_X, TITLE_Y); }, nothing);
    Ink whole = inkOf([&] { drawFontBigWhiteString(title, TITLE_X, TITLE_Y + 1); }, nothing);
    for (InkPixel& pixel : whole)
        --pixel.y;
    return contains(shown, whole) && !whole.empty() ? "" : "it is made smaller or cut";
}

double contrastOf(const Ink& ink) {
    if (ink.empty())
        return 21;
    double strongest = 1;
    for (const InkPixel& pixel : ink)
        strongest = std::max(strongest, contrast(pixel.text, pixel.ground));
    return strongest;
}

double contrastOf(const WidgetRecord& record) {
    const ElementText text(record);
    const std::wstring none = text.hasValue ? L"\t" : L"";
    return std::min(
        contrastOf(inkOfText(record, text.label + none, none)),
        text.hasValue ? contrastOf(inkOfText(record, L"\t" + text.value, none)) : 21);
}
