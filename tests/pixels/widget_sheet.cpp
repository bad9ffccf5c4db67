// widget_sheet FOLDER: draws the pictures of the elements that the README shows: every kind in every state
// (widgets.png), and a page as a program would make it (panel.png).
#include "display/panel.h"
#include "gui/display.h"
#include "tests/support/panel_file.h"

#include <cstdio>
#include <cwchar>
#include <iterator>
#include <string>

using namespace ostrel;

namespace {

struct Sample {
    const wchar_t* name;
    const wchar_t* text;
    int kind;
    int password;
};
constexpr Sample SAMPLES[] = {
    {L"Push button", L"Connect", 0, 0},
    {L"Prominent button", L"Restart", 9, 0},
    {L"List row", L"Network", 1, 0},
    {L"List row with a value", L"Screen\t5 min", 1, 0},
    {L"Value field", L"Żółty-Router 24", 2, 0},
    {L"Masked field", L"Secret pass", 2, 1},
    {L"Exclusive choice", L"30 seconds", 3, 0},
    {L"Switch", L"PIN lock", 4, 0},
    {L"Check mark row", L"Ελληνικά", 5, 0},
    {L"Tab", L"Wireless", 6, 0},
    {L"Caption", L"Настройки сети", 7, 0},
    {L"Text item", L"192.168.1.1", 8, 0},
};

struct State {
    const wchar_t* name;
    int selected;
    int touchable;
    int colourA;
    int colourB;
};
constexpr State STATES[] = {
    {L"Normal", 0, 1, 0, 0},
    {L"Selected", 1, 1, 0, 0},
    {L"Not touchable", 0, -1, 0, 0},
    {L"Selected, not touchable", 1, -1, 0, 0},
    {L"Own colours", 0, 1, 0xFFFF, 0x0310},
};

constexpr int CELL_WIDTH = 160;
constexpr int CELL_HEIGHT = 48;
constexpr int NAMES_WIDTH = 172;
constexpr int HEAD_HEIGHT = 34;

WidgetRecord recordOf(int kind, int x, int y, int width, int height, const wchar_t* text) {
    WidgetRecord record{};
    record.type = kind;
    record.x = x;
    record.y = y;
    record.width = width;
    record.height = height;
    record.touchable = 1;
    std::wcsncpy(record.text, text, WIDGET_TEXT_LENGTH - 1);
    return record;
}

void paste(Picture& sheet, const Picture& part, int left, int top) {
    for (int y = 0; y < part.height; ++y)
        for (int x = 0; x < part.width; ++x)
            sheet.at(left + x, top + y) = part.at(x, y);
}

Picture label(const PanelFile& panel, const wchar_t* text, int width, int height) {
    lcd_clear(0);
    drawText(text, 8, (height - 18) / 2, 0, 1, 0, 17, 0xB61A, 0);
    return panel.picture({0, 0, width, height});
}

Picture cell(const PanelFile& panel, const Sample& sample, const State& state) {
    lcd_clear(0);
    WidgetRecord record = recordOf(sample.kind, 6, 5, CELL_WIDTH - 12, 38, sample.text);
    record.password = sample.password;
    record.selected = state.selected;
    record.touchable = state.touchable;
    record.colourA = state.colourA;
    record.colourB = state.colourB;
    if (sample.kind == 8) {
        record.colourA = state.colourA != 0 ? 0x8E9D : 0xFFFF;
        record.y = 14;
    }
    drawWidget(record);
    return panel.picture({0, 0, CELL_WIDTH, CELL_HEIGHT});
}

Picture sheetOfAll() {
    const PanelFile panel;
    const int columns = static_cast<int>(std::size(STATES));
    const int rows = static_cast<int>(std::size(SAMPLES));
    Picture sheet = blankPicture(NAMES_WIDTH + columns * CELL_WIDTH, HEAD_HEIGHT + rows * CELL_HEIGHT, 0);
    for (int column = 0; column < columns; ++column)
        paste(sheet, label(panel, STATES[column].name, CELL_WIDTH, HEAD_HEIGHT), NAMES_WIDTH + column * CELL_WIDTH, 0);
    for (int row = 0; row < rows; ++row) {
        const int top = HEAD_HEIGHT + row * CELL_HEIGHT;
        paste(sheet, label(panel, SAMPLES[row].name, NAMES_WIDTH, CELL_HEIGHT), 0, top);
        for (int column = 0; column < columns; ++column)
            paste(sheet, cell(panel, SAMPLES[row], STATES[column]), NAMES_WIDTH + column * CELL_WIDTH, top);
    }
    return sheet;
}

Picture samplePage(const std::string& assets) {
    const PanelFile panel;
    lcd_clear(0);
    ImagePNG images;
    drawFontBigWhiteString(L"Wi-Fi", 90, 10);
    const char* const headers[] = {"/back_35.png", "/cross_35.png", "/language_35.png"};
    const int places[] = {10, 50, 283};
    for (int i = 0; i < 3; ++i)
        images.drawPNG(places[i], 5, 0, 0, images.loadPNG((assets + headers[i]).c_str()));
    WidgetRecord elements[] = {
        recordOf(2, 8, 48, 304, 36, L"Name\tHome network"),
        recordOf(2, 8, 88, 304, 36, L"correct horse"),
        recordOf(4, 8, 128, 304, 36, L"Connect automatically"),
        recordOf(3, 8, 168, 149, 36, L"WPA3"),
        recordOf(3, 163, 168, 149, 36, L"WPA2"),
        recordOf(9, 8, 208, 149, 30, L"Forget"),
        recordOf(0, 163, 208, 149, 30, L"Save"),
    };
    elements[1].password = 1;
    elements[2].selected = 1;
    elements[3].selected = 1;
    for (const WidgetRecord& element : elements)
        drawWidget(element);
    return panel.picture();
}

} // namespace

int main(int count, char** arguments) {
    if (count != 3) {
        std::fputs("usage: widget_sheet FOLDER ASSETS\n", stderr);
        return 2;
    }
    const std::string folder = arguments[1];
    if (writePicture(sheetOfAll(), folder + "/widgets.png") &&
        writePicture(samplePage(arguments[2]), folder + "/panel.png"))
        return 0;
    std::fprintf(stderr, "widget_sheet: cannot write pictures into %s\n", folder.c_str());
    return 1;
}
