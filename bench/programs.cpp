// What a touch costs that leads to another page of the settings program, from the touch to the whole page on the panel;
// the same for a change of language, and for the language picker. Runs in the simulator, which has the settings, the
// texts and the panel: bench/measure-programs does that. The settings device is the simulator's there, which opens and
// reads a file for each question.
#include "apps/language/picker.h"
#include "apps/settings/pages.h"

#include <benchmark/benchmark.h>

namespace {

struct Point {
    int x, y;
};

constexpr Point ROWS[] = {{80, 77}, {238, 77}, {80, 141}, {238, 141}, {80, 205}, {238, 205}};
constexpr const char* NAMES[] = {"Wi-Fi", "Network", "Screen", "Backup", "About", "Restart"};

void prepareOnce() {
    static const bool isPrepared = (preparePages(), preparePicker("/ostrel"), true);
    benchmark::DoNotOptimize(isPrepared);
}

void pageChange(benchmark::State& state) {
    prepareOnce();
    const auto row = static_cast<size_t>(state.range(0));
    state.SetLabel(NAMES[row]);
    for (auto _ : state) {
        state.PauseTiming();
        goHome();
        state.ResumeTiming();
        touchPage(ROWS[row].x, ROWS[row].y);
    }
}

void pageHome(benchmark::State& state) {
    prepareOnce();
    for (auto _ : state)
        goHome();
}

void languageChange(benchmark::State& state) {
    prepareOnce();
    goHome();
    for (auto _ : state)
        changeLanguage();
}

void pickerStart(benchmark::State& state) {
    for (auto _ : state) {
        preparePicker("/ostrel");
        drawPicker();
    }
}

void pickerPreview(benchmark::State& state) {
    prepareOnce();
    drawPicker();
    for (auto _ : state)
        for (const Point& choice : {Point{80, 63}, Point{80, 101}})
            pickerPage().getTouch(choice.x, choice.y);
    state.SetItemsProcessed(2 * state.iterations());
}

BENCHMARK(pageHome)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(pageChange)->DenseRange(0, 5)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(languageChange)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(pickerStart)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(pickerPreview)->Unit(benchmark::kMicrosecond)->UseRealTime();

} // namespace
