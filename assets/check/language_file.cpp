#include "assets/check/language_file.h"

#include <optional>

namespace ostrel {

namespace {

constexpr const char* BLANKS = " \t\r\n";

// Wraps the whole file, for editors that want XML to have one outermost element. Means nothing.
constexpr const char* WRAPPER = "texts";

struct FoundTag {
    std::string name;
    size_t begin;
    size_t end; // behind the ">"
    bool isClosing;
};

std::optional<FoundTag> findTag(const std::string& line, size_t from) {
    for (size_t begin = line.find('<', from); begin != std::string::npos; begin = line.find('<', begin + 1)) {
        const bool isClosing = line.compare(begin + 1, 1, "/") == 0;
        const size_t name = begin + (isClosing ? 2 : 1);
        const size_t end =
            line.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_.-", name);
        if (end != std::string::npos && end > name && line[end] == '>')
            return FoundTag{line.substr(name, end - name), begin, end + 1, isClosing};
    }
    return std::nullopt;
}

bool isBlank(const std::string& text) {
    return text.find_first_not_of(BLANKS) == std::string::npos;
}

class Reader {
  public:
    explicit Reader(const std::string& bytes) {
        for (size_t begin = 0; begin < bytes.size();) {
            const size_t end = bytes.find('\n', begin);
            const size_t next = end == std::string::npos ? bytes.size() : end + 1;
            result.lines.push_back(bytes.substr(begin, next - begin));
            begin = next;
        }
    }

    LanguageFile read() {
        for (at = 0; at < result.lines.size(); ++at) {
            if (skipComment())
                continue;
            if (section.empty())
                readOutside();
            else
                readInside();
        }
        if (!section.empty())
            find(result.sections.back().first, "", "the section <" + section + "> is never closed");
        return std::move(result);
    }

  private:
    const std::string& line() const { return result.lines[at]; }

    void find(size_t lineNumber, const std::string& key, const std::string& message) {
        result.findings.push_back({lineNumber, key, message});
    }

    // Comments and declarations that begin a line. One that goes on over several lines is skipped whole.
    bool skipComment() {
        const size_t begin = line().find_first_not_of(BLANKS);
        if (begin == std::string::npos || line().compare(begin, 2, "<?") == 0)
            return true;
        if (line().compare(begin, 4, "<!--") != 0)
            return false;
        while (line().find("-->") == std::string::npos && at + 1 < result.lines.size())
            ++at;
        return true;
    }

    void readOutside() {
        const std::optional<FoundTag> tag = findTag(line(), 0);
        if (!tag) {
            find(at + 1, "", "text outside of a section");
            return;
        }
        if (tag->name == WRAPPER)
            return;
        if (tag->isClosing) {
            find(at + 1, "", "</" + tag->name + "> closes nothing");
            return;
        }
        section = tag->name;
        result.sections.push_back({section, at + 1, result.lines.size()});
        if (!isBlank(line().substr(tag->end)))
            find(at + 1, "", "nothing behind <" + section + "> on its own line is found");
    }

    void readInside() {
        const std::optional<FoundTag> tag = findTag(line(), 0);
        if (!tag || !isBlank(line().substr(0, tag->begin)))
            find(at + 1, "", "text outside of an entry");
        if (!tag)
            return;
        if (tag->isClosing) {
            if (tag->name != section) {
                find(at + 1, "", "</" + tag->name + "> closes nothing");
                return;
            }
            result.sections.back().last = at + 1;
            section.clear();
            return;
        }
        readEntry(*tag);
    }

    void readEntry(const FoundTag& tag) {
        const std::string closing = "</" + tag.name + ">";
        LanguageEntry entry = {section, tag.name, line().substr(tag.end), at + 1};
        const size_t end = entry.text.find(closing);
        if (end != std::string::npos) {
            if (!isBlank(entry.text.substr(end + closing.size())))
                find(at + 1, tag.name, "nothing behind " + closing + " on its line is found");
            entry.text.resize(end);
        } else if (!gatherLines(closing, entry)) {
            find(at + 1, tag.name, "<" + tag.name + "> is never closed");
            return;
        }
        result.entries.push_back(entry);
    }

    // The lines of a text that goes on behind its first one. False, and nothing passed over, when it is not closed
    // before its section is.
    bool gatherLines(const std::string& closing, LanguageEntry& entry) {
        const std::string sectionClosing = "</" + section + ">";
        std::string text = entry.text;
        for (size_t next = at + 1; next < result.lines.size(); ++next) {
            const std::string& more = result.lines[next];
            const size_t end = more.find(closing);
            if (end == std::string::npos) {
                if (more.find(sectionClosing) != std::string::npos)
                    return false;
                text += more;
                continue;
            }
            if (more.substr(end) != closing + "\n")
                find(next + 1, entry.key, "the last line of a text must end with " + closing + " and the line end");
            entry.text = text + more.substr(0, end);
            at = next;
            return true;
        }
        return false;
    }

    LanguageFile result;
    size_t at = 0;       // the line being read, from 0
    std::string section; // empty: outside of sections
};

} // namespace

LanguageFile readLanguageFile(const std::string& bytes) {
    return Reader(bytes).read();
}

} // namespace ostrel
