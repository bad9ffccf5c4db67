// A language file as its author means it: sections of entries, with the lines they stand on. Reading it finds what is
// wrong with its form; language_rules.h looks at what it says.
#ifndef OSTREL_ASSETS_CHECK_LANGUAGE_FILE_H
#define OSTREL_ASSETS_CHECK_LANGUAGE_FILE_H

#include <string>
#include <vector>

namespace ostrel {

// Something to put right. Lines count from 1; an empty key concerns the line as a whole.
struct Finding {
    size_t line;
    std::string key;
    std::string message;
};

struct LanguageEntry {
    std::string section;
    std::string key;
    std::string text;
    size_t line; // of the opening tag
};

struct LanguageSection {
    std::string name;
    size_t first; // line of the opening tag
    size_t last;  // line of the closing tag, or the file's last one
};

struct LanguageFile {
    std::vector<std::string> lines; // with their line ends
    std::vector<LanguageSection> sections;
    std::vector<LanguageEntry> entries; // in the file's order, doubled ones too
    std::vector<Finding> findings;
};

LanguageFile readLanguageFile(const std::string& bytes);

} // namespace ostrel

#endif
