// ostrel-check-languages: tells translators, by file, line and key, what is to be put right in language files.
#include "assets/check/language_rules.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>

using namespace ostrel;

namespace {

constexpr int PUT_RIGHT = 1; // exit statuses
constexpr int NOT_CHECKED = 2;

const char* const USAGE = R"(usage: ostrel-check-languages [FILE...]

Checks language files, all of the installed ones when none is named, and tells
by file, line and key what is to be put right: texts that are missing, unknown,
doubled, never closed, cut, too wide for the message box, without glyphs, or
hidden by other lines. Each is compared with the english.xml beside it.

Exit status: 0 nothing to put right, 1 something, 2 not checked.
)";

// The folder that lands under /ostrel: of an installation, else of the build.
std::filesystem::path assetsFolder() {
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe").parent_path().parent_path();
    const std::filesystem::path installed = program / "share" / "ostrel";
    return std::filesystem::exists(installed / "english.xml") ? installed : program / "ostrel";
}

bool readFile(const std::filesystem::path& path, std::string& bytes) {
    std::ifstream file(path, std::ios::binary);
    bytes.assign(std::istreambuf_iterator<char>(file), {});
    return file.good() && !std::filesystem::is_directory(path);
}

// What the toolkit needs and what the programs' authors wrote into the language that all others come from.
std::vector<TextName> referenceFor(const std::filesystem::path& path, const std::filesystem::path& assets) {
    std::vector<TextName> names = toolkitTexts();
    std::string bytes;
    if (!readFile(path.parent_path() / "english.xml", bytes) && !readFile(assets / "english.xml", bytes))
        return names;
    for (const LanguageEntry& entry : readLanguageFile(bytes).entries) {
        const TextName name(entry.section, entry.key);
        const bool isToolkits = std::any_of(names.begin(), names.end(), [&](const TextName& known) {
            return known.first == entry.section && (known.first == "modal" || known == name);
        });
        if (!isToolkits)
            names.push_back(name);
    }
    return names;
}

std::vector<std::filesystem::path> languagesIn(const std::filesystem::path& folder) {
    std::vector<std::filesystem::path> files;
    std::error_code none;
    for (const auto& item : std::filesystem::directory_iterator(folder, none))
        if (item.path().extension() == ".xml")
            files.push_back(item.path());
    std::sort(files.begin(), files.end());
    return files;
}

int check(const std::filesystem::path& path, const std::filesystem::path& assets) {
    std::string bytes;
    if (!readFile(path, bytes)) {
        std::fprintf(stderr, "%s: cannot be read: %s\n", path.c_str(), std::strerror(errno));
        return NOT_CHECKED;
    }
    const std::vector<Finding> findings = checkLanguageFile(path, bytes, referenceFor(path, assets));
    for (const Finding& finding : findings)
        std::printf(
            "%s:%zu: %s%s%s\n", path.c_str(), finding.line, finding.key.c_str(), finding.key.empty() ? "" : ": ",
            finding.message.c_str());
    return findings.empty() ? 0 : PUT_RIGHT;
}

} // namespace

int main(int count, char** arguments) {
    const std::filesystem::path assets = assetsFolder();
    setenv("OSTREL_FONT_DIR", (assets / "fonts").c_str(), 0);
    std::vector<std::filesystem::path> files(arguments + 1, arguments + count);
    if (!files.empty() && files[0].native().compare(0, 1, "-") == 0) {
        const bool asked = files[0] == "--help";
        std::fputs(USAGE, asked ? stdout : stderr);
        return asked ? 0 : NOT_CHECKED;
    }
    if (files.empty())
        files = languagesIn(assets);
    if (files.empty()) {
        std::fprintf(stderr, "%s: no language files\n", assets.c_str());
        return NOT_CHECKED;
    }
    int status = 0;
    for (const std::filesystem::path& file : files)
        status = std::max(status, check(file, assets));
    if (status == 0)
        std::printf("%zu language files, nothing to put right\n", files.size());
    return status;
}
