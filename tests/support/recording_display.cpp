#include "tests/support/recording_display.h"

#include <sstream>

RecordingDisplay& display() {
    // Never destroyed: widgets in static storage erase themselves after it would be gone.
    static RecordingDisplay* const instance = new RecordingDisplay;
    return *instance;
}

std::string RecordingDisplay::take() {
    std::string log;
    for (const std::string& call : calls)
        log += call + "\n";
    calls.clear();
    return log;
}

std::string narrow(const wchar_t* text) {
    std::string bytes;
    for (; *text != 0; ++text) {
        const auto c = static_cast<uint32_t>(*text);
        if (c < 0x80) {
            bytes += static_cast<char>(c);
        } else if (c < 0x800) {
            bytes += static_cast<char>(0xC0 | c >> 6);
            bytes += static_cast<char>(0x80 | (c & 0x3F));
        } else if (c < 0x10000) {
            bytes += static_cast<char>(0xE0 | c >> 12);
            bytes += static_cast<char>(0x80 | (c >> 6 & 0x3F));
            bytes += static_cast<char>(0x80 | (c & 0x3F));
        } else {
            bytes += "U+" + std::to_string(c);
        }
    }
    return bytes;
}

namespace {

template<typename... Arguments>
void record(const char* operation, const Arguments&... arguments) {
    if (display().beforeCall)
        display().beforeCall(operation);
    std::ostringstream line;
    line << operation << '(';
    [[maybe_unused]] const char* separator = "";
    ((line << separator << arguments, separator = ", "), ...);
    line << ')';
    display().calls.push_back(line.str());
}

int advanceOf(wchar_t character) {
    const auto special = display().characterWidths.find(character);
    return special != display().characterWidths.end() ? special->second : display().characterWidth;
}

std::string quoted(const wchar_t* text) {
    return '"' + narrow(text) + '"';
}

// Wraps: blank widgets hold any numbers.
int sum(int a, int b) {
    return static_cast<int>(static_cast<unsigned>(a) + static_cast<unsigned>(b));
}

std::string described(const WidgetRecord& element) {
    std::ostringstream text;
    text << "type " << element.type << " at " << element.x << ',' << element.y << ' ' << element.width << 'x'
         << element.height << " selected " << element.selected << ' ' << quoted(element.text);
    if (element.password != 0)
        text << " password " << element.password;
    return text.str();
}

} // namespace

void libOstrelGuiInit() {
    record("libOstrelGuiInit");
}

void lcd_clear(int colour) {
    record("lcd_clear", colour);
}

void fillRect(unsigned short x1, unsigned short y1, unsigned short x2, unsigned short y2, int colour) {
    record("fillRect", x1, y1, x2, y2, colour);
}

void drawRect(unsigned short x1, unsigned short y1, unsigned short x2, unsigned short y2, int colour) {
    record("drawRect", x1, y1, x2, y2, colour);
}

void drawRoundedRectangle(int x1, int y1, int x2, int y2, int a, int b) {
    record("drawRoundedRectangle", x1, y1, x2, y2, a, b);
}

void drawText(wchar_t* text, int x, int y, int width, int a, int b, float size, int colour, int c) {
    record("drawText", quoted(text), x, y, width, a, b, size, colour, c);
}

void drawFontBigWhiteString(wchar_t* text, int x, int y) {
    record("drawFontBigWhiteString", quoted(text), x, y);
}

void unDrawTitle(wchar_t* text) {
    record("unDrawTitle", quoted(text));
}

int textWidth(wchar_t* text, float) {
    int width = 0;
    for (; *text != 0; ++text)
        width += advanceOf(*text);
    return width;
}

int textTouchPosition(wchar_t* text, int x, float) {
    int left = 0;
    for (int index = 0; !display().namesNoCharacter && x >= left && text[index] != 0; ++index) {
        const int right = left + advanceOf(text[index]);
        if (x < right)
            return 1000 * left + index;
        left = right;
    }
    return -1;
}

void drawWidget(WidgetRecord element) {
    record("drawWidget", described(element));
}

void unDrawWidget(WidgetRecord element) {
    record("unDrawWidget", described(element));
}

TouchArea getTouchArea(WidgetRecord element) {
    record("getTouchArea", described(element));
    if (display().touchArea)
        return display().touchArea(element);
    return {element.x, sum(element.x, element.width), element.y, sum(element.y, element.height)};
}

void setShowPasswords(bool show) {
    record("setShowPasswords", show ? "true" : "false");
}

int readX() {
    RecordingDisplay& panel = display();
    const int x = panel.penRead < panel.pen.size() ? panel.pen[panel.penRead].first : -1;
    ++panel.penRead;
    if (panel.logPen)
        record("readX", x);
    return x;
}

int readY() {
    RecordingDisplay& panel = display();
    const size_t current = panel.penRead == 0 ? 0 : panel.penRead - 1;
    const int y = current < panel.pen.size() ? panel.pen[current].second : -1;
    if (panel.logPen)
        record("readY", y);
    return y;
}

void waitForPenUp() {
    record("waitForPenUp");
}

void disableTouch(int disabled) {
    record("disableTouch", disabled);
}

void turnOn() {
    record("turnOn");
}

void turnOff() {
    record("turnOff");
}

void setScreenLockHandler(void (*handler)()) {
    display().idleHandler = handler;
    record("setScreenLockHandler", handler != nullptr ? "handler" : "null");
}

bool waitForTouch(int*, int*, int timeoutMs) {
    record("waitForTouch", timeoutMs);
    return false;
}

int touchDescriptor() {
    return -1;
}

bool panelClosed() {
    return true;
}

struct ImagePNG::Store {
    int loaded = 0;
};

ImagePNG::ImagePNG() : store(new Store) {}

ImagePNG::~ImagePNG() {
    delete store;
}

int ImagePNG::loadPNG(char* path) {
    record("loadPNG", path);
    return store->loaded++;
}

void ImagePNG::drawPNG(int x, int y, int a, int b, int index) {
    record("drawPNG", x, y, a, b, index);
}
