// A pen between a person and the program that keeps what the program gets.
//
// A script touches only when the program asks; so that it plays the same story, the recording is made in the same
// manner. Each part of a stroke is given to the program when it asks. Moves that come faster than it asks become one.
// A stroke for which it has not asked after a quarter of a second is not given to it at all: it was made while the
// program was busy, and would have been dropped as stale. A pause counts from the moment at which the program asks,
// until the panel goes dark, which is then expected: how long that takes is the program's business.
#ifndef OSTREL_SIMULATOR_RECORDER_H
#define OSTREL_SIMULATOR_RECORDER_H

#include "simulator/event_loop.h"
#include "simulator/panel.h"
#include "simulator/pen.h"
#include "simulator/recording.h"
#include "simulator/touch_stream.h"

#include <deque>
#include <optional>

namespace ostrel {

class Recorder : public Pen {
  public:
    Recorder(Recording recording, EventLoop& loop, TouchStream& stream, const Panel& panel);
    ~Recorder() override;

    void press(int x, int y) override;
    void move(int x, int y) override;
    void release() override;

    // Writes the last lines. Without a `status` the program is ended by the simulator.
    void finish(std::optional<int> status);

  private:
    enum class Kind { Press, Move, Release };
    struct Event {
        Kind kind;
        int x;
        int y;
        int64_t atMs;
    };

    void put(Kind kind, int x, int y);
    void look();
    void notice(bool asked);
    void give(const Event& event);
    void dropFirstStroke();
    int64_t pausedUntil(int64_t ms) const;
    int64_t nextLookMs() const;

    Recording recording;
    EventLoop& loop;
    TouchStream& stream;
    const Panel& panel;
    EventLoop::Timer timer = 0;
    std::deque<Event> events; // not given yet
    bool isDown = false;      // as the person sees it
    bool dropping = false;    // the stroke that goes on is not given
    bool finished = false;
    uint32_t looksBefore = 0; // the program's, before those that count as questions
    int64_t givenAtMs;        // when the program got the last event
    int64_t askedAtMs = -1;   // since when it asks; -1: it has not asked since then
    bool wasDark = false;     // the panel, when it began to ask
    bool wentDark = false;    // the panel, since then
};

} // namespace ostrel

#endif
