// What the texts of elements, titles and messages paint, apart from what they stand on.
#ifndef OSTREL_TESTS_PIXELS_TEXT_INK_H
#define OSTREL_TESTS_PIXELS_TEXT_INK_H

#include "gui/display.h"
#include "tests/support/picture.h"

#include <functional>
#include <string>
#include <vector>

struct InkPixel {
    int x, y;
    uint16_t text, ground;
};
using Ink = std::vector<InkPixel>;

// The pixels in which the panel differs after two drawings, each on an empty panel.
Ink inkOf(const std::function<void()>& drawWith, const std::function<void()>& drawWithout);

// The texts of an element, which a tab parts in kinds 1 to 5 and 7.
struct ElementText {
    explicit ElementText(const WidgetRecord& record);
    std::wstring label;
    std::wstring value;
    bool hasValue = false;
};

// What is wrong with the places of an element's texts: one that is made smaller or cut, or lies over the other one.
// Empty: nothing. Of a value that a user makes up, such as a name, only that it leaves the label alone is asked.
std::string misfitOf(const WidgetRecord& record, bool isUsersValue);

// The same for a page's title.
std::string misfitOfTitle(const wchar_t* title);

// How strongly the darkest or lightest pixel of the texts stands out, from 1 to 21: the ratio of the two luminances as
// people perceive them, each raised by 0.05. 21 where there is no text.
double contrastOf(const Ink& ink);
double contrastOf(const WidgetRecord& record);

#endif
