// Understands the events of a touch screen: single touch (ABS_X, ABS_Y, BTN_TOUCH) and the first slot of multi-touch
// (ABS_MT_*). It does no reading of its own: events go in one after another, what the pen did comes out.
#ifndef OSTREL_DISPLAY_TOUCH_DECODER_H
#define OSTREL_DISPLAY_TOUCH_DECODER_H

#include <cstdint>

namespace ostrel {

// The part of struct input_event that counts.
struct TouchEvent {
    uint16_t type;
    uint16_t code;
    int32_t value;
};

enum class PenStep { Press, Move, Release };

// What one event, or one look at the device's state, tells of the pen: at most three steps, in order. The place, in
// the device's units, is that of the press or move.
struct PenSteps {
    PenStep step[3] = {};
    int count = 0;
    int32_t x = 0;
    int32_t y = 0;
};

// What a device says about itself when it is asked, rather than by events.
struct TouchState {
    bool multiTouch = false;
    bool down = false;
    int32_t x = 0;
    int32_t y = 0;
    int32_t slot = 0;       // multi-touch: the slot that the next events are about
    int32_t trackingId = 0; // multi-touch, while down: names the contact
};

class TouchDecoder {
  public:
    // Takes one event. Steps come out of the event that ends a frame (SYN_REPORT), so that a press has its place.
    PenSteps decode(const TouchEvent& event);

    // True after events were lost (SYN_DROPPED) and the broken frame has been passed over: the device should be asked
    // for its state, and the answer given to `resume`. Where it cannot be asked, go on decoding: the state that
    // follows in the stream is taken as news about the same contact.
    bool lostEvents() const { return lost == Lost::Resuming; }

    // Goes on from the device's own account of itself, and tells what must have happened in between.
    PenSteps resume(const TouchState& state);

  private:
    enum class Lost { Nothing, SkippingFrame, Resuming };

    void takeKey(int32_t value);
    void takeAxis(uint16_t code, int32_t value);
    void takeTrackingId(int32_t id);
    void begin();
    void forgetFrame();
    PenSteps finishFrame();

    bool multiTouch = false; // contacts are told by tracking ids from the first one on; BTN_TOUCH then says nothing
    bool hasX = false;
    bool hasY = false;
    bool down = false;  // at this point of the frame
    bool shown = false; // a press came out, and no release yet
    bool began = false; // a contact began within the frame
    int32_t x = 0;
    int32_t y = 0;
    int32_t shownX = 0;
    int32_t shownY = 0;
    int32_t slot = 0;
    int32_t trackingId = 0;
    int32_t shownId = 0;
    Lost lost = Lost::Nothing;
};

} // namespace ostrel

#endif
