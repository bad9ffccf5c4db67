// The places of members that compiled programs rely on, typed in.
#include "gui/widget.h"

#include <gtest/gtest.h>

namespace {

static_assert(offsetof(WidgetRecord, x) == 0);
static_assert(offsetof(WidgetRecord, y) == 4);
static_assert(offsetof(WidgetRecord, width) == 8);
static_assert(offsetof(WidgetRecord, height) == 12);
static_assert(offsetof(WidgetRecord, selected) == 16);
static_assert(offsetof(WidgetRecord, colourA) == 20);
static_assert(offsetof(WidgetRecord, colourB) == 24);
static_assert(offsetof(WidgetRecord, word7) == 28);
static_assert(offsetof(WidgetRecord, word8) == 32);
static_assert(offsetof(WidgetRecord, word9) == 36);
static_assert(offsetof(WidgetRecord, word10) == 40);
static_assert(offsetof(WidgetRecord, word11) == 44);
static_assert(offsetof(WidgetRecord, fontSize) == 48);
static_assert(offsetof(WidgetRecord, scale) == 52);
static_assert(offsetof(WidgetRecord, text) == 56);
static_assert(offsetof(WidgetRecord, type) == 376);
static_assert(offsetof(WidgetRecord, password) == 380);
static_assert(offsetof(WidgetRecord, touchable) == 384);
static_assert(sizeof(WidgetRecord) == 388);
static_assert(alignof(WidgetRecord) == 4);

static_assert(offsetof(TouchArea, left) == 0);
static_assert(offsetof(TouchArea, right) == 4);
static_assert(offsetof(TouchArea, top) == 8);
static_assert(offsetof(TouchArea, bottom) == 12);

size_t distance(const void* from, const void* to) {
    return static_cast<size_t>(static_cast<const char*>(to) - static_cast<const char*>(from));
}

TEST(WidgetKinds, StandInTheirOrderWithTheirNumbers) {
    const int32_t numbers[10] = {8, 0, 1, 2, 3, 4, 5, 6, 7, 9};
    const int32_t* const members[10] = {&wType.kind8, &wType.kind0, &wType.kind1, &wType.kind2, &wType.kind3,
                                        &wType.kind4, &wType.kind5, &wType.kind6, &wType.kind7, &wType.kind9};
    for (size_t i = 0; i < 10; ++i) {
        EXPECT_EQ(*members[i], numbers[i]) << i;
        EXPECT_EQ(distance(&wType, members[i]), 4 * i);
    }
    EXPECT_EQ(sizeof wType, 40U);
}

// Inside the record and the area the places do not depend on pointers; before them they do.
TEST(WidgetMembers, LieAsThePointerSizeDictates) {
    const Widget widget;
    struct Place {
        const void* member;
        size_t with4Bytes;
        size_t with8Bytes;
    };
    const Place places[] = {
        {&widget.callback, 4, 8},         {&widget.flagA, 8, 16},
        {&widget.flagB, 9, 17},           {&widget.group, 12, 20},
        {&widget.next, 16, 24},           {&widget.prev, 20, 32},
        {&widget.record, 24, 40},         {&widget.touchArea, 412, 428},
        {&widget.keyboardFlag, 428, 444}, {&widget.keyboardTarget, 432, 448},
    };
    for (const Place& place : places)
        EXPECT_EQ(distance(&widget, place.member), sizeof(void*) == 4 ? place.with4Bytes : place.with8Bytes);
    EXPECT_EQ(sizeof(Widget), sizeof(void*) == 4 ? 436U : 456U);
}

} // namespace
