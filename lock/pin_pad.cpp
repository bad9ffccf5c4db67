#include "lock/pin_pad.h"

#include "lock/inactivity.h"
#include "settings/memory.h"
#include "util/bounded_copy.h"

#include <cstring>
#include <unistd.h>

char lockPass[5];
int32_t lockPassCnt;

WidgetRecord screenLockKeyboard_button0, screenLockKeyboard_button1, screenLockKeyboard_button2,
    screenLockKeyboard_button3, screenLockKeyboard_button4, screenLockKeyboard_button5, screenLockKeyboard_button6,
    screenLockKeyboard_button7, screenLockKeyboard_button8, screenLockKeyboard_button9, screenLockKeyboard_buttonDone,
    screenLockKeyboard_buttonDel;
TouchArea tA_screenLockKeyboard_button0, tA_screenLockKeyboard_button1, tA_screenLockKeyboard_button2,
    tA_screenLockKeyboard_button3, tA_screenLockKeyboard_button4, tA_screenLockKeyboard_button5,
    tA_screenLockKeyboard_button6, tA_screenLockKeyboard_button7, tA_screenLockKeyboard_button8,
    tA_screenLockKeyboard_button9, tA_screenLockKeyboard_buttonDone, tA_screenLockKeyboard_buttonDel;

namespace {

constexpr int32_t PIN_DIGITS = 4;
constexpr int WHITE = 0xFFFF;
constexpr int BLACK = 0;

struct PadKey {
    WidgetRecord& record;
    TouchArea& area;
    const wchar_t* label;
    int32_t x, y, width, height;
    void (*act)(const PadKey& key);
};

void typeDigit(const PadKey& key);
void compareOnDone(const PadKey& key);
void takeBackDigit(const PadKey& key);

#define PAD_KEY(name) screenLockKeyboard_button##name, tA_screenLockKeyboard_button##name

// In the order in which the keys are drawn and tested.
const PadKey KEYS[] = {
    // record and area  label    x    y   width height  action
    {PAD_KEY(1), L"1", 3, 94, 75, 45, typeDigit},    {PAD_KEY(2), L"2", 80, 94, 75, 45, typeDigit},
    {PAD_KEY(3), L"3", 157, 94, 75, 45, typeDigit},  {PAD_KEY(4), L"4", 3, 141, 75, 45, typeDigit},
    {PAD_KEY(5), L"5", 80, 141, 75, 45, typeDigit},  {PAD_KEY(6), L"6", 157, 141, 75, 45, typeDigit},
    {PAD_KEY(7), L"7", 3, 188, 75, 45, typeDigit},   {PAD_KEY(8), L"8", 80, 188, 75, 45, typeDigit},
    {PAD_KEY(9), L"9", 157, 188, 75, 45, typeDigit}, {PAD_KEY(Done), L"Done", 234, 188, 80, 45, compareOnDone},
    {PAD_KEY(0), L"0", 234, 141, 80, 45, typeDigit}, {PAD_KEY(Del), L"Del", 234, 94, 80, 45, takeBackDigit},
};
#undef PAD_KEY

bool contains(const TouchArea& area, int x, int y) {
    return area.left < x && x < area.right && area.top < y && y < area.bottom;
}

bool unlocksWithTypedDigits() {
    lockPass[PIN_DIGITS] = 0;
    char pin[NVRAM_TEXT_LENGTH] = "";
    Memory settings;
    settings.getSetting("PIN", pin);
    return strcmp(pin, lockPass) == 0;
}

void unlock() {
    lockScreen = 0;
    lcd_clear(BLACK);
    lockHandler();
}

void typeDigit(const PadKey& key) {
    if (lockPassCnt < 0 || lockPassCnt >= PIN_DIGITS)
        return;
    drawFontBigWhiteString(key.record.text, 110 + 30 * lockPassCnt, 37);
    lockPass[lockPassCnt] = static_cast<char>(key.label[0]);
    ++lockPassCnt;
}

void compareOnDone(const PadKey&) {
    if (unlocksWithTypedDigits())
        unlock();
}

void takeBackDigit(const PadKey&) {
    const auto left = static_cast<unsigned short>(71 + 30 * lockPassCnt);
    const auto right = static_cast<unsigned short>(99 + 30 * lockPassCnt);
    fillRect(left, 31, right, 58, BLACK);
    lockPassCnt = lockPassCnt > 0 ? lockPassCnt - 1 : 0;
    // A blank, not a terminator: Done then compares the blank too.
    if (lockPassCnt < PIN_DIGITS)
        lockPass[lockPassCnt] = ' ';
}

} // namespace

void draw_screenLock() {
    lockPassCnt = 0;
    for (unsigned short left = 100; left < 220; left = static_cast<unsigned short>(left + 30))
        drawRect(left, 30, static_cast<unsigned short>(left + 30), 65, WHITE);
    for (const PadKey& key : KEYS) {
        key.record.x = key.x;
        key.record.y = key.y;
        ostrel::copyText(key.record.text, key.label);
        key.record.width = key.width;
        key.record.height = key.height;
        key.record.selected = 0;
        key.record.type = 0;
        drawWidget(key.record);
    }
    for (const PadKey& key : KEYS)
        key.area = getTouchArea(key.record);
}

void get_screenLock_touch(int x, int y) {
    for (const PadKey& key : KEYS) {
        if (!contains(key.area, x, y))
            continue;
        key.record.selected = 1;
        drawWidget(key.record);
        while (contains(key.area, x, y)) {
            x = readX();
            y = readY();
            usleep(1000);
        }
        key.record.selected = 0;
        drawWidget(key.record);
        key.act(key);
    }
    if (lockPassCnt == PIN_DIGITS && unlocksWithTypedDigits()) {
        unlock();
        memset(lockPass, 0, 3);
    }
}
