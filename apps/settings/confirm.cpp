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
    for (int line = 0; line < LINES; ++line)
        if (line < asked->lines)
            label(widgets[line], (text + "_q" + std::to_string(line + 1)).c_str());
        else
            fill(widgets[line], "");
    label(widgets[YES], asked->yes);
    label(widgets[NO], asked->no);
}

} // namespace

const Page confirmPage{&screen, prepare, retext, nullptr, nullptr, nullptr, nullptr};

void ask(const Question& question, void (*onYes)()) {
    asking = &shownPage();
    asked = &question;
    widgets[YES].callback = onYes;
    widgets[YES].record.type = question.isDangerous ? wType.kind9 : wType.kind0;
    retext();
    returnTo(confirmPage);
}
