// The lookup of a text once more, one rule after the other, on the file's bytes. Tests and fuzz targets hold the real
// one to it.
#ifndef OSTREL_TESTS_SUPPORT_LANGUAGE_ORACLE_H
#define OSTREL_TESTS_SUPPORT_LANGUAGE_ORACLE_H

#include <algorithm>
#include <string>

namespace oracle {

// What `ret` holds after a lookup with lines of `bufferSize`, when it held `before`.
class LanguageLookup {
  public:
    LanguageLookup(std::string bytes, size_t bufferSize) : file(std::move(bytes)), size(bufferSize) {}

    std::string find(const std::string& key, const std::string& section, const std::string& before) {
        std::string found = before;
        search("<" + key + ">", "<" + section + ">", "</" + key + ">", "</" + section + ">", found);
        return found.empty() ? "<NOTAG>" : found;
    }

  private:
    static bool contains(const std::string& line, const std::string& tag) {
        return line.find(tag) != std::string::npos;
    }
    static std::string cut(const std::string& text, size_t length) { return text.substr(0, length); }

    bool nextLine() {
        if (at == file.size())
            return false;
        size_t end = at;
        while (end < file.size() && end - at < size - 1 && (end == at || file[end - 1] != '\n'))
            ++end;
        line = file.substr(at, end - at);
        line = line.substr(0, line.find('\0')); // a zero byte ends the line for everyone who looks at it
        at = end;
        return true;
    }

    void search(
        const std::string& keyOpen, const std::string& sectionOpen, const std::string& keyClose,
        const std::string& sectionClose, std::string& found) {
        bool inSection = false;
        while (!inSection && nextLine())
            inSection = contains(line, sectionOpen);
        while (inSection && nextLine()) {
            if (contains(line, keyOpen)) {
                take(line.substr(line.find(keyOpen) + keyOpen.size()), keyClose, found);
                return;
            }
            if (contains(line, sectionClose))
                return;
        }
    }

    void take(const std::string& rest, const std::string& keyClose, std::string& found) {
        if (contains(rest, keyClose)) {
            found = cut(rest.substr(0, rest.find(keyClose)), 254);
            return;
        }
        std::string value = rest;
        while (nextLine()) {
            if (!contains(line, keyClose)) {
                value = cut(value.append(line), size - 1);
                continue;
            }
            const size_t tail = keyClose.size() + 1;
            value = cut(value.append(line, 0, line.size() < tail ? 0 : line.size() - tail), size - 1);
            found = cut(value, 254);
            return;
        }
        found = cut(line, 254);
    }

    std::string file;
    size_t size;
    size_t at = 0;
    std::string line;
};

} // namespace oracle

#endif
