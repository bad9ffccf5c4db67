#include "texts.h"

#include <cwchar>

namespace {

wchar_t keyItself[WIDGET_TEXT_LENGTH];

const wchar_t* lookUp(const char* key, const char* section) {
    const wchar_t* text = lang.get(key, section);
    if (text == nullptr)
        text = lang.getvalue("/ostrel/english.xml", key, section);
    if (text == nullptr) {
        aswprintf(keyItself, WIDGET_TEXT_LENGTH - 1, L"%hs", key);
        text = keyItself;
    }
    return text;
}

} // namespace

const wchar_t* textOf(const char* key) {
    return lookUp(key, "settings");
}

const wchar_t* messageOf(const char* key) {
    return lookUp(key, "modal");
}

void label(Widget& widget, const char* key) {
    aswprintf(widget.record.text, WIDGET_TEXT_LENGTH - 1, L"%ls", textOf(key));
}

void label(Widget& widget, const char* key, const std::string& value) {
    aswprintf(widget.record.text, WIDGET_TEXT_LENGTH - 1, L"%ls\t%hs", textOf(key), value.c_str());
}

void fill(Widget& widget, const std::string& value) {
    aswprintf(widget.record.text, WIDGET_TEXT_LENGTH - 1, L"%hs", value.c_str());
}

void entitle(Screen& page, const char* key) {
    aswprintf(page.title, SCREEN_TITLE_LENGTH - 1, L"%ls", textOf(key));
}

std::string utf8Of(const wchar_t* text) {
    const size_t length = std::wcslen(text);
    std::string bytes(6 * length + 1, '\0');
    bytes.resize(wchar_to_utf8(text, length, bytes.data(), bytes.size() - 1, UTF8_DROP_INVALID));
    return bytes;
}
