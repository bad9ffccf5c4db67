#include "messages.h"

namespace {

constexpr int PROGRESS_SECONDS = 3;

enum { FRAME, INFORMATION, CRITICAL, FULL_INFORMATION, FULL_CRITICAL, TYPE_COUNT };
const wchar_t* const NAMES[TYPE_COUNT] = {
    L"The frame alone", L"Information", L"Critical", L"Full screen", L"Full and critical"};

Screen page(L"Messages");

// By type: the one that waits for a tap, and the one with a progress bar.
Widget buttons[] = {
    {wType.kind0, 6, 46, 0, 0, 0, 151, 34, 18, 1, L"Frame"},
    {wType.kind0, 163, 46, 0, 0, 0, 151, 34, 18, 1, L"Frame, 3 s"},
    {wType.kind0, 6, 85, 0, 0, 0, 151, 34, 18, 1, L"Information"},
    {wType.kind0, 163, 85, 0, 0, 0, 151, 34, 18, 1, L"Information, 3 s"},
    {wType.kind0, 6, 124, 0, 0, 0, 151, 34, 18, 1, L"Critical"},
    {wType.kind0, 163, 124, 0, 0, 0, 151, 34, 18, 1, L"Critical, 3 s"},
    {wType.kind0, 6, 163, 0, 0, 0, 151, 34, 18, 1, L"Full screen"},
    {wType.kind0, 163, 163, 0, 0, 0, 151, 34, 18, 1, L"Full screen, 3 s"},
    {wType.kind9, 6, 202, 0, 0, 0, 151, 34, 18, 1, L"Full, critical"},
    {wType.kind9, 163, 202, 0, 0, 0, 151, 34, 18, 1, L"Full, critical, 3 s"},
};

template<int TYPE>
void waitForTap() {
    Modal message;
    message.onClose = drawMessages;
    message.setLine1(NAMES[TYPE]);
    message.setLine2(L"Tap anywhere");
    message.setLine3(L"to close it.");
    message.setLine4(L"A notice as large as the panel");
    message.setLine5(L"has room for five lines.");
    message.draw(TYPE, -1);
}

template<int TYPE>
void showProgress() {
    Modal message;
    message.setLine1(NAMES[TYPE]);
    message.setLine2(L"Three seconds");
    message.setLine3(L"without touches.");
    message.drawTimed(TYPE);
    message.time(PROGRESS_SECONDS);
    drawMessages();
}

} // namespace

void prepareMessages(void (*onBack)()) {
    void (*const callbacks[])() = {
        waitForTap<FRAME>,
        showProgress<FRAME>,
        waitForTap<INFORMATION>,
        showProgress<INFORMATION>,
        waitForTap<CRITICAL>,
        showProgress<CRITICAL>,
        waitForTap<FULL_INFORMATION>,
        showProgress<FULL_INFORMATION>,
        waitForTap<FULL_CRITICAL>,
        showProgress<FULL_CRITICAL>,
    };
    constexpr int COUNT = 2 * TYPE_COUNT;
    for (int i = 0; i < COUNT; ++i) {
        buttons[i].callback = callbacks[i];
        buttons[i].prev = i > 0 ? &buttons[i - 1] : nullptr;
        buttons[i].next = i + 1 < COUNT ? &buttons[i + 1] : nullptr;
    }
    page.widgets = buttons;
    page.showExit = 0;
    page.onBack = onBack;
    page.keyboard.returnHandler = doNothing; // called when the program ends
}

void drawMessages() {
    page.draw();
}

Screen& messagesPage() {
    return page;
}
