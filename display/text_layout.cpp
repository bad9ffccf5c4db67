#include "display/text_layout.h"

#include "display/glyph_cache.h"

#include <algorithm>
#include <climits>

namespace ostrel {

namespace {

constexpr int SMALLEST_FITTED = 14;
constexpr wchar_t ELLIPSIS = L'\u2026';

int advanceOf(wchar_t character, int line) {
    return glyphOf(static_cast<uint32_t>(character), line).advance;
}

int saturated(int64_t value) {
    return static_cast<int>(std::min<int64_t>(value, INT_MAX));
}

// The first size from which it is worth trying: widths grow with the size, up to the rounding of each advance.
int firstSize(int line, int width, int available, size_t length) {
    const int64_t roundings = static_cast<int64_t>(length);
    const int64_t guess = (available + roundings) * line / std::max(width, 1) + 1;
    return static_cast<int>(std::min<int64_t>(guess, line - 1));
}

FittedText cutToFit(std::wstring_view text, int line, int available) {
    const int ellipsis = advanceOf(ELLIPSIS, line);
    int width = ellipsis;
    size_t count = 0;
    while (count < text.size() && width + advanceOf(text[count], line) <= available)
        width += advanceOf(text[count++], line);
    while (count > 0 && text[count - 1] == L' ')
        width -= advanceOf(text[--count], line);
    if (width > available)
        return {line, 0, {}, false};
    return {line, width, text.substr(0, count), true};
}

} // namespace

int widthOf(std::wstring_view text, int line) {
    int64_t width = 0;
    for (const wchar_t character : text)
        width += advanceOf(character, line);
    return saturated(width);
}

int positionAt(std::wstring_view text, int x, int line) {
    int64_t left = 0;
    for (size_t index = 0; index < text.size() && left <= x; ++index) {
        const int advance = advanceOf(text[index], line);
        if (x < left + advance)
            return saturated(1000 * left + static_cast<int64_t>(index));
        left += advance;
    }
    return -1;
}

FittedText fitted(std::wstring_view text, int line, int available) {
    const int width = widthOf(text, line);
    if (width <= available)
        return {line, width, text, false};
    const int smallest = std::min(line, SMALLEST_FITTED);
    int smaller = std::max(smallest, firstSize(line, width, std::max(available, 0), text.size()));
    for (; smaller > smallest; --smaller) {
        const int smallerWidth = widthOf(text, smaller);
        if (smallerWidth <= available)
            return {smaller, smallerWidth, text, false};
    }
    const int smallestWidth = widthOf(text, smallest);
    if (smallestWidth <= available)
        return {smallest, smallestWidth, text, false};
    return cutToFit(text, smallest, available);
}

} // namespace ostrel
