// Any format, made to take the arguments that are there, against a formatter of standard streams and strings.
#include "util/wide_format.h"
#include "tests/support/utf8_oracle.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <sstream>
#include <string>

namespace {

// The arguments of every call, in this order.
struct Values {
    std::string bytes;
    std::wstring wide;
    int number;
    double fraction;
    long large;
    wint_t character;
};
constexpr char KINDS[] = "swifli";
constexpr size_t SLOTS = sizeof KINDS - 1;

// UTF-8 as the standard has it, by trying: a sequence that decodes to one character and is how that is encoded.
std::wstring decoded(const std::string& text) {
    std::wstring characters;
    for (size_t at = 0; at < text.size();) {
        size_t taken = 1;
        for (size_t length = 1; length <= 4 && at + length <= text.size(); ++length) {
            wchar_t character = 0;
            char again[6];
            if (oracle::decode(text.data() + at, length, &character, 1, 0) == 1 && character <= 0x10FFFF &&
                oracle::encode(&character, 1, again, sizeof again, 0) == length) {
                characters += character;
                taken = length;
                break;
            }
        }
        at += taken;
    }
    return characters;
}

template<typename Value>
std::wstring streamed(Value value, bool isHexadecimal = false) {
    std::wostringstream stream;
    stream << (isHexadecimal ? std::hex : std::dec) << std::fixed;
    stream.precision(2);
    stream << value;
    return stream.str();
}

std::wstring converted(wchar_t letter, bool isLong, size_t slot, const Values& values) {
    if (letter == L's')
        return isLong ? values.wide : decoded(values.bytes);
    if (letter == L'f')
        return streamed(values.fraction);
    if (isLong && KINDS[slot] == 'l')
        return letter == L'd' ? streamed(static_cast<int32_t>(values.large))
                              : streamed(static_cast<uint32_t>(values.large));
    const uint32_t value = slot == 2 ? static_cast<uint32_t>(values.number) : values.character;
    if (letter == L'c' && isLong)
        return value == 0 ? std::wstring() : std::wstring(1, static_cast<wchar_t>(value));
    if (letter == L'c')
        return (value & 0xFF) == 0 || (value & 0xFF) > 0x7F ? std::wstring()
                                                            : std::wstring(1, static_cast<wchar_t>(value & 0xFF));
    if (letter == L'd')
        return streamed(static_cast<int32_t>(value));
    return streamed(value, letter != L'u');
}

char kindOf(wchar_t letter, bool isLong) {
    if (letter == L'c' || letter == L'x' || letter == L'X')
        return 'i';
    if (letter == L'd' || letter == L'u')
        return isLong ? 'l' : 'i';
    if (letter == L's')
        return isLong ? 'w' : 's';
    return letter == L'f' ? 'f' : '\0';
}

// What the format gives. A conversion whose argument is not the next one becomes an unknown one.
std::wstring expected(std::wstring& format, const Values& values) {
    std::wstring text;
    size_t slot = 0;
    for (size_t at = 0; at < format.size();) {
        if (format[at] != L'%' || format[at + 1] == L'%') {
            text += format[at];
            at += format[at] == L'%' ? 2 : 1;
            continue;
        }
        const bool isLong = format[at + 1] == L'l';
        at += isLong || format[at + 1] == L'h' ? 2 : 1;
        if (at >= format.size())
            break;
        const char kind = kindOf(format[at], isLong);
        if (kind != 0 && slot < SLOTS && kind == KINDS[slot])
            text += converted(format[at], isLong, slot++, values);
        else if (kind != 0)
            format[at] = L'q';
        ++at;
    }
    return text;
}

// Takes what it can of the input; zeros where that has ended.
template<typename Value>
Value take(const uint8_t*& data, size_t& size) {
    Value value = {};
    const size_t length = size < sizeof value ? size : sizeof value;
    std::memcpy(&value, data, length);
    data += length;
    size -= length;
    return value;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size > 1000)
        return 0;
    const auto formatLength = take<uint8_t>(data, size);
    const auto bufferSize = take<uint8_t>(data, size);
    Values values = {};
    values.number = take<int>(data, size);
    values.fraction = take<double>(data, size);
    values.large = take<long>(data, size);
    values.character = take<wint_t>(data, size);
    std::wstring format;
    for (size_t i = 0; i < formatLength && size > 0; ++i)
        if (const auto letter = take<uint8_t>(data, size))
            format += static_cast<wchar_t>(letter);
    values.bytes.assign(reinterpret_cast<const char*>(data), size);
    values.bytes = values.bytes.substr(0, values.bytes.find('\0'));
    values.wide = decoded(values.bytes);

    const std::wstring text = expected(format, values);
    const size_t longest = text.size() > bufferSize ? text.size() : bufferSize;
    std::wstring buffer(longest + 5, L'#');
    std::wstring wanted = buffer;
    wanted.replace(0, size_t{bufferSize} + 1, size_t{bufferSize} + 1, L'\0');
    wanted.replace(0, text.size() + 1, text.c_str(), text.size() + 1);
    wanted[bufferSize] = 0;
    int (*const print)(wchar_t*, int, wchar_t*, ...) = aswprintf;
    print(
        buffer.data(), bufferSize, format.data(), values.bytes.c_str(), values.wide.c_str(), values.number,
        values.fraction, values.large, values.character);
    if (buffer != wanted)
        std::abort();
    return 0;
}
