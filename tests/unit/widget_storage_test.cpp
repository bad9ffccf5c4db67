// Programs keep widgets in static storage and rely on what the constructors leave alone. Here every constructor runs
// on storage filled with a pattern, and every byte is compared afterwards.
#include "gui/widget.h"
#include "tests/support/recording_display.h"

#include <cstring>
#include <gtest/gtest.h>
#include <new>

namespace {

constexpr unsigned char PATTERN = 0xA5;

// Makes the compiler believe that the bytes are read and written here, so that what was stored before a constructor
// counts.
void settle(void* bytes) {
    asm volatile("" : : "r"(bytes) : "memory");
}

// A widget's storage filled with the pattern, and beside it the bytes that are expected there.
class Storage {
  public:
    Storage() {
        display() = {};
        std::memset(actual, PATTERN, sizeof actual);
        std::memset(expected, PATTERN, sizeof expected);
        settle(actual);
    }
    ~Storage() { display() = {}; }
    Storage(const Storage&) = delete;
    Storage& operator=(const Storage&) = delete;

    template<typename... Arguments>
    Widget& construct(Arguments&&... arguments) {
        auto* const widget = new (actual) Widget(std::forward<Arguments>(arguments)...);
        settle(actual);
        std::memcpy(expected, actual, sizeof(void*)); // the virtual table's address
        return *std::launder(widget);
    }

    template<typename Value>
    void expect(const Value& member, Value value) {
        std::memcpy(expected + (reinterpret_cast<const unsigned char*>(&member) - actual), &value, sizeof value);
    }

    template<size_t SIZE>
    void expectText(const wchar_t& member, const wchar_t (&text)[SIZE]) {
        std::memcpy(expected + (reinterpret_cast<const unsigned char*>(&member) - actual), text, sizeof text);
    }

    // -1 when all bytes are as expected, else the offset of the first that is not.
    int firstDifference() {
        settle(actual);
        for (size_t i = 0; i < sizeof actual; ++i)
            if (actual[i] != expected[i])
                return static_cast<int>(i);
        return -1;
    }

  private:
    alignas(Widget) unsigned char actual[sizeof(Widget)];
    unsigned char expected[sizeof(Widget)];
};

TEST(WidgetStorage, IsLeftAloneByTheDefaultConstructor) {
    Storage storage;
    storage.construct();
    EXPECT_EQ(storage.firstDifference(), -1);
    EXPECT_EQ(display().take(), "");
}

TEST(WidgetStorage, IsLeftAloneByTheCopyConstructor) {
    const Widget source(3, 1, 2, 3, 4, 1, 5, 6, 7.0F, 8, L"source");
    Storage storage;
    storage.construct(source);
    EXPECT_EQ(storage.firstDifference(), -1);
    EXPECT_EQ(display().take(), "");
}

TEST(WidgetStorage, KeepsPasswordTouchableLinksAndSpareWordsUnderTheFullConstructor) {
    Storage storage;
    WidgetRecord seen{};
    display().touchArea = [&](const WidgetRecord& record) {
        seen = record;
        return TouchArea{11, 12, 13, 14};
    };
    Widget& widget = storage.construct(9, 10, 20, 30, 40, 1, 50, 60, 17.5F, -7, L"Save");
    storage.expect(widget.flagA, static_cast<unsigned char>(0));
    storage.expect(widget.flagB, static_cast<unsigned char>(1));
    storage.expect(widget.keyboardFlag, static_cast<unsigned char>(0));
    storage.expect(widget.group, 1);
    storage.expect(widget.record.x, 10);
    storage.expect(widget.record.y, 20);
    storage.expect(widget.record.width, 50);
    storage.expect(widget.record.height, 60);
    storage.expect(widget.record.selected, 1);
    storage.expect(widget.record.colourA, 30);
    storage.expect(widget.record.colourB, 40);
    storage.expect(widget.record.fontSize, 17.5F);
    storage.expect(widget.record.scale, -7.0F);
    storage.expectText(widget.record.text[0], L"Save");
    storage.expect(widget.record.type, 9);
    storage.expect(widget.touchArea, TouchArea{11, 12, 13, 14});
    EXPECT_EQ(storage.firstDifference(), -1);
    EXPECT_EQ(seen.type, 9) << "the touch area is asked for when the record is complete";
    EXPECT_STREQ(seen.text, L"Save");
    EXPECT_EQ(seen.scale, -7.0F);
    EXPECT_EQ(display().calls.size(), 1U);
}

TEST(WidgetStorage, KeepsSizesAndFontUnderTheConstructorForNaturalSizes) {
    Storage storage;
    WidgetRecord seen{};
    display().touchArea = [&](const WidgetRecord& record) {
        seen = record;
        return TouchArea{11, 12, 13, 14};
    };
    Widget& widget = storage.construct(4, 10, 20, 30, 40, 1, L"Wi-Fi");
    EXPECT_NE(seen.password, 0) << "masking is set after the touch area was asked for";
    EXPECT_NE(seen.touchable, 1);
    storage.expect(widget.flagA, static_cast<unsigned char>(0));
    storage.expect(widget.flagB, static_cast<unsigned char>(1));
    storage.expect(widget.keyboardFlag, static_cast<unsigned char>(0));
    storage.expect(widget.group, 1);
    storage.expect(widget.record.x, 10);
    storage.expect(widget.record.y, 20);
    storage.expect(widget.record.selected, 1);
    storage.expect(widget.record.colourA, 30);
    storage.expect(widget.record.colourB, 40);
    storage.expectText(widget.record.text[0], L"Wi-Fi");
    storage.expect(widget.record.type, 4);
    storage.expect(widget.record.password, 0);
    storage.expect(widget.record.touchable, 1);
    storage.expect(widget.touchArea, TouchArea{11, 12, 13, 14});
    EXPECT_EQ(storage.firstDifference(), -1);
    EXPECT_EQ(display().calls.size(), 1U);
}

TEST(WidgetStorage, KeepsAllThatATextItemHasNoParameterFor) {
    Storage storage;
    Widget& widget = storage.construct(10, 20, 30, 110, 111, 18.5F, 109, 50, L"item");
    storage.expect(widget.record.x, 10);
    storage.expect(widget.record.y, 20);
    storage.expect(widget.record.width, 50);
    storage.expect(widget.record.colourA, 30);
    storage.expect(widget.record.word9, 109);
    storage.expect(widget.record.word10, 110);
    storage.expect(widget.record.word11, 111);
    storage.expect(widget.record.fontSize, 18.5F);
    storage.expectText(widget.record.text[0], L"item");
    storage.expect(widget.record.type, 8);
    EXPECT_EQ(storage.firstDifference(), -1);
    EXPECT_EQ(display().take(), "");
}

TEST(WidgetStorage, IsSeenAsItLiesByTheDisplayWhenABlankWidgetDies) {
    Storage storage;
    Widget& widget = storage.construct();
    widget.record.text[0] = 0; // the log prints it
    widget.~Widget();
    EXPECT_EQ(
        display().take(), "unDrawWidget(type -1515870811 at -1515870811,-1515870811 -1515870811x-1515870811 "
                          "selected -1515870811 \"\" password -1515870811)\n");
}

} // namespace
