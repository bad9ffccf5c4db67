// The pen as programs see it: the device, the decoder and the queue of strokes joined, and the waiting.
//
// Stale strokes. A program that has not asked for the pen for its device's staleAfterMs was busy, or another program
// had the panel: what began meanwhile was not meant for what it shows now, so its next question drops every stroke up
// to then, the one that still goes on to its end. readX, waitForPenUp and waitForTouch are questions; as long as one of
// them blocks it goes on asking, and opening the device counts as one. readY and disableTouch are none.
//
// A program that sleeps in its own poll with touchDescriptor cannot be told from one that is busy, and the tap that
// wakes it must not be lost. So the descriptor becomes readable every BEAT_MS, if no idle tick comes sooner: a program
// that waits answers with waitForTouch(&x, &y, 0), and has asked; a busy one does not.
#ifndef OSTREL_DISPLAY_TOUCH_INPUT_H
#define OSTREL_DISPLAY_TOUCH_INPUT_H

#include "display/pen_queue.h"
#include "display/touch_decoder.h"
#include "display/touch_device.h"
#include "display/wait_descriptor.h"
#include "display/wait_ticks.h"

namespace ostrel {

constexpr int64_t BEAT_MS = 100;

// How long waitForTouch waits in place of "for ever" once there is no device, so that a loop that does not look at
// panelClosed does not spin.
constexpr int CLOSED_WAIT_MS = 250;

class TouchInput {
  public:
    // Takes over the open device; what it holds so far is dropped. A device that is not open: closed from the start.
    explicit TouchInput(TouchDevice opened);
    ~TouchInput();
    TouchInput(const TouchInput&) = delete;
    TouchInput& operator=(const TouchInput&) = delete;

    // As the operations of gui/display.h.
    int readX();
    int readY() const;
    void waitForPenUp();
    void disable(bool disabled);
    void setTickHandler(void (*handler)());
    bool waitForTouch(int* x, int* y, int timeoutMs);
    int descriptor();
    bool isClosed() const { return device.descriptor < 0; }

  private:
    void ask();
    void drain();
    void take(const TouchEvent& event);
    void apply(const PenSteps& steps);
    void loseDevice(const char* reason);
    void waitForDevice(int64_t atMostMs); // -1: for ever
    int64_t untilTickMs(int64_t atMostMs) const;
    bool runDueTick();
    void scheduleWake();

    TouchDevice device;
    TouchDecoder decoder;
    PenQueue pen;
    WaitDescriptor programsWait;
    IdleTicks ticks;
    void (*tickHandler)() = nullptr;
    bool inTick = false;
    int64_t askedAtMs = 0;
};

// The panel's, opened at the first call and never closed.
TouchInput& panelTouch();

} // namespace ostrel

#endif
