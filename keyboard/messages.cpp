#include "keyboard/messages.h"

#include "lang/languages.h"
#include "util/bounded_copy.h"
#include "util/wide_format.h"

namespace ostrel {

namespace {

constexpr int FORMATTED_LENGTH = 59; // characters of a formatted line

wchar_t* lookUp(const char* key) {
    return lang.get(key, "modal");
}

// A looked-up text, cut before it is formatted: then it fits into `scratch` with a number behind it.
struct ShortText {
    explicit ShortText(const char* key) { copyText(text, lookUp(key)); }
    wchar_t text[FORMATTED_LENGTH + 1];
};

} // namespace

void setLines(Modal& modal, const Message& message) {
    modal.setLine1(lookUp(message.line1));
    modal.setLine2(lookUp(message.line2));
    modal.setLine3(lookUp(message.line3));
    modal.onClose = doNothing;
}

void setLines(Keyboard& keyboard, Modal& modal, const Message& message, int number) {
    wchar_t* const line = keyboard.scratch;
    aswprintf(line, FORMATTED_LENGTH, L"%ls", ShortText(message.line1).text);
    modal.setLine1(line);
    aswprintf(line, FORMATTED_LENGTH, L"%ls %d", ShortText(message.line2).text, number);
    modal.setLine2(line);
    aswprintf(line, FORMATTED_LENGTH, L"%ls", ShortText(message.line3).text);
    modal.setLine3(line);
    modal.onClose = doNothing;
}

} // namespace ostrel
