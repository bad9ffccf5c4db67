#include "confirm.h"

#include "pages.h"
#include "texts.h"

#include <string>

namespace {

enum { LINES = 3, YES = LINES, NO };
Widget widgets[] = {
    {wType.kind7, 18, 50, 0, 0, 1, 294, 26, 20, 1, L""},  {wType.kind7, 18, 78, 0, 0, 1, 294, 26, 20, 1, L""},
    {wType.kind7, 18, 106, 0, 0, 1, 294, 26, 20, 1, L""}, {wType.kind0, 8, 142, 0, 0, 0, 304, 42, 20, 1, L""},
    {wType.kind0, 8, 190, 0, 0, 0, 304, 42, 20, 1, L""},
};
Screen screen(L"");

const Page* asking = nullptr;
const Question* asked = nullptr;
std::string askedValue;

void answerNo() {
    returnTo(*asking);
}

void prepare() {
    preparePage(screen, linked(widgets));
    screen.onBack = answerNo;
    screen.showHome = 0; // two answers are enough
    widgets[NO].callback = answerNo;
}

// The texts are those of the question; none is asked while the language changes.
void retext() {
    if (asked == nullptr)
        return;
    const std::string text = asked->text;
    entitle(screen, asked->title);
    for (int line = 0; line < LINES; ++line) {
        const std::string key = text + "_q" + std::to_string(line + 1);
        if (line >= asked->lines)
            fill(widgets[line], "");
        else if (line + 1 == asked->lines && !askedValue.empty())
            label(widgets[line], key.c_str(), askedValue);
        else
            label(widgets[line], key.c_str());
    }
    label(widgets[YES], asked->yes);
    label(widgets[NO], asked->no);
}

} // namespace

const Page confirmPage{&screen, prepare, retext, nullptr, nullptr, nullptr, nullptr};

void ask(const Question& question, void (*onYes)(), const std::string& value) {
    asking = &shownPage();
    asked = &question;
    askedValue = value;
    widgets[YES].callback = onYes;
    widgets[YES].record.type = question.isDangerous ? wType.kind9 : wType.kind0;
    retext();
    returnTo(confirmPage);
}
