// Languages: the texts that people see, looked up by section and key in a file a language, "/ostrel/NAME.xml" with NAME
// the value of the setting "Language".
//
// A file is UTF-8 text, read line by line. A section begins at the first line that contains <SECTION> and ends at the
// next one that contains </SECTION>; an entry in it, not on the section's own first line, is <KEY>text</KEY>. The text
// may go on over several lines, line ends included; the last of them must end with </KEY> and the line end. The first
// line of the section that contains <KEY> counts, so a tag must not occur inside other texts.
//
// Every lookup returns the address of `wret`, which the next one overwrites: copy a text that must last. Lookups and
// their buffers are for one thread only, the one that draws.
#ifndef OSTREL_LANG_LANGUAGES_H
#define OSTREL_LANG_LANGUAGES_H

#include "util/api.h"

#include <cwchar>

enum : int {
    LANGUAGE_NAME_LENGTH = 180, // of `language` and `file`, with the terminator
    LANGUAGE_TEXT_LENGTH = 255, // of `ret` and `wret`, with the terminator; longer texts are cut there
};

// The text found last, as UTF-8; "<NOTAG>" as long as none has been found. A lookup that finds nothing leaves it.
extern OSTREL_API char ret[LANGUAGE_TEXT_LENGTH];

// The result of every lookup.
extern OSTREL_API wchar_t wret[LANGUAGE_TEXT_LENGTH];

class OSTREL_API Languages {
  public:
    // Reads the setting, as refresh does.
    Languages();

    // Reads the setting "Language" anew and names the file after it. Call it when the user has chosen another language.
    // A setting that cannot be read is an empty name; one of LANGUAGE_NAME_LENGTH bytes and more is cut.
    void refresh();

    // The text of `key` in `section` of the current language's file. See getvalue.
    wchar_t* get(char* key, char* section);

    // The text of `key` in `section` of the file at `path`, in `wret`. Lines of more than 254 bytes are searched in
    // pieces of 254, and an opening tag that lies across two of them is not found. A byte that is not UTF-8 is left
    // out. When there is no such key the text is that of the lookup before, "<NOTAG>" if there was none; so tell a
    // missing key by asking beforehand, not by the text. An empty text counts as none.
    //
    // Null when the file cannot be opened: a message on standard output and the reason on standard error; `ret` is
    // unchanged, `wret` empty.
    wchar_t* getvalue(char* path, char* key, char* section);

    // The same for names that are constant, string literals above all, all of them or some.
    template<typename Key, typename Section>
    wchar_t* get(Key key, Section section) {
        const char* const texts[] = {key, section};
        return get(const_cast<char*>(texts[0]), const_cast<char*>(texts[1]));
    }
    template<typename File, typename Key, typename Section>
    wchar_t* getvalue(File path, Key key, Section section) {
        const char* const texts[] = {path, key, section};
        return getvalue(const_cast<char*>(texts[0]), const_cast<char*>(texts[1]), const_cast<char*>(texts[2]));
    }

    char language[LANGUAGE_NAME_LENGTH]; // the setting's value
    char file[LANGUAGE_NAME_LENGTH];     // "/ostrel/%s.xml" of it
};
static_assert(sizeof(Languages) == 360, "binary interface");

// The one language object of the process. It reads the setting once when the library is loaded.
extern OSTREL_API Languages lang;

// As Languages::getvalue, with the same `ret` and `wret`, for files with lines of up to 1023 bytes.
OSTREL_API wchar_t* getLangvalue(char* file, char* key, char* section);
template<typename File, typename Key, typename Section>
wchar_t* getLangvalue(File file, Key key, Section section) {
    const char* const texts[] = {file, key, section};
    return getLangvalue(const_cast<char*>(texts[0]), const_cast<char*>(texts[1]), const_cast<char*>(texts[2]));
}

#endif
