#include "gui/modal.h"

#include "util/bounded_copy.h"

#include <algorithm>
#include <unistd.h>

unsigned char modalImagesLoaded = 0;

// The places on the router, whose pointers have 4 bytes, are part of the binary interface.
static_assert(sizeof(void*) != 4 || offsetof(Modal, line1) == 4, "binary interface");
static_assert(sizeof(void*) != 4 || offsetof(Modal, line5) == 1028, "binary interface");
static_assert(sizeof(void*) != 4 || offsetof(Modal, type) == 1284, "binary interface");
static_assert(sizeof(void*) != 4 || sizeof(Modal) == 1288, "binary interface");

namespace {

constexpr int WHITE = 0xFFFF;
constexpr float TEXT_SIZE = 17.0F;

constexpr const char* ICON_FILES[] = {
    "/ostrel/modal.png",
    "/ostrel/info.png",
    "/ostrel/critical.png",
    "/ostrel/info_transparent.png",
    "/ostrel/critical_transparent.png",
};
constexpr int FRAME_ICON = 0;

// Where the icon and the lines stand. The lines follow each other downwards.
struct Form {
    int iconX, iconY;
    int lineX, lineWidth;
    int firstLineY, linePitch;
    int lines;
};
constexpr Form BOXED = {65, 85, 130, 130, 80, 20, 3};
constexpr Form BOXED_TIMED = {65, 65, 130, 130, 65, 20, 3};
constexpr Form FULL = {127, 25, 1, 318, 94, 18, 5};
constexpr Form FULL_TIMED = {127, 25, 1, 318, 94, 18, 3};

// The bar's frame, and the border between it and what fills it.
constexpr int BAR_LEFT = 70;
constexpr int BAR_RIGHT = 250;
constexpr int BAR_HEIGHT = 20;
constexpr int BAR_BORDER = 2;
constexpr int BAR_TOP_BOXED = 130;
constexpr int BAR_TOP_FULL = 150;
constexpr int BAR_STEPS = 178;

// The types that fill the screen have a background; the others have none.
struct Background {
    int type;
    int colour;
};
constexpr Background BACKGROUNDS[] = {{3, 0x057D}, {4, 0xFA6A}};

const Background* backgroundOf(int type) {
    for (const Background& background : BACKGROUNDS)
        if (background.type == type)
            return &background;
    return nullptr;
}

void drawContents(Modal& modal, const Form& form) {
    modalImages.drawPNG(form.iconX, form.iconY, 1, 0, modal.type);
    wchar_t* const lines[] = {modal.line1, modal.line2, modal.line3, modal.line4, modal.line5};
    for (int i = 0; i < form.lines; ++i)
        drawText(lines[i], form.lineX, form.firstLineY + i * form.linePitch, form.lineWidth, 1, 0, TEXT_SIZE, WHITE, 1);
}

void emptyLines(Modal& modal) {
    constexpr int CLEARED = 16; // what lies behind them in a line is never shown
    for (wchar_t* const line : {modal.line1, modal.line2, modal.line3, modal.line4, modal.line5})
        std::fill_n(line, CLEARED, L'\0');
}

// The press is looked for on a panel that is one pixel larger on each side than the one that the release leaves.
void waitForTap() {
    int x = -1;
    int y = -1;
    const auto read = [&] {
        x = readX();
        y = readY();
        usleep(1000);
    };
    do
        read();
    while (x < 0 || x > 320 || y < 0 || y > 240);
    while (x >= 1 && x <= 319 && y >= 1 && y <= 239)
        read();
}

void fillBar(int top, int right) {
    fillRect(
        BAR_LEFT + BAR_BORDER, static_cast<unsigned short>(top + BAR_BORDER), static_cast<unsigned short>(right),
        static_cast<unsigned short>(top + BAR_HEIGHT - BAR_BORDER), WHITE);
}

} // namespace

Modal::Modal() {
    if (modalImagesLoaded != 1) {
        for (const char* file : ICON_FILES)
            modalImages.loadPNG(file);
        modalImagesLoaded = 1;
    }
    emptyLines(*this);
    type = 0;
}

Modal::~Modal() = default; // exported, since programs call it

void Modal::setLine1(wchar_t* text) {
    emptyLines(*this);
    ostrel::copyText(line1, text);
}

void Modal::setLine2(wchar_t* text) {
    ostrel::copyText(line2, text);
}

void Modal::setLine3(wchar_t* text) {
    ostrel::copyText(line3, text);
}

void Modal::setLine4(wchar_t* text) {
    ostrel::copyText(line4, text);
}

void Modal::setLine5(wchar_t* text) {
    ostrel::copyText(line5, text);
}

void Modal::draw(int type, int seconds) {
    this->type = type;
    if (const Background* const background = backgroundOf(type)) {
        lcd_clear(background->colour);
        drawContents(*this, FULL);
    } else {
        drawRoundedRectangle(60, 60, 260, 160, 0, 240);
        drawContents(*this, BOXED);
    }
    if (seconds >= 0)
        sleep(static_cast<unsigned>(seconds));
    else
        waitForTap();
    onClose();
}

void Modal::drawTimed(int type) {
    this->type = type;
    if (const Background* const background = backgroundOf(type)) {
        lcd_clear(background->colour);
        drawContents(*this, FULL_TIMED);
    } else {
        modalImages.drawPNG(60, 60, 1, 0, FRAME_ICON);
        drawContents(*this, BOXED_TIMED);
    }
}

void Modal::time(int seconds) {
    disableTouch(1);
    const int top = backgroundOf(type) != nullptr ? BAR_TOP_FULL : BAR_TOP_BOXED;
    drawRect(
        BAR_LEFT, static_cast<unsigned short>(top), BAR_RIGHT, static_cast<unsigned short>(top + BAR_HEIGHT), WHITE);
    for (int i = 0; i < seconds; ++i) {
        fillBar(top, BAR_LEFT + BAR_BORDER + BAR_STEPS / seconds * i);
        if (i == seconds - 1)
            fillBar(top, BAR_RIGHT - BAR_BORDER); // full whatever the rounding
        sleep(1);
    }
    disableTouch(0);
}

void doNothing() {}
