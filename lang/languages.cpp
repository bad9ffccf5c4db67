#include "lang/languages.h"

#include "settings/memory.h"
#include "util/bounded_copy.h"
#include "util/utf8.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <iterator>

char ret[LANGUAGE_TEXT_LENGTH];
wchar_t wret[LANGUAGE_TEXT_LENGTH];

namespace {

// A tag is looked for without being put together first, so that no name is too long for it.
struct Tag {
    Tag(bool closing, const char* tagName) : isClosing(closing), name(tagName), nameLength(std::strlen(tagName)) {}

    size_t length() const { return nameLength + (isClosing ? 3 : 2); }

    bool isClosing;
    const char* name;
    size_t nameLength;
};

// The first place of the tag in `text`, or null.
char* find(const Tag& tag, char* text) {
    for (char* at = std::strchr(text, '<'); at != nullptr; at = std::strchr(at + 1, '<')) {
        if (tag.isClosing && at[1] != '/')
            continue;
        const char* const name = at + (tag.isClosing ? 2 : 1);
        if (std::strncmp(name, tag.name, tag.nameLength) == 0 && name[tag.nameLength] == '>')
            return at;
    }
    return nullptr;
}

// A pass over a language file, a line or a piece of a long one at a time.
class LanguageFile {
  public:
    LanguageFile(std::FILE* opened, char* lineBuffer, int lineSize) : file(opened), line(lineBuffer), size(lineSize) {}

    // Puts the text into `ret`, or leaves that alone when there is no such section or key.
    void findText(const char* section, const char* key) {
        const Tag sectionBegin(false, section);
        const Tag sectionEnd(true, section);
        const Tag keyBegin(false, key);
        do {
            if (!readLine())
                return;
        } while (find(sectionBegin, line) == nullptr);
        while (readLine()) {
            if (char* const begin = find(keyBegin, line)) {
                takeText(begin + keyBegin.length(), Tag(true, key));
                return;
            }
            if (find(sectionEnd, line) != nullptr)
                return;
        }
    }

  private:
    bool readLine() { return std::fgets(line, size, file) != nullptr; }

    void takeText(char* begin, const Tag& keyEnd) {
        if (char* const end = find(keyEnd, begin)) {
            *end = 0;
            ostrel::copyText(ret, begin);
            return;
        }
        ostrel::copyText(ret, begin);
        while (readLine()) {
            const bool isLast = find(keyEnd, line) != nullptr;
            if (isLast) {
                // The tag is taken to be the line's end, with one character for the line end behind it.
                const size_t length = std::strlen(line);
                const size_t tail = keyEnd.length() + 1;
                line[length > tail ? length - tail : 0] = 0;
            }
            ostrel::appendText(ret, line);
            if (isLast)
                return;
        }
        // The file ends inside the text: its last line is what is shown.
        ostrel::copyText(ret, line);
    }

    std::FILE* file;
    char* line;
    int size;
};

template<int LINE_SIZE>
wchar_t* lookUp(const char* path, const char* key, const char* section) {
    std::wmemset(wret, 0, std::size(wret));
    std::FILE* const file = std::fopen(path, "r");
    if (file == nullptr) {
        const int reason = errno; // which printing may change
        std::printf("%s: file cannot be opened\n", path);
        errno = reason;
        std::perror("");
        return nullptr;
    }
    char line[LINE_SIZE] = {};
    LanguageFile(file, line, LINE_SIZE).findText(section, key);
    std::fclose(file);
    if (ret[0] == 0)
        ostrel::copyText(ret, "<NOTAG>");
    const size_t length = std::strlen(ret);
    utf8_to_wchar(ret, length, wret, length, UTF8_DROP_INVALID);
    return wret;
}

} // namespace

Languages::Languages() { // NOLINT(cppcoreguidelines-pro-type-member-init): refresh sets both
    refresh();
}

void Languages::refresh() {
    Memory settings;
    char value[NVRAM_TEXT_LENGTH];
    settings.getSetting("Language", value);
    ostrel::copyText(language, value);
    ostrel::copyText(file, "/ostrel/");
    ostrel::appendText(file, language);
    ostrel::appendText(file, ".xml");
}

wchar_t* Languages::get(char* key, char* section) {
    return getvalue(file, key, section);
}

wchar_t* Languages::getvalue(char* path, char* key, char* section) {
    return lookUp<LANGUAGE_TEXT_LENGTH>(path, key, section);
}

wchar_t* getLangvalue(char* file, char* key, char* section) {
    return lookUp<1024>(file, key, section);
}
