// What the keyboard costs, on a panel that is a file, beside memcpy of the panel's bytes. The sleeps between two looks
// at the pen are left out; there is no touch screen, so a pressed key is released at once. The back button's picture is
// drawn only where /ostrel has it.
#include "keyboard/keyboard.h"
#include "tests/support/fake_sleep.h"

#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <unistd.h>
#include <vector>

namespace {

constexpr size_t PANEL_BYTES = size_t{320} * 240 * 2;

void usePanelFile() {
    char name[] = "/tmp/ostrel-bench-XXXXXX";
    const int file = mkstemp(name);
    if (ftruncate(file, PANEL_BYTES) != 0)
        std::abort();
    close(file);
    setenv("OSTREL_FRAMEBUFFER", name, 1);
    setenv("OSTREL_FONT_DIR", OSTREL_STAGED_FONTS, 1);
    setenv("OSTREL_TOUCH", "/nowhere", 1);
    libOstrelGuiInit();
    unlink(name);
}

// One keyboard for all rows, never destroyed. Each look at the pen ends getTouch.
Keyboard& keyboard() {
    static Keyboard* const instance = [] {
        usePanelFile();
        auto* const made = new Keyboard;
        made->returnHandler = [] {};
        fakeSleep().log = false;
        fakeSleep().duringSleep = [made](uint64_t) { made->active = 0; };
        return made;
    }();
    return *instance;
}

wchar_t result[KEYBOARD_TEXT_LENGTH];

void begin(int mode, const char* text) {
    keyboard().keyboardMode(mode);
    keyboard().drawText(text, result);
}

void touch(int x, int y) {
    keyboard().active = 1;
    keyboard().getTouch(x, y);
}

void memcpyOfThePanelsBytes(benchmark::State& state) {
    const std::vector<char> from(PANEL_BYTES);
    std::vector<char> to(PANEL_BYTES);
    for (auto _ : state) {
        memcpy(to.data(), from.data(), to.size());
        benchmark::ClobberMemory();
    }
}
BENCHMARK(memcpyOfThePanelsBytes);

void wholeKeyboardWithTextBox(benchmark::State& state) {
    begin(static_cast<int>(state.range(0)), "192.168.1.1");
    for (auto _ : state)
        if (state.range(0) == KEYBOARD_IP_ADDRESS) {
            keyboard().drawNumKeyboard();
        } else {
            keyboard().drawBase();
            keyboard().drawKeyboard();
        }
}
BENCHMARK(wholeKeyboardWithTextBox)->Arg(KEYBOARD_LETTERS)->Arg(KEYBOARD_SYMBOLS)->Arg(KEYBOARD_IP_ADDRESS);

// A letter pressed, released and typed, and the deletion that makes room for the next.
void keyPressedReleasedTypedAndDeleted(benchmark::State& state) {
    begin(KEYBOARD_LETTERS, "home");
    for (auto _ : state) {
        touch(48, 130);
        keyboard().deleteChar();
    }
}
BENCHMARK(keyPressedReleasedTypedAndDeleted);

// The two looks of a letter's key and its preview: what a touch takes beyond the character that it types, which is
// typed alone beside every touch.
void keyPressedAndReleasedLessTheTyping(benchmark::State& state) {
    using Clock = std::chrono::steady_clock;
    begin(KEYBOARD_LETTERS, "home");
    for (auto _ : state) {
        const Clock::time_point start = Clock::now();
        touch(48, 130);
        const Clock::time_point touched = Clock::now();
        keyboard().deleteChar();
        const Clock::time_point room = Clock::now();
        keyboard().appendChar(L's');
        const Clock::time_point typed = Clock::now();
        keyboard().deleteChar();
        state.SetIterationTime(std::chrono::duration<double>((touched - start) - (typed - room)).count());
    }
}
BENCHMARK(keyPressedAndReleasedLessTheTyping)->UseManualTime();

// The delete key on an empty text: two looks, and nothing to edit.
void deleteKeyPressedAndReleased(benchmark::State& state) {
    begin(KEYBOARD_LETTERS, "");
    for (auto _ : state)
        touch(230, 225);
}
BENCHMARK(deleteKeyPressedAndReleased);

void characterAppendedAndDeleted(benchmark::State& state) {
    begin(KEYBOARD_LETTERS, "home");
    for (auto _ : state) {
        keyboard().appendChar(L'w');
        keyboard().deleteChar();
    }
}
BENCHMARK(characterAppendedAndDeleted);

void characterAppendedAndDeletedScrolled(benchmark::State& state) {
    begin(KEYBOARD_LETTERS, "The quick brown fox jumps over the lazy dog and runs away");
    for (auto _ : state) {
        keyboard().appendChar(L'w');
        keyboard().deleteChar();
    }
}
BENCHMARK(characterAppendedAndDeletedScrolled);

void lookAtALiftedPen(benchmark::State& state) {
    begin(KEYBOARD_LETTERS, "home");
    for (auto _ : state)
        touch(-1, -1);
}
BENCHMARK(lookAtALiftedPen);

} // namespace
