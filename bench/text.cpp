// Texts and numbers, each row beside a peer of the C or C++ library that does the same.
#include "lang/languages.h"
#include "util/number.h"
#include "util/utf8.h"
#include "util/wide_format.h"

#include <benchmark/benchmark.h>
#include <charconv>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <iconv.h>
#include <string>
#include <unistd.h>

namespace {

// The inputs of a row: which text, and how many bytes of it.
const char* const ASCII = "The quick brown fox jumps over the lazy dog, 0123456789 times. ";
const char* const GERMAN =
    "Bitte wählen Sie ein Netz und geben Sie das Kennwort ein, das auf der Rückseite des Geräts steht. ";
const char* const GREEK = "Ξεσκεπάζω την ψυχοφθόρα βδελυγμία. Ρυθμίσεις δικτύου και οθόνης. ";

// At least `bytes` bytes that end with a whole character.
std::string textOf(const char* sample, size_t bytes) {
    std::string text;
    while (text.size() < bytes)
        text += sample;
    while ((text[bytes] & 0xC0) == 0x80)
        ++bytes;
    return text.substr(0, bytes);
}

void utf8(benchmark::State& state, const char* sample) {
    const std::string text = textOf(sample, static_cast<size_t>(state.range(0)));
    wchar_t out[300];
    for (auto _ : state) {
        benchmark::DoNotOptimize(text.data());
        benchmark::DoNotOptimize(utf8_to_wchar(text.data(), text.size(), out, 300, UTF8_DROP_INVALID));
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(text.size()));
}

void libraryMbstowcs(benchmark::State& state, const char* sample) {
    if (std::setlocale(LC_CTYPE, "C.UTF-8") == nullptr)
        state.SkipWithError("no UTF-8 locale");
    const std::string text = textOf(sample, static_cast<size_t>(state.range(0)));
    wchar_t out[300];
    for (auto _ : state) {
        benchmark::DoNotOptimize(text.data());
        benchmark::DoNotOptimize(std::mbstowcs(out, text.c_str(), 300));
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(text.size()));
}

void libraryIconv(benchmark::State& state, const char* sample) {
    const std::string text = textOf(sample, static_cast<size_t>(state.range(0)));
    iconv_t converter = iconv_open("WCHAR_T", "UTF-8");
    wchar_t out[300];
    for (auto _ : state) {
        auto* in = const_cast<char*>(text.data());
        size_t inLeft = text.size();
        auto* to = reinterpret_cast<char*>(out);
        size_t outLeft = sizeof out;
        benchmark::DoNotOptimize(iconv(converter, &in, &inLeft, &to, &outLeft));
        benchmark::ClobberMemory();
    }
    iconv_close(converter);
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(text.size()));
}

#define CONVERSION_ROWS(sample)                                                                                        \
    BENCHMARK_CAPTURE(utf8, sample, sample)->Arg(16)->Arg(64)->Arg(255);                                               \
    BENCHMARK_CAPTURE(libraryMbstowcs, sample, sample)->Arg(16)->Arg(64)->Arg(255);                                    \
    BENCHMARK_CAPTURE(libraryIconv, sample, sample)->Arg(16)->Arg(64)->Arg(255)
CONVERSION_ROWS(ASCII);
CONVERSION_ROWS(GERMAN);
CONVERSION_ROWS(GREEK);

// Numbers of every length in an order that cannot be foreseen.
constexpr int NUMBERS[] = {7,          -42, 2024, 192,   65535, -1,  1000000, 30,
                           2147483647, 5,   -273, 86400, 12,    179, 320,     99999999};

template<typename Convert>
void numbers(benchmark::State& state, Convert convert) {
    char out[64];
    for (auto _ : state)
        for (const int number : NUMBERS) {
            convert(number, out);
            benchmark::DoNotOptimize(out);
            benchmark::ClobberMemory();
        }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(std::size(NUMBERS)));
}
BENCHMARK_CAPTURE(numbers, itoa, [](int number, char* out) { itoa(number, out); });
BENCHMARK_CAPTURE(numbers, toChars, [](int number, char* out) { *std::to_chars(out, out + 16, number).ptr = 0; });
BENCHMARK_CAPTURE(numbers, snprintf, [](int number, char* out) { std::snprintf(out, 16, "%d", number); });
BENCHMARK_CAPTURE(numbers, utoxa, [](int number, char* out) { utoxa(static_cast<unsigned>(number), out); });
BENCHMARK_CAPTURE(numbers, toCharsHexadecimal, [](int number, char* out) {
    *std::to_chars(out, out + 16, static_cast<unsigned>(number), 16).ptr = 0;
});
BENCHMARK_CAPTURE(numbers, dtoa, [](int number, char* out) { dtoa(number / 100.0, out); });
BENCHMARK_CAPTURE(numbers, snprintfTwoDecimals, [](int number, char* out) {
    std::snprintf(out, 64, "%.2f", number / 100.0);
});

void formatMessage(benchmark::State& state) {
    wchar_t line[64];
    for (auto _ : state) {
        aswprintf(line, 59, L"%ls %d", L"Maximum length:", 179);
        benchmark::DoNotOptimize(line);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(formatMessage);

void formatMessageBySwprintf(benchmark::State& state) {
    wchar_t line[64];
    for (auto _ : state) {
        std::swprintf(line, 60, L"%ls %d", L"Maximum length:", 179);
        benchmark::DoNotOptimize(line);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(formatMessageBySwprintf);

void formatBytes(benchmark::State& state) {
    wchar_t line[180];
    for (auto _ : state) {
        aswprintf(line, 179, L"%hs", "The password of the network");
        benchmark::DoNotOptimize(line);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(formatBytes);

void formatBytesBySwprintf(benchmark::State& state) {
    wchar_t line[180];
    for (auto _ : state) {
        std::swprintf(line, 180, L"%hs", "The password of the network");
        benchmark::DoNotOptimize(line);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(formatBytesBySwprintf);

// A language file of 500 keys.
class LargeFile {
  public:
    LargeFile() {
        const int file = mkstemp(name);
        std::string text = "<modal>\n";
        for (int i = 0; i < 500; ++i) {
            const std::string key = "message_" + std::to_string(i);
            text.append("<").append(key).append(">Text number ").append(std::to_string(i));
            text.append(", as long as a line of a message</").append(key).append(">\n");
        }
        text += "</modal>\n";
        if (file < 0 || write(file, text.data(), text.size()) != static_cast<ssize_t>(text.size()))
            std::abort();
        close(file);
    }
    ~LargeFile() { unlink(name); }
    LargeFile(const LargeFile&) = delete;
    LargeFile& operator=(const LargeFile&) = delete;

    const char* path() const { return name; }

  private:
    char name[40] = "/tmp/ostrel-bench-language-XXXXXX";
};

void lookUp(benchmark::State& state, const char* key) {
    const LargeFile file;
    for (auto _ : state)
        benchmark::DoNotOptimize(lang.getvalue(file.path(), key, "modal"));
    if (std::wcsncmp(wret, L"Text number", 11) != 0)
        state.SkipWithError("not found");
}
BENCHMARK_CAPTURE(lookUp, firstOf500, "message_0");
BENCHMARK_CAPTURE(lookUp, lastOf500, "message_499");

void readTheSameFileByLines(benchmark::State& state) {
    const LargeFile file;
    char line[LANGUAGE_TEXT_LENGTH];
    for (auto _ : state) {
        std::FILE* const opened = std::fopen(file.path(), "r");
        while (std::fgets(line, sizeof line, opened) != nullptr)
            benchmark::DoNotOptimize(line);
        std::fclose(opened);
    }
}
BENCHMARK(readTheSameFileByLines);

} // namespace
