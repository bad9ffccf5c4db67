// Any bytes as a language file: both lookups, held to their rules spelled out.
#include "tests/support/language_file.h"
#include "lang/languages.h"
#include "settings/memory.h"
#include "tests/support/language_oracle.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>

// Compiled here in place of the settings: no device is asked.
Languages lang;
Memory::~Memory() = default;
void Memory::getSetting(char*, char* value) {
    *value = 0;
}

namespace {

constexpr const char* SECTION = "s";

void compare(const std::string& contents, size_t lineSize, const char* path, const char* key) {
    const std::string before = ret;
    const std::string expected = oracle::LanguageLookup(contents, lineSize).find(key, SECTION, before);
    const wchar_t* const text =
        lineSize == LANGUAGE_TEXT_LENGTH ? lang.getvalue(path, key, SECTION) : getLangvalue(path, key, SECTION);
    if (text != wret || ret != expected)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string contents(reinterpret_cast<const char*>(data), size);
    LanguageTextFile file(contents);
    const std::string path = file.path();
    std::memset(ret, 0, LANGUAGE_TEXT_LENGTH);
    for (const char* key : {"k", "key"}) {
        compare(contents, LANGUAGE_TEXT_LENGTH, path.c_str(), key);
        compare(contents, 1024, path.c_str(), key);
    }
    return 0;
}
