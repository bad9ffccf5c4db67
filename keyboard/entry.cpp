// An entry from its start to where its result goes.
#include "keyboard/drawing.h"
#include "keyboard/messages.h"
#include "util/bounded_copy.h"
#include "util/utf8.h"
#include "util/wide_format.h"

#include <arpa/inet.h>
#include <cstdio>
#include <cstring>
#include <cwchar>

using namespace ostrel;

bool saveMode = true;
bool (*keyboardValidation)(wchar_t* text) = nullptr;
int32_t leftShift = 0;

namespace {

constexpr int MAX_CHARACTERS = KEYBOARD_TEXT_LENGTH - 1;
constexpr size_t CLEARED_OUTPUT_BYTES = 180; // of a free text's buffer: 45 characters
constexpr int SAVING_SECONDS = 23;           // until the restarted services answer again

// UTF-8 of a text, cut between characters at the buffer's end.
template<size_t SIZE>
void narrow(char (&buffer)[SIZE], const wchar_t* text) {
    size_t length = 0;
    for (; *text != 0; ++text) {
        char bytes[6];
        const size_t count = wchar_to_utf8(text, 1, bytes, sizeof bytes, UTF8_DROP_INVALID);
        if (length + count >= SIZE)
            break;
        std::memcpy(buffer + length, bytes, count);
        length += count;
    }
    buffer[length] = 0;
}

void setText(Keyboard& keyboard, char* bytes) {
    aswprintf(keyboard.text, MAX_CHARACTERS, L"%hs", bytes);
    aswprintf(keyboard.initialText, MAX_CHARACTERS, L"%hs", bytes);
}

void redraw(Keyboard& keyboard) {
    if (isKeypad(keyboard.layoutMode)) {
        keyboard.drawNumKeyboard();
    } else {
        keyboard.drawBase();
        keyboard.drawKeyboard();
    }
}

// A text that is longer than its box is drawn from its end.
void drawEntry(Keyboard& keyboard) {
    keyboard.oldWidth = shownWidth(keyboard);
    redraw(keyboard);
}

// Runs a part of an entry's start. Whatever a display library throws as a number leaves the entry on what was drawn.
template<typename Step>
void reportExceptions(Step step) {
    try {
        step();
    } catch (int number) {
        std::printf("Draw Keyboard Exception. Number:%d", number);
    }
}

void startEntry(Keyboard& keyboard) {
    isCap = 0;
    kbCapChanged = 0;
    leftShift = 0;
    keyboard.blinkCounter = 0;
    keyboard.active = 1;
}

void startSetting(Keyboard& keyboard, char* key, void (Memory::*read)(char* name, char* value)) {
    startEntry(keyboard);
    copyText(keyboard.settingKey, key);
    reportExceptions([&] {
        char value[NVRAM_TEXT_LENGTH];
        (keyboard.settings.*read)(keyboard.settingKey, value);
        copyText(keyboard.settingValue, value);
        setText(keyboard, keyboard.settingValue);
        drawEntry(keyboard);
    });
}

void deliver(Keyboard& keyboard, const wchar_t* result) {
    if (keyboard.outputText != nullptr)
        copyText(keyboard.outputText, KEYBOARD_TEXT_LENGTH, result);
}

bool isAddress(const wchar_t* text) {
    char bytes[KEYBOARD_TEXT_LENGTH];
    narrow(bytes, text);
    in_addr address;
    return inet_pton(AF_INET, bytes, &address) == 1;
}

// Shows what is wrong until it is tapped away, and then the keyboard again.
void refuse(Keyboard& keyboard, Modal& modal) {
    modal.draw(1, -1);
    lcd_clear(BLACK);
    redraw(keyboard);
}

// False: the text was refused, and the entry goes on.
bool passesChecks(Keyboard& keyboard, Modal& modal) {
    const int typed = textLen(keyboard.text) - keyboard.prefixLength;
    if (keyboard.maxLength >= 1 && typed > keyboard.maxLength) {
        setLines(keyboard, modal, TOO_LONG, keyboard.maxLength);
        refuse(keyboard, modal);
        return false;
    }
    if (keyboard.minLength > 0 && typed < keyboard.minLength) {
        setLines(keyboard, modal, TOO_SHORT, keyboard.minLength);
        refuse(keyboard, modal);
        return false;
    }
    if (keyboard.layoutMode == KEYBOARD_IP_ADDRESS && !isAddress(keyboard.text)) {
        setLines(modal, NO_ADDRESS);
        refuse(keyboard, modal);
        return false;
    }
    if (keyboardValidation != nullptr && !keyboardValidation(keyboard.text)) {
        redraw(keyboard);
        return false;
    }
    return true;
}

void save(Keyboard& keyboard, Modal& modal) {
    setLines(modal, SAVING);
    modal.drawTimed(2);
    narrow(keyboard.settingValue, keyboard.text);
    if (keyboard.rtdev != 0)
        keyboard.settings.saveSettingRtdev(keyboard.settingKey, keyboard.settingValue);
    else
        keyboard.settings.saveSetting(keyboard.settingKey, keyboard.settingValue);
    if (keyboard.deferCommit == 1)
        return;
    keyboard.settings.commit();
    modal.time(SAVING_SECONDS);
}

} // namespace

void keyBoardSaveMode(bool save) {
    saveMode = save;
}

void setKeyboardValidationFunction(bool (*validation)(wchar_t* text)) {
    keyboardValidation = validation;
}

void Keyboard::draw(char* key) {
    rtdev = 0;
    startSetting(*this, key, &Memory::getSetting);
}

void Keyboard::drawRtdev(char* key) {
    rtdev = 1;
    startSetting(*this, key, &Memory::getSettingRtdev);
}

void Keyboard::drawText(char* initial, wchar_t* out) {
    startEntry(*this);
    deferCommit = 1;
    saveMode = false;
    edited = 1;
    copyText(settingKey, initial); // first: `out` may be where it lies
    if (out != nullptr)
        std::memset(out, 0, CLEARED_OUTPUT_BYTES);
    outputText = out;
    setText(*this, settingKey);
    reportExceptions([&] { drawEntry(*this); });
}

void Keyboard::doneOnTouch() {
    Modal modal;
    if (!passesChecks(*this, modal))
        return;
    const bool changed = std::wcscmp(text, initialText) != 0;
    if (changed && saveMode) {
        save(*this, modal);
    } else if (!saveMode && edited != 0) {
        deliver(*this, text);
        if (changed) { // the next entry saves again, unless the program says otherwise
            saveMode = true;
            deferCommit = 0;
        }
    }
    unDraw();
}

void Keyboard::keyboardBack_onTouch() {
    if (!saveMode && edited != 0)
        deliver(*this, initialText);
    unDraw();
}
