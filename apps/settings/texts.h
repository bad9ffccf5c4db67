// The program's texts: the keys of the section "settings" of the language files, in the language that is chosen. All
// functions copy and none draws, so that a page can take its texts anew at any time.
//
// A new text is added to assets/languages/english.xml and to all the other languages there, under a key that begins
// with its page's name; assets/check-languages tells what is missing.
#ifndef OSTREL_APPS_SETTINGS_TEXTS_H
#define OSTREL_APPS_SETTINGS_TEXTS_H

#include <ostrel.h>

#include <string>

// The text of `key`, there until the next lookup. Without a file for the chosen language the English text, without that
// one the key itself.
const wchar_t* textOf(const char* key);

// The same for a key of the toolkit's own section "modal".
const wchar_t* messageOf(const char* key);

// The widget's text; with a value (UTF-8) at its right end.
void label(Widget& widget, const char* key);
void label(Widget& widget, const char* key, const std::string& value);

// The widget's text is `value` alone.
void fill(Widget& widget, const std::string& value);

void entitle(Screen& page, const char* key);

// A wide text in UTF-8. What is no character is left out.
std::string utf8Of(const wchar_t* text);

#endif
