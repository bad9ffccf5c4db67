// Which languages the router has, and the texts of each.
#ifndef OSTREL_APPS_LANGUAGE_INSTALLED_H
#define OSTREL_APPS_LANGUAGE_INSTALLED_H

#include <string>
#include <vector>

struct InstalledLanguage {
    std::string setting; // what the setting "Language" holds: the file's name without ".xml"
    std::string path;    // of the file
    std::wstring name;   // the language's own name for itself
};

// The languages whose files lie in `directory`, sorted by their own names. Left out is what cannot be chosen: a file
// that cannot be read or has no name for its language, and one whose own name is too long for the setting.
std::vector<InstalledLanguage> installedLanguages(const std::string& directory);

// A text of a language's file, or `otherwise` when the file lacks it or cannot be read.
std::wstring languageText(const std::string& path, const char* key, const char* section, const wchar_t* otherwise);

#endif
