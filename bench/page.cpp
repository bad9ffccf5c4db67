// What a page costs: drawn whole, handing a touch on, and from the start of a program until its first page is there.
// On a panel that is a file, beside memset of the panel's bytes. A router without settings answers at once that they
// are empty.
#include "bench/eight_buttons.h"

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <spawn.h>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr size_t PANEL_BYTES = size_t{320} * 240 * 2;

// For this process and those that it starts.
void usePanelFile() {
    static bool isThere = false;
    if (isThere)
        return;
    static char folder[] = "/tmp/ostrel-bench-XXXXXX";
    isThere = mkdtemp(folder) != nullptr;
    static const std::string panel = std::string(folder) + "/panel";
    static const std::string pen = std::string(folder) + "/pen";
    const int file = open(panel.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    isThere = isThere && ftruncate(file, PANEL_BYTES) == 0 && mkfifo(pen.c_str(), 0600) == 0;
    if (!isThere)
        std::abort();
    close(file);
    setenv("OSTREL_FRAMEBUFFER", panel.c_str(), 1);
    setenv("OSTREL_FONT_DIR", OSTREL_STAGED "/fonts", 1);
    setenv("OSTREL_TOUCH", pen.c_str(), 1);
    libOstrelGuiInit();
    atexit([] {
        unlink(panel.c_str());
        unlink(pen.c_str());
        rmdir(folder);
    });
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

void pageDrawn(benchmark::State& state) {
    usePanelFile();
    static Screen& page = eightButtons();
    for (auto _ : state)
        page.draw();
}
BENCHMARK(pageDrawn);

// A touch beside all widgets: each is asked, none takes it. The cursor is at the tail before and after, as it is after
// a draw.
void touchHandedToWidgets(benchmark::State& state) {
    usePanelFile();
    static auto* const page = new Screen(L"");
    std::vector<Widget*> widgets;
    for (int64_t i = 0; i < state.range(0); ++i) {
        Widget* const widget = newButton(10, 50, L"");
        if (!widgets.empty()) {
            widget->prev = widgets.back();
            widgets.back()->next = widget;
        }
        widgets.push_back(widget);
    }
    page->widgets = widgets.back();
    for (auto _ : state)
        page->getTouch(300, 200);
    for (Widget* widget : widgets)
        delete widget;
    page->widgets = nullptr;
    state.SetComplexityN(state.range(0));
}
BENCHMARK(touchHandedToWidgets)->RangeMultiplier(10)->Range(10, 10'000)->Complexity(benchmark::oN);

struct FirstPage {
    int privateDirtyKiB = -1; // -1: it did not come
    double cpuMs = 0;
};

// Runs a program until it tells that its page is there.
FirstPage firstPageOf(const char* path) {
    FirstPage page;
    int ends[2];
    if (pipe(ends) != 0)
        return page;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    posix_spawn_file_actions_addclose(&actions, ends[0]);
    // It says that /ostrel has no pictures for the keyboard.
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    char* const arguments[] = {const_cast<char*>(path), nullptr};
    pid_t child = -1;
    const int failure = posix_spawn(&child, path, &actions, nullptr, arguments, environ);
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
    if (failure != 0 || read(ends[0], &page.privateDirtyKiB, sizeof(int)) != sizeof(int))
        page.privateDirtyKiB = -1;
    close(ends[0]);
    rusage used = {};
    if (failure == 0 && wait4(child, nullptr, 0, &used) == child)
        page.cpuMs = static_cast<double>(used.ru_utime.tv_sec + used.ru_stime.tv_sec) * 1e3 +
                     static_cast<double>(used.ru_utime.tv_usec + used.ru_stime.tv_usec) / 1e3;
    return page;
}

// Wall time; as counters the program's time on a processor, which other programs disturb less, and its own memory with
// its first page drawn.
void startToFirstPage(benchmark::State& state) {
    usePanelFile();
    FirstPage page;
    double cpuMs = 0;
    for (auto _ : state) {
        page = firstPageOf(OSTREL_FIRST_PAGE);
        cpuMs += page.cpuMs;
        if (page.privateDirtyKiB < 0) {
            state.SkipWithError("the program did not tell of its page");
            break;
        }
    }
    state.counters["cpuMs"] = benchmark::Counter(cpuMs, benchmark::Counter::kAvgIterations);
    state.counters["privateDirtyKiB"] = page.privateDirtyKiB;
}
BENCHMARK(startToFirstPage)->UseRealTime()->Unit(benchmark::kMillisecond);

} // namespace
