#include "gui/widget.h"
#include "tests/support/recording_display.h"

#include <gtest/gtest.h>
#include <list>

namespace {

void noteCallback() {
    display().calls.emplace_back("callback()");
}

// Widgets of 100x40 pixels, linked in the order of adding; widget n lies at (10, 50n) and is called by its text.
class Page {
  public:
    Page() { display() = {}; }
    ~Page() { display() = {}; }
    Page(const Page&) = delete;
    Page& operator=(const Page&) = delete;

    Widget& add(int type, const wchar_t* text, int group = 1, int selected = 0) {
        const int top = 50 * static_cast<int>(widgets.size());
        Widget* const tail = widgets.empty() ? nullptr : &widgets.back();
        Widget& added = widgets.emplace_back(type, 10, top, 0, 0, selected, 100, 40, 20.0F, 0, text);
        added.record.password = 0;
        added.record.touchable = 1;
        added.callback = noteCallback;
        added.group = group;
        added.prev = tail;
        added.next = nullptr;
        if (tail != nullptr)
            tail->next = &added;
        display().calls.clear();
        return added;
    }

  private:
    std::list<Widget> widgets;
};

TEST(WidgetTouch, OnAnEdgeOfTheTouchAreaIsNotTakenAndJustInsideIs) {
    Page page;
    display().touchArea = [](const WidgetRecord&) { return TouchArea{10, 110, 20, 60}; };
    Widget& button = page.add(0, L"Save");
    const struct {
        int x, y, taken;
    } touches[] = {{10, 40, 0}, {11, 40, 1},  {110, 40, 0}, {109, 40, 1}, {50, 20, 0}, {50, 21, 1},
                   {50, 60, 0}, {50, 59, 1},  {9, 40, 0},   {111, 40, 0}, {50, 19, 0}, {50, 61, 0},
                   {11, 21, 1}, {109, 59, 1}, {10, 20, 0},  {110, 60, 0}, {-1, -1, 0}, {INT32_MAX, INT32_MIN, 0}};
    for (const auto& touch : touches) {
        EXPECT_EQ(button.checkTouch(touch.x, touch.y), touch.taken) << touch.x << ',' << touch.y;
        EXPECT_EQ(display().take().empty(), touch.taken == 0) << touch.x << ',' << touch.y;
    }
}

TEST(WidgetTouch, ShowsAButtonPressedUntilThePenLiftsAndThenCallsBack) {
    Page page;
    Widget& button = page.add(0, L"Save");
    EXPECT_EQ(button.checkTouch(50, 20), 1);
    EXPECT_EQ(
        display().take(), "drawWidget(type 0 at 10,0 100x40 selected 1 \"Save\")\n"
                          "waitForPenUp()\n"
                          "drawWidget(type 0 at 10,0 100x40 selected 0 \"Save\")\n"
                          "callback()\n");
}

TEST(WidgetTouch, TreatsEveryKindWithoutARuleOfItsOwnAsAButton) {
    for (const int type : {0, 1, 2, 5, 6, 8, 9, 10, -1, 1234}) {
        Page page;
        Widget& element = page.add(type, L"x", 1, 1);
        EXPECT_EQ(element.checkTouch(50, 20), 1);
        const std::string drawn = "drawWidget(type " + std::to_string(type) + " at 10,0 100x40 selected ";
        std::string calls = drawn;
        calls += "1 \"x\")\nwaitForPenUp()\n";
        calls += drawn;
        calls += "0 \"x\")\ncallback()\n";
        EXPECT_EQ(display().take(), calls);
    }
}

TEST(WidgetTouch, IsNeverTakenByACaptionOrAnUntouchableWidget) {
    Page page;
    Widget& caption = page.add(7, L"Caption");
    EXPECT_EQ(caption.checkTouch(50, 20), 0);
    for (const int type : {0, 3, 4, 9}) {
        Widget& disabled = page.add(type, L"Off");
        disabled.record.touchable = -1;
        EXPECT_EQ(disabled.checkTouch(50, disabled.record.y + 20), 0);
    }
    EXPECT_EQ(display().take(), "");
}

TEST(WidgetTouch, IsTakenWithAnyTouchableNumberButMinusOne) {
    Page page;
    Widget& button = page.add(0, L"Save");
    for (const int touchable : {0, 1, -2, 255, INT32_MIN}) {
        button.record.touchable = touchable;
        EXPECT_EQ(button.checkTouch(50, 20), 1) << touchable;
    }
}

TEST(WidgetTouch, FlipsASwitchAndASecondTouchFlipsItBack) {
    Page page;
    Widget& toggle = page.add(4, L"Wi-Fi");
    EXPECT_EQ(toggle.checkTouch(50, 20), 1);
    EXPECT_EQ(
        display().take(), "drawWidget(type 4 at 10,0 100x40 selected 1 \"Wi-Fi\")\n"
                          "waitForPenUp()\n"
                          "callback()\n");
    EXPECT_EQ(toggle.checkTouch(50, 20), 1);
    EXPECT_EQ(
        display().take(), "drawWidget(type 4 at 10,0 100x40 selected 0 \"Wi-Fi\")\n"
                          "waitForPenUp()\n"
                          "callback()\n");
}

TEST(WidgetTouch, SwitchesOffASwitchSelectedByAnyNonzeroNumber) {
    Page page;
    Widget& toggle = page.add(4, L"Wi-Fi", 1, -7);
    toggle.checkTouch(50, 20);
    EXPECT_EQ(toggle.record.selected, 0);
}

TEST(WidgetTouch, OfOneSwitchLeavesTheOthersAlone) {
    Page page;
    Widget& first = page.add(4, L"first", 1, 1);
    Widget& second = page.add(4, L"second");
    second.checkTouch(50, 70);
    EXPECT_EQ(
        display().take(), "drawWidget(type 4 at 10,50 100x40 selected 1 \"second\")\n"
                          "waitForPenUp()\n"
                          "callback()\n");
    EXPECT_EQ(first.record.selected, 1);
}

TEST(WidgetTouch, SelectsAnExclusiveChoiceAndClearsTheOthersOfItsGroupFromTheHeadOn) {
    Page page;
    page.add(3, L"head", 1, 1);
    page.add(3, L"other group", 2, 1);
    Widget& chosen = page.add(3, L"chosen");
    page.add(4, L"switch of the group", 1, 1);
    page.add(0, L"button of the group", 1, 1);
    page.add(3, L"tail");
    EXPECT_EQ(chosen.checkTouch(50, 120), 1);
    EXPECT_EQ(
        display().take(), "drawWidget(type 3 at 10,100 100x40 selected 1 \"chosen\")\n"
                          "drawWidget(type 3 at 10,0 100x40 selected 0 \"head\")\n"
                          "drawWidget(type 3 at 10,250 100x40 selected 0 \"tail\")\n"
                          "waitForPenUp()\n"
                          "callback()\n");
}

TEST(WidgetTouch, LeavesASelectedExclusiveChoiceSelectedAndStillCallsBack) {
    Page page;
    page.add(3, L"other");
    Widget& chosen = page.add(3, L"chosen", 1, 1);
    EXPECT_EQ(chosen.checkTouch(50, 70), 1);
    EXPECT_EQ(
        display().take(), "drawWidget(type 3 at 10,50 100x40 selected 1 \"chosen\")\n"
                          "drawWidget(type 3 at 10,0 100x40 selected 0 \"other\")\n"
                          "waitForPenUp()\n"
                          "callback()\n");
    EXPECT_EQ(chosen.record.selected, 1);
}

TEST(WidgetTouch, SelectsAnExclusiveChoiceThatStandsAlone) {
    Page page;
    Widget& chosen = page.add(3, L"alone");
    EXPECT_EQ(chosen.checkTouch(50, 20), 1);
    EXPECT_EQ(
        display().take(), "drawWidget(type 3 at 10,0 100x40 selected 1 \"alone\")\n"
                          "waitForPenUp()\n"
                          "callback()\n");
}

TEST(WidgetTouch, MayDestroyTheWidgetInItsCallback) {
    static Widget* pressed;
    pressed = new Widget(0, 10, 0, 0, 0, 0, L"Close");
    pressed->touchArea = {10, 110, 0, 40};
    pressed->callback = [] { delete pressed; };
    display() = {};
    EXPECT_EQ(pressed->checkTouch(50, 20), 1);
    EXPECT_EQ(display().calls.size(), 4U);
}

TEST(Widget, DrawsErasesAndRedrawsItsNewTextWithoutErasing) {
    Page page;
    Widget& field = page.add(2, L"old");
    field.draw();
    field.unDraw();
    field.setText(L"new");
    EXPECT_EQ(
        display().take(), "drawWidget(type 2 at 10,0 100x40 selected 0 \"old\")\n"
                          "unDrawWidget(type 2 at 10,0 100x40 selected 0 \"old\")\n"
                          "drawWidget(type 2 at 10,0 100x40 selected 0 \"new\")\n");
}

TEST(Widget, ShowsSelectionAndMaskingAtTheNextDrawOnly) {
    Page page;
    Widget& field = page.add(2, L"secret");
    field.setSelected(5);
    field.isPassword(3);
    EXPECT_EQ(display().take(), "");
    field.draw();
    EXPECT_EQ(display().take(), "drawWidget(type 2 at 10,0 100x40 selected 5 \"secret\" password 3)\n");
    EXPECT_EQ(field.getType(), 2);
}

TEST(Widget, ErasesItselfWhenDestroyedAlsoWhenItWasNeverDrawn) {
    {
        Widget caption(7, 1, 2, 3, 4, 0, 50, 20, 17.0F, 0, L"never drawn");
        caption.record.password = 0;
        display().calls.clear();
    }
    EXPECT_EQ(display().take(), "unDrawWidget(type 7 at 1,2 50x20 selected 0 \"never drawn\")\n");
}

TEST(Widget, KeepsSeventyNineCharactersOfAText) {
    Page page;
    Widget& field = page.add(2, L"");
    for (const size_t length : {79U, 80U, 81U, 500U}) {
        std::wstring text(length, L'x');
        text[78] = L'7';
        std::wstring kept = text.substr(0, 79);
        const Widget full(2, 0, 0, 0, 0, 0, 1, 1, 20.0F, 0, text.c_str());
        const Widget natural(2, 0, 0, 0, 0, 0, text.c_str());
        const Widget item(0, 0, 0, 0, 0, 20.0F, 0, 1, text.c_str());
        field.setText(text.c_str());
        EXPECT_EQ(full.record.text, kept) << length;
        EXPECT_EQ(natural.record.text, kept) << length;
        EXPECT_EQ(item.record.text, kept) << length;
        EXPECT_EQ(field.record.text, kept) << length;
        EXPECT_EQ(field.record.type, 2) << "the word behind the text";
    }
}

TEST(Widget, TakesANullTextForAnEmptyOne) {
    Page page;
    Widget& field = page.add(2, L"old");
    wchar_t* const none = nullptr;
    field.setText(none);
    EXPECT_EQ(display().take(), "drawWidget(type 2 at 10,0 100x40 selected 0 \"\")\n");
    const Widget full(2, 0, 0, 0, 0, 0, 1, 1, 20.0F, 0, none);
    const Widget natural(2, 0, 0, 0, 0, 0, none);
    const Widget item(0, 0, 0, 0, 0, 20.0F, 0, 1, none);
    EXPECT_EQ(full.record.text[0], 0);
    EXPECT_EQ(natural.record.text[0], 0);
    EXPECT_EQ(item.record.text[0], 0);
}

TEST(WidgetKeyboard, KeyIsCopiedWithItsTerminatorWhateverTheFirstArgument) {
    Page page;
    Widget& field = page.add(2, L"");
    for (const bool ignored : {true, false}) {
        char key[] = "????????????";
        field.keyboardTarget = key;
        field.useKeyboard(ignored, "wifiName");
        EXPECT_EQ(std::string(key, sizeof key), std::string("wifiName\0???\0", 13));
    }
    char empty[] = "??";
    field.keyboardTarget = empty;
    field.useKeyboard(true, static_cast<char*>(nullptr));
    EXPECT_EQ(std::string(empty, sizeof empty), std::string("\0?\0", 3));
    field.keyboardTarget = nullptr;
    field.useKeyboard(true, "wifiName");
    EXPECT_EQ(display().take(), "");
}

} // namespace
