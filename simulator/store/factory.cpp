#include "simulator/store/escaped.h"
#include "simulator/store/power_on.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <memory>

namespace ostrel {
namespace {

struct Text {
    char bytes[STORE_SIZE];
};

// "name=value" in `line`: null, or what is wrong with it.
const char* readSetting(const std::string& line, char (&name)[SETTING_SIZE], char (&value)[SETTING_SIZE]) {
    const std::string ended = line + '\n';
    const size_t sign = readEscaped(ended.data(), ended.size(), 0, '=', name);
    if (sign == ended.size())
        return "neither name=value, a [section] nor a comment";
    if (sign == 0)
        return "the name is missing";
    if (readEscaped(ended.data(), ended.size(), sign + 1, '\n', value) == ended.size())
        return "the value is too long or holds a character that has to be escaped";
    return nullptr;
}

// Adds one line to the section's text; null, or what is wrong with the line.
const char* addLine(const std::string& line, Text& text, size_t& size) {
    char name[SETTING_SIZE];
    char value[SETTING_SIZE];
    char earlier[SETTING_SIZE];
    const char* const problem = readSetting(line, name, value);
    if (problem != nullptr)
        return problem;
    if (findSetting(text.bytes, size, name, earlier))
        return "the setting is given twice";
    const auto changed = std::make_unique<Text>();
    size = putSetting(text.bytes, size, name, value, changed->bytes);
    if (size == 0)
        return "the section is full";
    memcpy(text.bytes, changed->bytes, size);
    return nullptr;
}

std::string headOf(Section section) {
    return std::string("[") + sectionName(section) + "]";
}

bool isKnownSection(const std::string& line) {
    return std::any_of(
        std::begin(SECTIONS), std::end(SECTIONS), [&](Section section) { return line == headOf(section); });
}

} // namespace

size_t
readFactory(const std::string& factory, Section section, char (&text)[STORE_SIZE], std::vector<std::string>& messages) {
    std::ifstream file(factory);
    if (!file) {
        messages.push_back("The factory settings " + factory + " cannot be read: " + strerror(errno) + ".");
        return 0;
    }
    const auto content = std::make_unique<Text>();
    size_t size = emptyStore(section, content->bytes);
    const std::string wanted = headOf(section);
    std::string current;
    std::string line;
    for (int number = 1; std::getline(file, line); ++number) {
        const char* problem = nullptr;
        if (line.empty() || line[0] == '#')
            continue;
        if (line[0] == '[')
            problem = isKnownSection(current = line) ? nullptr : "there is no such section";
        else if (current.empty())
            problem = "a setting before the first [section]";
        else if (current == wanted)
            problem = addLine(line, *content, size);
        if (problem != nullptr) {
            messages.push_back(
                "The factory settings are wrong in " + factory + ", line " + std::to_string(number) + ": " + problem +
                ".");
            return 0;
        }
    }
    memcpy(text, content->bytes, size);
    return size;
}

} // namespace ostrel
