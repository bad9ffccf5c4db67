#include "display/touch_decoder.h"

#include <linux/input.h>

namespace ostrel {

PenSteps TouchDecoder::decode(const TouchEvent& event) {
    const bool frameEnds = event.type == EV_SYN && event.code == SYN_REPORT;
    if (event.type == EV_SYN && event.code == SYN_DROPPED) {
        lost = Lost::SkippingFrame;
        forgetFrame();
    } else if (lost == Lost::SkippingFrame) {
        if (frameEnds)
            lost = Lost::Resuming;
    } else if (frameEnds) {
        lost = Lost::Nothing;
        return finishFrame();
    } else if (event.type == EV_KEY && event.code == BTN_TOUCH) {
        takeKey(event.value);
    } else if (event.type == EV_ABS) {
        takeAxis(event.code, event.value);
    }
    return {};
}

PenSteps TouchDecoder::resume(const TouchState& state) {
    lost = Lost::Nothing;
    multiTouch = state.multiTouch;
    slot = state.slot;
    x = state.x;
    y = state.y;
    hasX = hasY = true;
    const bool sameContact = !multiTouch || trackingId == state.trackingId;
    if (!state.down || !sameContact)
        down = false;
    if (state.down && !down)
        begin();
    trackingId = state.trackingId;
    return finishFrame();
}

void TouchDecoder::takeKey(int32_t value) {
    if (multiTouch)
        return;
    if (value == 0) {
        down = false;
    } else if (value == 1) {
        // A second press without a release: the release went to somebody else, unless this is the state after a loss.
        if (!down || lost == Lost::Nothing)
            begin();
    }
}

void TouchDecoder::takeAxis(uint16_t code, int32_t value) {
    if (code == ABS_MT_SLOT) {
        slot = value;
    } else if (code == ABS_MT_TRACKING_ID) {
        if (slot == 0)
            takeTrackingId(value);
    } else if (code == ABS_X || code == ABS_MT_POSITION_X) {
        if (multiTouch ? code == ABS_MT_POSITION_X && slot == 0 : code == ABS_X) {
            x = value;
            hasX = true;
        }
    } else if (code == ABS_Y || code == ABS_MT_POSITION_Y) {
        if (multiTouch ? code == ABS_MT_POSITION_Y && slot == 0 : code == ABS_Y) {
            y = value;
            hasY = true;
        }
    }
}

void TouchDecoder::takeTrackingId(int32_t id) {
    multiTouch = true;
    if (id < 0) {
        down = false;
        return;
    }
    if (!down || id != trackingId)
        begin();
    trackingId = id;
}

void TouchDecoder::begin() {
    down = true;
    began = true;
}

void TouchDecoder::forgetFrame() {
    down = shown;
    began = false;
    trackingId = shownId;
}

PenSteps TouchDecoder::finishFrame() {
    PenSteps steps;
    const auto add = [&steps](PenStep step) { steps.step[steps.count++] = step; };
    if (shown && (began || !down)) {
        add(PenStep::Release);
        shown = false;
    }
    if (!hasX || !hasY) {
        began = began && down; // a contact without a place waits for one
        return steps;
    }
    if (began) {
        add(PenStep::Press);
        shown = true;
        if (!down) {
            add(PenStep::Release);
            shown = false;
        }
    } else if (shown && (x != shownX || y != shownY)) {
        add(PenStep::Move);
    }
    began = false;
    shownId = trackingId;
    steps.x = shownX = x;
    steps.y = shownY = y;
    return steps;
}

} // namespace ostrel
