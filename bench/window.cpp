// The window as its user feels it, on an X server without a graphics card: how long a click takes to be seen, how many
// pictures a second a drag gets, and what a window costs in which nothing happens.
#include "tests/e2e/windowed_run.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <ctime>
#include <random>
#include <sstream>

namespace {

constexpr int ZOOM = 3;
constexpr uint32_t WHITE = 0xFFFFFF;

double now() {
    timespec time = {};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

bool showsProbe(const XDesktop& desktop) {
    return soon([&] { return desktop.pixel(ZOOM * 150, ZOOM * 100) == painted(150, 100); });
}

// From the click to the first pixel of what the probe draws for it; each time at another place, after a pause in which
// everything has become quiet.
void fromClickToPixel(benchmark::State& state) {
    const XDesktop desktop;
    const WindowedRun run(desktop, "--window '" OSTREL_PROBE "' follow 100000");
    if (!showsProbe(desktop)) {
        state.SkipWithError("the window does not show the program");
        return;
    }
    const unsigned long window = desktop.window();
    std::mt19937 random(1);
    std::vector<double> times;
    int taps = 0;
    for (auto _ : state) {
        const int x = ZOOM * (10 + taps % 50 * 6);
        const int y = ZOOM * (10 + taps / 50 % 36 * 6);
        ++taps;
        desktop.pointAt(x, y);
        usleep(100000 + static_cast<useconds_t>(random() % 33000));
        const double started = now();
        desktop.button(true);
        while (desktop.pixel(window, x, y) != WHITE && now() - started < 10) {
        }
        times.push_back(now() - started);
        state.SetIterationTime(times.back());
        desktop.button(false);
    }
    std::sort(times.begin(), times.end());
    state.counters["median_ms"] = 1000 * times[times.size() / 2];
    state.counters["p95_ms"] = 1000 * times[times.size() * 95 / 100];
    state.counters["worst_ms"] = 1000 * times.back();
}
BENCHMARK(fromClickToPixel)->Iterations(300)->UseManualTime()->Unit(benchmark::kMillisecond);

// A drag of one pixel of the panel every millisecond for two seconds: how often something new is seen.
void picturesOfADrag(benchmark::State& state) {
    const XDesktop desktop;
    const WindowedRun run(desktop, "--window '" OSTREL_PROBE "' follow 100000");
    if (!showsProbe(desktop)) {
        state.SkipWithError("the window does not show the program");
        return;
    }
    const unsigned long window = desktop.window();
    int pictures = 0;
    double seconds = 0;
    for (auto _ : state) {
        constexpr int ROWS = 7; // of marks, each five pixels high
        constexpr int STEPS = 300;
        const double started = now();
        for (int row = 0; row < ROWS; ++row) {
            int seen = 0;
            const int y = ZOOM * (20 + row * 30);
            desktop.pointAt(ZOOM * 10, y);
            desktop.button(true);
            for (int step = 1; step < STEPS; ++step) {
                const double next = started + 0.001 * (row * STEPS + step);
                desktop.pointAt(ZOOM * (10 + step), y);
                do {
                    // How far the trail has come.
                    int reached = seen;
                    while (reached < step && desktop.pixel(window, ZOOM * (10 + reached + 1), y) == WHITE)
                        ++reached;
                    pictures += reached > seen ? 1 : 0;
                    seen = reached;
                } while (now() < next);
            }
            desktop.button(false);
        }
        seconds = now() - started;
        state.SetIterationTime(seconds);
    }
    state.counters["pictures_per_s"] = pictures / seconds;
}
BENCHMARK(picturesOfADrag)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);

// User and system time of a process so far, in seconds.
double cpuTime(pid_t pid) {
    const std::string stat = contentOf("/proc/" + std::to_string(pid) + "/stat");
    std::istringstream fields(stat.substr(stat.rfind(')') + 2));
    std::string skipped;
    for (int i = 0; i < 11; ++i)
        fields >> skipped;
    double user = 0;
    double system = 0;
    fields >> user >> system;
    return (user + system) / static_cast<double>(sysconf(_SC_CLK_TCK));
}

// Half a minute of the gallery's first page: the simulator's share of a core.
void idleWindow(benchmark::State& state) {
    const XDesktop desktop;
    const WindowedRun run(desktop, "--window '" OSTREL_GALLERY "'", OSTREL_STAGED);
    if (!soon([&] { return desktop.pixel(ZOOM * 160, ZOOM * 55) != 0; })) {
        state.SkipWithError("there is no window");
        return;
    }
    usleep(2000000);
    for (auto _ : state) {
        const double started = now();
        const double cpuBefore = cpuTime(run.pid);
        usleep(30000000);
        state.SetIterationTime(now() - started);
        state.counters["cpu_percent"] = 100 * (cpuTime(run.pid) - cpuBefore) / (now() - started);
    }
}
BENCHMARK(idleWindow)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace
