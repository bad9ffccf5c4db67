#include "display/touch_decoder.h"

#include <gtest/gtest.h>
#include <linux/input.h>
#include <string>
#include <vector>

using namespace ostrel;

namespace {

constexpr TouchEvent END = {EV_SYN, SYN_REPORT, 0};
constexpr TouchEvent LOST = {EV_SYN, SYN_DROPPED, 0};
constexpr TouchEvent TOUCH = {EV_KEY, BTN_TOUCH, 1};
constexpr TouchEvent LIFT = {EV_KEY, BTN_TOUCH, 0};

TouchEvent x(int32_t value) {
    return {EV_ABS, ABS_X, value};
}
TouchEvent y(int32_t value) {
    return {EV_ABS, ABS_Y, value};
}
TouchEvent slot(int32_t value) {
    return {EV_ABS, ABS_MT_SLOT, value};
}
TouchEvent contact(int32_t id) {
    return {EV_ABS, ABS_MT_TRACKING_ID, id};
}
TouchEvent contactX(int32_t value) {
    return {EV_ABS, ABS_MT_POSITION_X, value};
}
TouchEvent contactY(int32_t value) {
    return {EV_ABS, ABS_MT_POSITION_Y, value};
}

std::string told(const PenSteps& steps) {
    const std::string place = " " + std::to_string(steps.x) + "," + std::to_string(steps.y) + "\n";
    std::string text;
    for (int i = 0; i < steps.count; ++i) {
        if (steps.step[i] == PenStep::Release)
            text += "release\n";
        else
            text += (steps.step[i] == PenStep::Press ? "press" : "move") + place;
    }
    return text;
}

std::string decode(TouchDecoder& decoder, const std::vector<TouchEvent>& events) {
    std::string text;
    for (const TouchEvent& event : events)
        text += told(decoder.decode(event));
    return text;
}

std::string decode(const std::vector<TouchEvent>& events) {
    TouchDecoder decoder;
    return decode(decoder, events);
}

} // namespace

TEST(SingleTouch, IsPressedMovedAndReleased) {
    EXPECT_EQ(
        decode({x(10), y(20), TOUCH, END, x(30), END, y(40), END, LIFT, END}),
        "press 10,20\nmove 30,20\nmove 30,40\nrelease\n");
}

TEST(SingleTouch, TellsNothingBeforeTheFrameEnds) {
    TouchDecoder decoder;
    EXPECT_EQ(decode(decoder, {x(10), y(20), TOUCH}), "");
    EXPECT_EQ(decode(decoder, {END}), "press 10,20\n");
}

TEST(SingleTouch, KeepsThePlaceThatTheKernelDoesNotRepeat) {
    EXPECT_EQ(
        decode({x(10), y(20), TOUCH, END, LIFT, END, TOUCH, END, LIFT, END}),
        "press 10,20\nrelease\npress 10,20\nrelease\n");
}

TEST(SingleTouch, HoversWithoutAPress) {
    EXPECT_EQ(decode({x(10), y(20), END, x(11), END}), "");
}

TEST(SingleTouch, TellsNoMoveWhereNothingMoved) {
    EXPECT_EQ(decode({x(10), y(20), TOUCH, END, x(10), END, END}), "press 10,20\n");
}

TEST(SingleTouch, TellsATapInsideOneFrame) {
    EXPECT_EQ(decode({x(10), y(20), TOUCH, LIFT, END}), "press 10,20\nrelease\n");
}

TEST(SingleTouch, TellsAReleaseAndAPressInsideOneFrame) {
    EXPECT_EQ(
        decode({x(10), y(20), TOUCH, END, LIFT, x(50), TOUCH, END, LIFT, END}),
        "press 10,20\nrelease\npress 50,20\nrelease\n");
}

TEST(SingleTouch, TellsAReleaseAndAWholeTapInsideOneFrame) {
    EXPECT_EQ(
        decode({x(10), y(20), TOUCH, END, LIFT, TOUCH, x(50), LIFT, END}),
        "press 10,20\nrelease\npress 50,20\nrelease\n");
}

TEST(SingleTouch, WaitsForAPlaceBeforeItsFirstPress) {
    EXPECT_EQ(decode({TOUCH, END, x(10), END, y(20), END, LIFT, END}), "press 10,20\nrelease\n");
}

TEST(SingleTouch, ForgetsAPressThatNeverHadAPlace) {
    EXPECT_EQ(decode({TOUCH, END, LIFT, END, x(10), y(20), END}), "");
}

TEST(SingleTouch, IgnoresAReleaseThatNothingWasPressedFor) {
    EXPECT_EQ(decode({LIFT, END, x(10), y(20), LIFT, END}), "");
}

TEST(SingleTouch, TakesASecondPressAsANewStrokeWhoseReleaseWentElsewhere) {
    EXPECT_EQ(
        decode({x(10), y(20), TOUCH, END, x(50), TOUCH, END, LIFT, END}),
        "press 10,20\nrelease\npress 50,20\nrelease\n");
}

TEST(SingleTouch, IgnoresKeyRepeatAndOtherValuesOfTouch) {
    EXPECT_EQ(
        decode({x(10), y(20), TOUCH, END, {EV_KEY, BTN_TOUCH, 2}, END, {EV_KEY, BTN_TOUCH, -7}, END}), "press 10,20\n");
}

TEST(SingleTouch, IgnoresOtherKeysAxesAndKindsOfEvent) {
    EXPECT_EQ(
        decode(
            {{EV_KEY, BTN_LEFT, 1},
             {EV_KEY, KEY_A, 1},
             {EV_ABS, ABS_PRESSURE, 400},
             {EV_ABS, 0xFFFF, 5},
             {EV_MSC, MSC_SCAN, 9},
             {0xFFFF, 0xFFFF, INT32_MIN},
             x(10),
             y(20),
             TOUCH,
             END}),
        "press 10,20\n");
}

TEST(SingleTouch, PassesExtremeValuesOnAsTheyAre) {
    EXPECT_EQ(decode({x(INT32_MIN), y(INT32_MAX), TOUCH, END}), "press -2147483648,2147483647\n");
}

TEST(MultiTouch, FollowsTheFirstContact) {
    EXPECT_EQ(
        decode(
            {contact(7), contactX(10), contactY(20), END, contactX(30), END, contact(-1), END, contact(8), END,
             contact(-1), END}),
        "press 10,20\nmove 30,20\nrelease\npress 30,20\nrelease\n");
}

TEST(MultiTouch, IgnoresTheOtherSlots) {
    EXPECT_EQ(
        decode(
            {slot(0), contact(1), contactX(10), contactY(20), slot(1), contact(2), contactX(200), contactY(100), END,
             contactX(210), END, contact(-1), END, slot(0), contactX(12), END, contact(-1), END}),
        "press 10,20\nmove 12,20\nrelease\n");
}

TEST(MultiTouch, StartsANewStrokeWhenTheContactChangesWithoutALift) {
    EXPECT_EQ(
        decode({contact(1), contactX(10), contactY(20), END, contact(2), contactX(50), END}),
        "press 10,20\nrelease\npress 50,20\n");
}

TEST(MultiTouch, GoesByContactsWhereTheDeviceEmulatesASingleTouchToo) {
    // The second finger keeps BTN_TOUCH down and takes ABS_X over after the first one has gone.
    EXPECT_EQ(
        decode({contact(1), contactX(10), contactY(20),  TOUCH,         x(10),       y(20),   END,
                slot(1),    contact(2),   contactX(200), contactY(100), END,         slot(0), contact(-1),
                x(200),     y(100),       END,           slot(1),       contact(-1), LIFT,    END}),
        "press 10,20\nrelease\n");
}

TEST(MultiTouch, IgnoresSlotsThatDoNotExist) {
    EXPECT_EQ(decode({slot(-1), contact(1), contactX(10), contactY(20), END, slot(INT32_MAX), contact(2), END}), "");
}

TEST(LostEvents, PassOverTheRestOfTheirFrame) {
    TouchDecoder decoder;
    EXPECT_EQ(decode(decoder, {x(10), y(20), TOUCH, LOST, x(90), LIFT}), "");
    EXPECT_FALSE(decoder.lostEvents());
    EXPECT_EQ(decode(decoder, {END}), "");
    EXPECT_TRUE(decoder.lostEvents());
}

TEST(LostEvents, LeaveAReleaseThatTheDeviceTellsWhenAsked) {
    TouchDecoder decoder;
    decode(decoder, {x(10), y(20), TOUCH, END, LOST, END});
    TouchState state;
    state.x = 10;
    state.y = 20;
    EXPECT_EQ(told(decoder.resume(state)), "release\n");
    EXPECT_FALSE(decoder.lostEvents());
    EXPECT_EQ(decode(decoder, {x(60), TOUCH, END}), "press 60,20\n");
}

TEST(LostEvents, LeaveAPressThatTheDeviceTellsWhenAsked) {
    TouchDecoder decoder;
    decode(decoder, {LOST, END});
    TouchState state;
    state.down = true;
    state.x = 50;
    state.y = 60;
    EXPECT_EQ(told(decoder.resume(state)), "press 50,60\n");
    EXPECT_EQ(decode(decoder, {LIFT, END}), "release\n");
}

TEST(LostEvents, ContinueAStrokeThatIsStillDown) {
    TouchDecoder decoder;
    decode(decoder, {x(10), y(20), TOUCH, END, LOST, END});
    TouchState state;
    state.down = true;
    state.x = 15;
    state.y = 20;
    EXPECT_EQ(told(decoder.resume(state)), "move 15,20\n");
}

TEST(LostEvents, TellANewContactFromTheOldOneByItsId) {
    TouchDecoder decoder;
    decode(decoder, {contact(1), contactX(10), contactY(20), END, LOST, contact(2), END});
    TouchState state;
    state.multiTouch = true;
    state.down = true;
    state.x = 80;
    state.y = 90;
    state.trackingId = 2;
    EXPECT_EQ(told(decoder.resume(state)), "release\npress 80,90\n");
}

TEST(LostEvents, TakeTheSlotFromTheDevice) {
    TouchDecoder decoder;
    decode(decoder, {contact(1), contactX(10), contactY(20), END, LOST, END});
    TouchState state;
    state.multiTouch = true;
    state.down = true;
    state.x = 10;
    state.y = 20;
    state.slot = 1;
    state.trackingId = 1;
    EXPECT_EQ(told(decoder.resume(state)), "");
    EXPECT_EQ(decode(decoder, {contactX(300), END, slot(0), contactX(11), END}), "move 11,20\n");
}

TEST(LostEvents, AreFollowedByTheStateInAStream) {
    // The pen is still down: the state is no second press.
    EXPECT_EQ(
        decode({x(10), y(20), TOUCH, END, LOST, END, x(30), y(20), TOUCH, END, LIFT, END}),
        "press 10,20\nmove 30,20\nrelease\n");
    // It was lifted meanwhile.
    EXPECT_EQ(decode({x(10), y(20), TOUCH, END, LOST, END, x(10), y(20), LIFT, END}), "press 10,20\nrelease\n");
    // It was pressed meanwhile.
    EXPECT_EQ(decode({LOST, END, x(30), y(40), TOUCH, END}), "press 30,40\n");
}

TEST(LostEvents, AreOverAfterTheStateThatFollows) {
    EXPECT_EQ(
        decode({x(10), y(20), TOUCH, END, LOST, END, TOUCH, END, TOUCH, END}), "press 10,20\nrelease\npress 10,20\n");
}
