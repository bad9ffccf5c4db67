// What understanding the pen costs: a drag as a touch screen tells it, from event to the queue of strokes, beside
// copying the same events.
#include "display/pen_queue.h"
#include "display/touch_decoder.h"
#include "display/touch_scale.h"

#include <benchmark/benchmark.h>
#include <cstring>
#include <linux/input.h>
#include <vector>

using namespace ostrel;

namespace {

// A press, 256 moves and a release, on a screen of 4096 x 4096 steps.
std::vector<TouchEvent> drag() {
    std::vector<TouchEvent> events = {{EV_KEY, BTN_TOUCH, 1}};
    for (int i = 0; i < 257; ++i) {
        events.push_back({EV_ABS, ABS_X, 500 + 10 * i});
        events.push_back({EV_ABS, ABS_Y, 3000 - 7 * i});
        events.push_back({EV_SYN, SYN_REPORT, 0});
    }
    events.push_back({EV_KEY, BTN_TOUCH, 0});
    events.push_back({EV_SYN, SYN_REPORT, 0});
    return events;
}

void countEvents(benchmark::State& state, size_t events) {
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(events));
}

void copyOfTheEvents(benchmark::State& state) {
    const std::vector<TouchEvent> events = drag();
    std::vector<TouchEvent> copy(events.size());
    for (auto _ : state) {
        memcpy(copy.data(), events.data(), events.size() * sizeof(TouchEvent));
        benchmark::ClobberMemory();
    }
    countEvents(state, events.size());
}

void decodeADrag(benchmark::State& state) {
    const std::vector<TouchEvent> events = drag();
    TouchDecoder decoder;
    for (auto _ : state)
        for (const TouchEvent& event : events)
            benchmark::DoNotOptimize(decoder.decode(event));
    countEvents(state, events.size());
}

void decodeScaleAndQueueADrag(benchmark::State& state) {
    const std::vector<TouchEvent> events = drag();
    TouchDecoder decoder;
    PenQueue pen;
    TouchScale scale;
    scale.xRange = scale.yRange = {0, 4095};
    for (auto _ : state) {
        for (const TouchEvent& event : events) {
            const PenSteps steps = decoder.decode(event);
            for (int i = 0; i < steps.count; ++i) {
                if (steps.step[i] == PenStep::Press)
                    pen.press(scale.toPanel(steps.x, steps.y));
                else if (steps.step[i] == PenStep::Move)
                    pen.move(scale.toPanel(steps.x, steps.y));
                else
                    pen.release();
            }
        }
        while (pen.look().x > 0) {
        }
    }
    countEvents(state, events.size());
}

} // namespace

BENCHMARK(copyOfTheEvents);
BENCHMARK(decodeADrag);
BENCHMARK(decodeScaleAndQueueADrag);
