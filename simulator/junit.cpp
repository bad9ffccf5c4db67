#include "simulator/junit.h"

#include "simulator/failure.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <fcntl.h>

namespace ostrel {
namespace {

constexpr const char* REPLACEMENT = "\xEF\xBF\xBD";

// How many bytes the character at `at` has, and which it is; 0 bytes when there is none.
size_t decode(const std::string& text, size_t at, uint32_t& character) {
    const auto byte = [&](size_t index) { return static_cast<unsigned char>(text[index]); };
    const unsigned first = byte(at);
    const size_t size = first < 0x80   ? 1
                        : first < 0xC2 ? 0
                        : first < 0xE0 ? 2
                        : first < 0xF0 ? 3
                        : first < 0xF5 ? 4
                                       : 0;
    if (size == 0 || at + size > text.size())
        return 0;
    character = size == 1 ? first : first & (0x7FU >> size);
    for (size_t i = 1; i < size; ++i) {
        if ((byte(at + i) & 0xC0U) != 0x80)
            return 0;
        character = character << 6 | (byte(at + i) & 0x3FU);
    }
    constexpr uint32_t LEAST[] = {0, 0, 0x80, 0x800, 0x10000};
    return character >= LEAST[size] ? size : 0;
}

bool isXml(uint32_t character) {
    return (character >= 0x20 && character < 0xD800) || (character >= 0xE000 && character < 0xFFFE) ||
           (character >= 0x10000 && character < 0x110000);
}

std::string escaped(const std::string& text) {
    std::string result;
    for (size_t at = 0; at < text.size();) {
        uint32_t character = 0;
        const size_t size = decode(text, at, character);
        switch (size == 0 ? 0 : character) {
        case '&':
            result += "&amp;";
            break;
        case '<':
            result += "&lt;";
            break;
        case '>':
            result += "&gt;";
            break;
        case '"':
            result += "&quot;";
            break;
        case '\t':
        case '\n':
        case '\r': // as they are they would become blanks
            result += "&#" + std::to_string(character) + ";";
            break;
        default:
            result += size > 0 && isXml(character) ? text.substr(at, size) : REPLACEMENT;
        }
        at += std::max<size_t>(size, 1);
    }
    return result;
}

std::string attribute(const char* name, const std::string& value) {
    return std::string(" ") + name + "=\"" + escaped(value) + "\"";
}

std::string inSeconds(double seconds) {
    char text[32];
    snprintf(text, sizeof text, "%.3f", std::max(seconds, 0.0));
    return text;
}

std::string caseText(const std::string& suite, const Check& check) {
    const std::string begin = "  <testcase" + attribute("classname", suite) + attribute("name", check.name) +
                              attribute("time", inSeconds(check.seconds));
    if (check.outcome == Outcome::Passed)
        return begin + "/>\n";
    const std::string what = check.outcome == Outcome::NotReached
                                 ? "<skipped message=\"not reached\"/>"
                                 : "<failure" + attribute("message", check.message) + "/>";
    return begin + ">\n    " + what + "\n  </testcase>\n";
}

} // namespace

std::string junitText(const std::string& suite, double seconds, const std::vector<Check>& checks) {
    const auto count = [&](Outcome outcome) {
        return std::to_string(
            std::count_if(checks.begin(), checks.end(), [=](const Check& check) { return check.outcome == outcome; }));
    };
    const std::string counts = attribute("tests", std::to_string(checks.size())) +
                               attribute("failures", count(Outcome::Failed)) + attribute("errors", "0");
    const std::string time = attribute("time", inSeconds(seconds));
    std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites" + counts + time + ">\n<testsuite" +
                       attribute("name", suite) + counts + attribute("skipped", count(Outcome::NotReached)) + time +
                       ">\n";
    for (const Check& check : checks)
        text += caseText(suite, check);
    return text + "</testsuite>\n</testsuites>\n";
}

JunitFile::JunitFile(const std::string& file)
    : name(file), file(open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666)) {
    if (!this->file.isOpen())
        throw writeFailure("the test results " + name);
}

void JunitFile::write(const std::string& text) {
    for (size_t done = 0; done < text.size();) {
        const ssize_t count = ::write(file.get(), text.data() + done, text.size() - done);
        if (count <= 0)
            throw writeFailure("the test results " + name);
        done += static_cast<size_t>(count);
    }
}

} // namespace ostrel
