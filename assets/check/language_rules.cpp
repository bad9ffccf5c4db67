#include "assets/check/language_rules.h"

#include "display/font.h"
#include "gui/display.h"
#include "lang/languages.h"
#include "util/utf8_sequence.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <iterator>

namespace ostrel {

namespace {

// The lines of the boxed message: 130 pixels, of which 3 stay free at both ends, at size 17. The keyboard composes
// them with at most 59 characters.
constexpr int LINE_WIDTH = 124;
constexpr float LINE_SIZE = 17.0F;
constexpr size_t LINE_CHARACTERS = 59;

struct MessageLine {
    const char* key;
    const char* behind; // what the program adds, at its longest
};

constexpr const char* MESSAGES = "modal";
constexpr MessageLine MESSAGE_LINES[] = {
    {"less_than_6_l1", ""},     {"less_than_6_l2", " 179"}, {"less_than_6_l3", ""}, {"more_than_2_l1", ""},
    {"more_than_2_l2", " 179"}, {"more_than_2_l3", ""},     {"valid_ip_l1", ""},    {"valid_ip_l2", ""},
    {"valid_ip_l3", ""},        {"savingl1", ""},           {"savingl2", ""},       {"savingl3", ""},
};

std::string opening(const std::string& name) {
    return "<" + name + ">";
}

std::string codePoint(uint32_t value) {
    char text[16];
    std::snprintf(text, sizeof text, "U+%04X", value);
    return text;
}

// Calls `each` with every character of valid UTF-8 and returns the places of the bytes that are none.
template<typename Each>
std::vector<size_t> forEachCharacter(const std::string& text, Each each) {
    const auto* bytes = reinterpret_cast<const unsigned char*>(text.data());
    std::vector<size_t> invalid;
    for (size_t at = 0; at < text.size();) {
        const Utf8Sequence sequence = readUtf8(bytes + at, text.size() - at);
        if (isUnicode(sequence)) {
            each(sequence.value);
            at += sequence.length;
        } else {
            invalid.push_back(at++);
        }
    }
    return invalid;
}

std::wstring wide(const std::string& text) {
    std::wstring characters;
    forEachCharacter(text, [&](uint32_t value) { characters += static_cast<wchar_t>(value); });
    return characters;
}

class Check {
  public:
    Check(std::string filePath, const std::string& bytes)
        : path(std::move(filePath)), file(readLanguageFile(bytes)), findings(file.findings) {}

    std::vector<Finding> run(const std::vector<TextName>& reference) {
        checkLines();
        checkNames(reference);
        checkTags();
        for (const LanguageEntry& entry : file.entries)
            checkText(entry);
        std::stable_sort(findings.begin(), findings.end(), [](const Finding& left, const Finding& right) {
            return left.line < right.line;
        });
        return std::move(findings);
    }

  private:
    void find(size_t line, const std::string& key, const std::string& message) {
        findings.push_back({line, key, message});
    }

    void checkLines() {
        bool hasReturns = false;
        for (size_t i = 0; i < file.lines.size(); ++i) {
            const std::string& line = file.lines[i];
            for (const size_t place : forEachCharacter(line, [](uint32_t) {}))
                find(i + 1, "", "byte " + std::to_string(place + 1) + " of the line is not UTF-8");
            if (line.size() >= LANGUAGE_TEXT_LENGTH)
                find(
                    i + 1, "",
                    "the line has " + std::to_string(line.size()) + " bytes; from " +
                        std::to_string(int{LANGUAGE_TEXT_LENGTH}) + " on it is read in pieces");
            if (!hasReturns && line.find('\r') != std::string::npos) {
                hasReturns = true;
                find(i + 1, "", "line ends must be a line feed alone, without a carriage return");
            }
        }
    }

    void checkNames(const std::vector<TextName>& reference) {
        for (const LanguageEntry& entry : file.entries) {
            const LanguageEntry& first = firstOf(entry);
            if (first.line != entry.line)
                find(entry.line, entry.key, "doubled: line " + std::to_string(first.line) + " has it already");
            if (std::find(reference.begin(), reference.end(), TextName(entry.section, entry.key)) == reference.end())
                find(entry.line, entry.key, "unknown: no program asks for it in section " + entry.section);
        }
        for (const auto& [section, key] : reference)
            if (!isMentioned(section, key))
                find(lineOfSection(section), key, "missing from section " + section);
    }

    // There, or found wanting already: a text that is never closed is not missing as well.
    bool isMentioned(const std::string& section, const std::string& key) const {
        const bool isThere = std::any_of(file.entries.begin(), file.entries.end(), [&](const LanguageEntry& entry) {
            return entry.section == section && entry.key == key;
        });
        return isThere || std::any_of(file.findings.begin(), file.findings.end(), [&](const Finding& finding) {
                   return finding.key == key;
               });
    }

    const LanguageEntry& firstOf(const LanguageEntry& same) const {
        return *std::find_if(file.entries.begin(), file.entries.end(), [&](const LanguageEntry& entry) {
            return entry.section == same.section && entry.key == same.key;
        });
    }

    size_t lineOfSection(const std::string& name) const {
        const auto found =
            std::find_if(file.sections.begin(), file.sections.end(), [&](const LanguageSection& section) {
                return section.name == name;
            });
        return found == file.sections.end() ? file.lines.size() : found->first;
    }

    // A tag is looked for anywhere in a line, so it must not occur where it is not meant.
    void checkTags() {
        for (const LanguageEntry& entry : file.entries)
            if (firstOf(entry).line == entry.line)
                checkTagOf(entry);
        for (const LanguageSection& section : file.sections)
            for (size_t line = 1; line <= file.lines.size(); ++line) {
                const std::string& text = file.lines[line - 1];
                const bool isBefore = line < section.first && text.find(opening(section.name)) != std::string::npos;
                const bool isInside = line > section.first && line < section.last &&
                                      text.find("</" + section.name + ">") != std::string::npos;
                if (isBefore)
                    find(line, "", "contains " + opening(section.name) + ": the section would begin here");
                if (isInside)
                    find(line, "", "contains </" + section.name + ">: the section would end here");
            }
    }

    void checkTagOf(const LanguageEntry& entry) {
        for (const LanguageSection& section : file.sections) {
            if (section.name != entry.section)
                continue;
            for (size_t line = section.first + 1; line < section.last; ++line) {
                const bool isOwn =
                    std::any_of(file.entries.begin(), file.entries.end(), [&](const LanguageEntry& same) {
                        return same.line == line && same.key == entry.key;
                    });
                if (!isOwn && file.lines[line - 1].find(opening(entry.key)) != std::string::npos)
                    find(line, entry.key, "its tag occurs in this line, which belongs to another text");
            }
        }
    }

    void checkText(const LanguageEntry& entry) {
        const size_t before = findings.size();
        if (entry.text.empty())
            find(entry.line, entry.key, "the text is empty");
        if (entry.text.size() >= LANGUAGE_TEXT_LENGTH)
            find(
                entry.line, entry.key,
                "the text has " + std::to_string(entry.text.size()) + " bytes; it is cut after " +
                    std::to_string(LANGUAGE_TEXT_LENGTH - 1));
        checkGlyphs(entry);
        if (entry.section == MESSAGES)
            for (const MessageLine& line : MESSAGE_LINES)
                if (entry.key == line.key)
                    checkPlace(entry, line.behind);
        if (findings.size() == before)
            checkLookup(entry);
    }

    void checkGlyphs(const LanguageEntry& entry) {
        std::string missing;
        forEachCharacter(entry.text, [&](uint32_t value) {
            const bool splitsLines = value == '\n' && entry.section != MESSAGES;
            const bool isShown = value >= ' ' && findGlyph(value, 17 * 64).face != nullptr;
            const std::string name = codePoint(value);
            if (!splitsLines && !isShown && missing.find(name) == std::string::npos)
                missing += (missing.empty() ? "" : ", ") + name;
        });
        if (!missing.empty())
            find(entry.line, entry.key, "the font lacks " + missing);
    }

    void checkPlace(const LanguageEntry& entry, const char* behind) {
        std::wstring text = wide(entry.text + behind);
        const std::string addition = *behind == 0 ? "" : std::string(" with \"") + behind + "\" behind it";
        if (text.size() > LINE_CHARACTERS)
            find(
                entry.line, entry.key,
                std::to_string(text.size()) + " characters" + addition + "; a line takes " +
                    std::to_string(LINE_CHARACTERS));
        const int width = textWidth(text.data(), LINE_SIZE);
        if (width > LINE_WIDTH)
            find(
                entry.line, entry.key,
                std::to_string(width) + " pixels wide" + addition + "; the message box has " +
                    std::to_string(LINE_WIDTH));
    }

    // Last, the router's own lookup: whatever else stands in its way.
    void checkLookup(const LanguageEntry& entry) {
        if (firstOf(entry).line != entry.line)
            return;
        ret[0] = 0;
        if (lang.getvalue(path.c_str(), entry.key.c_str(), entry.section.c_str()) == nullptr)
            return;
        if (entry.text != ret)
            find(entry.line, entry.key, "is found as \"" + std::string(ret) + "\"");
    }

    std::string path;
    LanguageFile file;
    std::vector<Finding> findings;
};

} // namespace

std::vector<TextName> toolkitTexts() {
    std::vector<TextName> names = {{"language", "name"}};
    for (const MessageLine& line : MESSAGE_LINES)
        names.emplace_back(MESSAGES, line.key);
    return names;
}

std::vector<Finding>
checkLanguageFile(const std::string& path, const std::string& bytes, const std::vector<TextName>& reference) {
    return Check(path, bytes).run(reference);
}

} // namespace ostrel
