#include "apps/language/installed.h"

#include "apps/language/name_order.h"

#include <algorithm>
#include <filesystem>
#include <ostrel.h>

namespace {

namespace fs = std::filesystem;

// Bytes of a file's name without ".xml": "/ostrel/NAME.xml" and its terminator must fit where the toolkit keeps them.
constexpr size_t LONGEST_SETTING = LANGUAGE_NAME_LENGTH - sizeof "/ostrel/.xml";

bool isBlankOrControl(wchar_t character) {
    return character <= L' ' || character == 0x7F || character == 0xA0;
}

// A name for one line: a tab would split a row's label, and blanks around it would misplace it.
std::wstring onOneLine(std::wstring name) {
    const auto isShown = [](wchar_t character) { return !isBlankOrControl(character); };
    name.erase(name.begin(), std::find_if(name.begin(), name.end(), isShown));
    name.erase(std::find_if(name.rbegin(), name.rend(), isShown).base(), name.end());
    std::replace_if(name.begin(), name.end(), isBlankOrControl, L' ');
    return name;
}

bool isLanguageFile(const fs::directory_entry& entry) {
    std::error_code error;
    const std::string setting = entry.path().stem().string();
    return entry.path().extension() == ".xml" && setting[0] != '.' && setting.size() <= LONGEST_SETTING &&
           entry.is_regular_file(error);
}

} // namespace

std::wstring languageText(const std::string& path, const char* key, const char* section, const wchar_t* otherwise) {
    ret[0] = 0; // or a missing key would give the text of the lookup before
    const wchar_t* const text = lang.getvalue(path.c_str(), key, section);
    return text == nullptr || std::wcscmp(text, L"<NOTAG>") == 0 ? otherwise : text;
}

std::vector<InstalledLanguage> installedLanguages(const std::string& directory) {
    std::vector<InstalledLanguage> languages;
    std::error_code error;
    for (fs::directory_iterator entry(directory, error), end; !error && entry != end; entry.increment(error)) {
        if (!isLanguageFile(*entry))
            continue;
        const std::string path = entry->path().string();
        const std::wstring name = onOneLine(languageText(path, "name", "language", L""));
        if (!name.empty())
            languages.push_back({entry->path().stem().string(), path, name});
    }
    std::sort(languages.begin(), languages.end(), [](const InstalledLanguage& left, const InstalledLanguage& right) {
        if (left.name != right.name)
            return comesBefore(left.name, right.name);
        return left.setting < right.setting;
    });
    return languages;
}
