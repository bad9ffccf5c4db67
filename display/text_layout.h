// Where the characters of a line stand: one after another, each as wide as its own advance, no kerning.
#ifndef OSTREL_DISPLAY_TEXT_LAYOUT_H
#define OSTREL_DISPLAY_TEXT_LAYOUT_H

#include <string_view>

namespace ostrel {

// A text as it came from a program: null is empty.
inline std::wstring_view viewOf(const wchar_t* text) {
    return text != nullptr ? std::wstring_view(text) : std::wstring_view();
}

// The sum of the advances; never above INT_MAX.
int widthOf(std::wstring_view text, int line);

// 1000 * the offset of the left edge of the character that lies at `x` + its index; -1 where there is none.
int positionAt(std::wstring_view text, int x, int line);

// A text made to fit: the line box to draw it with, how many of its characters, and whether an ellipsis follows.
struct FittedText {
    int line = 0;
    int width = 0;
    std::wstring_view shown;
    bool isCut = false;
};

// Makes `text` smaller until it is at most `available` pixels wide, down to 14 pixels (or `line`, if that is less);
// what then still is too wide is cut.
FittedText fitted(std::wstring_view text, int line, int available);

} // namespace ostrel

#endif
