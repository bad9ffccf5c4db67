// The pen as a stream of input events, as a touch screen's driver writes it.
#ifndef OSTREL_SIMULATOR_TOUCH_STREAM_H
#define OSTREL_SIMULATOR_TOUCH_STREAM_H

#include "simulator/descriptor.h"
#include "simulator/elf.h"
#include "simulator/event_loop.h"
#include "simulator/pen.h"
#include "simulator/shared_page.h"

#include <cstdint>
#include <initializer_list>
#include <string>

namespace ostrel {

struct PenEvent {
    uint16_t type;
    uint16_t code;
    int32_t value;
};

class TouchStream : public Pen {
  public:
    // `fifo` is opened for both directions, so that the stream outlives each reader. `bits` is the program's.
    TouchStream(const std::string& fifo, Bits bits, EventLoop& loop, SharedPage& page);
    ~TouchStream() override;

    // Panel pixels; what lies outside the panel counts as its edge. A press while the pen is down is a move, a move or
    // a release while it is up is nothing. When the pipe is full, SYN_DROPPED and where the pen is then follow as soon
    // as there is room, so that a reader that wakes up late never keeps a pen that was lifted.
    void press(int x, int y) override;
    void move(int x, int y) override;
    void release() override;

    // From now on what faces do with the three above goes to `pen`, which decides what the program gets.
    void divertTo(Pen& pen) { diversion = &pen; }

    // The same three, past a diversion.
    void pressNow(int x, int y);
    void moveNow(int x, int y);
    void releaseNow();

    // For a program that is started anew: the pen is up, and nothing is left to read.
    void empty();

    bool isDown() const { return page.penDown != 0; }

    // True when the program has read everything and asks for more: it blocks for it, or has looked four times in vain
    // (once is how a reader notices the end of what it is about to act upon, and the loops around it may each look once
    // more before they end). Without a program that reports its questions: when the stream has been empty for a tenth
    // of a second, at first for ten seconds: programs that do report may take that long to start on a busy machine.
    bool isAwaited();

    // The same, by a question that is being asked, or was asked since looks() gave `looksBefore`: a program that looked
    // a while ago may be busy by now.
    bool isAwaitedSince(uint32_t looksBefore) {
        return isAwaited() && (page.waiting != 0 || looks() != looksBefore || page.programs == 0);
    }
    uint32_t looks() const { return page.glances; }

  private:
    using Events = std::initializer_list<PenEvent>;
    void place(int x, int y);
    void put(Events events);
    bool write(Events events);
    void catchUp();
    bool isEmpty() const;

    EventLoop& loop;
    SharedPage& page;
    Pen* diversion = nullptr;
    Bits bits;
    Descriptor pipe;
    bool dropped = false;
    int64_t putAtMs;
    bool wasUsed = false;
};

// One record as a program of that architecture reads it; returns its size. `record` has room for 24 bytes.
size_t encodeRecord(Bits bits, int64_t seconds, int64_t microseconds, const PenEvent& event, unsigned char* record);

} // namespace ostrel

#endif
