// What drawing costs, on a panel that is a file, beside memset and memcpy of the panel's bytes.
#include "gui/display.h"
#include "display/panel.h"
#include "tests/support/picture.h"

#include <benchmark/benchmark.h>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <unistd.h>
#include <vector>

using namespace ostrel;

namespace {

constexpr size_t PANEL_BYTES = size_t{PANEL_WIDTH} * PANEL_HEIGHT * 2;

// The panel of all rows; opened by the first.
void usePanelFile() {
    static const bool isOpen = [] {
        char name[] = "/tmp/ostrel-bench-XXXXXX";
        const int file = mkstemp(name);
        const bool isSized = ftruncate(file, PANEL_BYTES) == 0;
        close(file);
        setenv("OSTREL_FRAMEBUFFER", name, 1);
        setenv("OSTREL_FONT_DIR", OSTREL_STAGED_FONTS, 1);
        libOstrelGuiInit();
        unlink(name);
        return isSized;
    }();
    if (!isOpen)
        std::abort();
}

// Four header images of 35x35 pixels, their round rims half transparent.
ImagePNG& headerImages() {
    static ImagePNG* const images = [] {
        auto* const store = new ImagePNG;
        char name[] = "/tmp/ostrel-bench-image-XXXXXX";
        close(mkstemp(name));
        Picture picture = blankPicture(35, 35, 0x057D);
        for (int i = 0; i < 4; ++i) {
            picture.at(i, 0) = 0;
            writePicture(picture, name);
            store->loadPNG(name);
        }
        unlink(name);
        return store;
    }();
    return *images;
}

void memsetOfThePanelsBytes(benchmark::State& state) {
    std::vector<uint8_t> bytes(PANEL_BYTES);
    int value = 0;
    for (auto _ : state) {
        memset(bytes.data(), ++value & 0xFF, bytes.size());
        benchmark::ClobberMemory();
    }
}
BENCHMARK(memsetOfThePanelsBytes);

void memcpyOfThePanelsBytes(benchmark::State& state) {
    std::vector<uint8_t> from(PANEL_BYTES);
    std::vector<uint8_t> to(PANEL_BYTES);
    for (auto _ : state) {
        memcpy(to.data(), from.data(), to.size());
        benchmark::ClobberMemory();
    }
}
BENCHMARK(memcpyOfThePanelsBytes);

void fullFillOfTheShadow(benchmark::State& state) {
    usePanelFile();
    int colour = 0;
    for (auto _ : state) {
        fill(panelCanvas(), {0, 0, 320, 240}, colourOf(++colour));
        benchmark::ClobberMemory();
    }
}
BENCHMARK(fullFillOfTheShadow);

void fullFillFlushIncluded(benchmark::State& state) {
    usePanelFile();
    int colour = 0;
    for (auto _ : state)
        lcd_clear(++colour);
}
BENCHMARK(fullFillFlushIncluded);

// A key of the keyboard: not whole lines.
void fillOfAKey(benchmark::State& state) {
    usePanelFile();
    int colour = 0;
    for (auto _ : state)
        fillRect(3, 85, 31, 113, ++colour);
}
BENCHMARK(fillOfAKey);

void roundedBox(benchmark::State& state) {
    usePanelFile();
    for (auto _ : state)
        drawRoundedRectangle(60, 60, 260, 160, 0, 240);
}
BENCHMARK(roundedBox);

void headerImage(benchmark::State& state) {
    usePanelFile();
    for (auto _ : state)
        headerImages().drawPNG(3, 3, 0, 0, 0);
}
BENCHMARK(headerImage);

void pageLikeDrawing(benchmark::State& state) {
    usePanelFile();
    WidgetRecord buttons[8] = {};
    for (int i = 0; i < 8; ++i) {
        buttons[i].x = 10 + 155 * (i % 2);
        buttons[i].y = 46 + 48 * (i / 2);
        buttons[i].width = 145;
        buttons[i].height = 42;
        buttons[i].touchable = 1;
        swprintf(buttons[i].text, WIDGET_TEXT_LENGTH, L"Button %d", i + 1);
    }
    for (auto _ : state) {
        lcd_clear(0);
        for (int i = 0; i < 4; ++i)
            headerImages().drawPNG(3 + 80 * i, 3, 0, 0, i);
        drawFontBigWhiteString(L"Network", 90, 10);
        for (const WidgetRecord& button : buttons)
            drawWidget(button);
    }
}
BENCHMARK(pageLikeDrawing);

void lineOf30CharactersAtSize20(benchmark::State& state) {
    usePanelFile();
    for (auto _ : state)
        drawText(L"The quick brown fox jumps over", 4, 100, 312, 1, 0, 20.0F, 0xFFFF, 0);
}
BENCHMARK(lineOf30CharactersAtSize20);

void widthOf30CharactersAtSize20(benchmark::State& state) {
    usePanelFile();
    for (auto _ : state)
        benchmark::DoNotOptimize(textWidth(L"The quick brown fox jumps over", 20.0F));
}
BENCHMARK(widthOf30CharactersAtSize20);

} // namespace
