// Elements on the panel: their looks, where they paint, and what odd records do.
#include "display/panel.h"
#include "display/widget_look.h"
#include "gui/display.h"
#include "tests/support/panel_file.h"
#include "tests/support/scale.h"
#include "tests/support/staged_fonts.h"

#include <climits>
#include <cmath>
#include <cstring>
#include <cwchar>
#include <gtest/gtest.h>
#include <limits>
#include <random>

using namespace ostrel;

namespace {

constexpr uint32_t SEED = 20240612;
constexpr int KINDS = 10;
constexpr int TEXT_ITEM_KIND = 8;
constexpr int CAPTION_KIND = 7;
constexpr Rect EVERYTHING{0, 0, PANEL_WIDTH, PANEL_HEIGHT};

WidgetRecord element(int kind, const wchar_t* text) {
    WidgetRecord record{};
    record.type = kind;
    record.x = 40;
    record.y = 60;
    record.width = 150;
    record.height = 36;
    record.touchable = 1;
    record.colourA = kind == TEXT_ITEM_KIND ? 0xFFFF : 0;
    std::wcsncpy(record.text, text, WIDGET_TEXT_LENGTH - 1);
    return record;
}

Picture pictureOf(const WidgetRecord& record, int page = 0) {
    const PanelFile panel;
    lcd_clear(page);
    drawWidget(record);
    return panel.picture();
}

// What is left when `record` is drawn where the panel shows `before`, but was cleared with `page`.
Picture drawnOver(const WidgetRecord& record, uint16_t before, int page) {
    const PanelFile panel;
    lcd_clear(page);
    fillRect(0, 0, 320, 240, before);
    drawWidget(record);
    return panel.picture();
}

bool isTouched(const TouchArea& area, int x, int y) {
    return area.left < x && x < area.right && area.top < y && y < area.bottom;
}

int differingPixels(const Picture& a, const Picture& b) {
    int count = 0;
    for (size_t i = 0; i < a.pixels.size(); ++i)
        count += a.pixels[i] != b.pixels[i] ? 1 : 0;
    return count;
}

// Every pixel inside the touch area is painted whatever was there, and none outside it.
testing::AssertionResult paintsExactlyItsArea(const WidgetRecord& record) {
    const Picture overRed = drawnOver(record, 0xF800, 0x0841);
    const Picture overGreen = drawnOver(record, 0x07E0, 0x0841);
    const TouchArea area = getTouchArea(record);
    for (int y = 0; y < PANEL_HEIGHT; ++y)
        for (int x = 0; x < PANEL_WIDTH; ++x) {
            const bool isPainted = overRed.at(x, y) == overGreen.at(x, y);
            if (isPainted != isTouched(area, x, y))
                return testing::AssertionFailure() << x << ", " << y << (isPainted ? " is" : " is not") << " painted";
            if (!isPainted && overRed.at(x, y) != 0xF800)
                return testing::AssertionFailure() << x << ", " << y << " is blended outside the touch area";
        }
    return testing::AssertionSuccess();
}

// All kinds in one state, in two columns.
Picture kindsInState(int selected, int touchable) {
    const PanelFile panel;
    const wchar_t* const texts[KINDS] = {L"Connect",  L"Screen\t5 min", L"Name\tŻółw", L"30 seconds", L"Lock",
                                         L"Ελληνικά", L"Wireless",      L"Настройки",  L"10.0.0.1",   L"Restart"};
    for (int kind = 0; kind < KINDS; ++kind) {
        WidgetRecord record = element(kind, texts[kind]);
        record.x = kind % 2 * 154 + 2;
        record.y = kind / 2 * 40 + 2;
        record.selected = selected;
        record.touchable = touchable;
        drawWidget(record);
    }
    return panel.picture({0, 0, 308, 202});
}

double channel(int value, int most) {
    const double share = static_cast<double>(value) / most;
    return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
}
double luminance(uint16_t colour) {
    return 0.2126 * channel(colour >> 11, 31) + 0.7152 * channel(colour >> 5 & 0x3F, 63) +
           0.0722 * channel(colour & 0x1F, 31);
}
double contrast(uint16_t a, uint16_t b) {
    const double lighter = std::max(luminance(a), luminance(b));
    const double darker = std::min(luminance(a), luminance(b));
    return (lighter + 0.05) / (darker + 0.05);
}

} // namespace

TEST(WidgetLooks, AreWhatSomebodyLookedAt) {
    EXPECT_TRUE(matchesTextGolden(kindsInState(0, 1), "widgets-normal"));
    EXPECT_TRUE(matchesTextGolden(kindsInState(1, 1), "widgets-selected"));
    EXPECT_TRUE(matchesTextGolden(kindsInState(1, -1), "widgets-untouchable"));
}

TEST(WidgetLooks, OfAStateDifferClearlyFromTheOthers) {
    for (int kind = 0; kind < KINDS; ++kind) {
        if (kind == TEXT_ITEM_KIND)
            continue;
        WidgetRecord record = element(kind, L"Connect");
        const Picture normal = pictureOf(record);
        record.selected = 1;
        const Picture selected = pictureOf(record);
        record.touchable = -1;
        const Picture chosenButDead = pictureOf(record);
        record.selected = 0;
        const Picture dead = pictureOf(record);
        // A caption is nothing but its letters.
        const int enough = kind == CAPTION_KIND ? 150 : 400;
        EXPECT_GT(differingPixels(normal, selected), enough) << kind;
        EXPECT_GT(differingPixels(normal, dead), enough) << kind;
        EXPECT_GT(differingPixels(selected, chosenButDead), enough) << kind;
        EXPECT_NE(dead == chosenButDead, kind >= 2 && kind <= 6) << kind;
    }
}

TEST(WidgetLooks, HaveTextThatReadsWell) {
    for (int kind = 0; kind < KINDS; ++kind) {
        const WidgetLook& look = lookOf(kind);
        for (const Tones& tones : {look.normal, look.selected, look.disabled}) {
            EXPECT_GE(contrast(tones.face, tones.text), 4.5) << kind;
            // A value beside a label is text too.
            if (kind == 1) {
                EXPECT_GE(contrast(tones.face, tones.mark), 4.5) << kind;
            }
        }
    }
}

TEST(WidgetLooks, OfUnknownKindsAreAPushButtons) {
    const Picture button = pictureOf(element(0, L"Connect"));
    for (const int kind : {-1, 10, 11, 255, INT_MAX, INT_MIN})
        EXPECT_EQ(pictureOf(element(kind, L"Connect")), button) << kind;
    EXPECT_NE(pictureOf(element(9, L"Connect")), button);
}

TEST(WidgetLooks, UseTheRecordsOwnColours) {
    WidgetRecord record = element(0, L"Go");
    record.colourA = 0x07E0;
    record.colourB = 0x001F;
    EXPECT_EQ(pictureOf(record).at(50, 70), 0x07E0);
    record.selected = 1;
    EXPECT_EQ(pictureOf(record).at(50, 70), 0x001F);
    record.selected = 0;
    record.colourB = 0x07E0; // text that nobody could read
    const Picture readable = pictureOf(record);
    EXPECT_GT(differingPixels(readable, pictureOf(element(0, L""))), 150 * 36 / 2);
    record.colourB = 0;
    EXPECT_EQ(pictureOf(record), readable);
}

TEST(WidgetLooks, OfAnyKindHideAPasswordWhilePasswordsAreHidden) {
    for (int kind = 0; kind < KINDS; ++kind) {
        WidgetRecord secret = element(kind, L"Ab\tcdef");
        WidgetRecord other = element(kind, L"wW12345");
        const Picture shown = pictureOf(secret);
        secret.password = other.password = 1;
        const Picture hidden = pictureOf(secret);
        EXPECT_EQ(hidden, pictureOf(other)) << kind;
        EXPECT_NE(hidden, shown) << kind;
        setShowPasswords(true);
        EXPECT_EQ(pictureOf(secret), shown) << kind;
        setShowPasswords(false);
        EXPECT_EQ(pictureOf(secret), hidden) << kind;
    }
}

TEST(WidgetLooks, OfATextItemComeFromItsOwnFieldsAlone) {
    WidgetRecord item = element(TEXT_ITEM_KIND, L"192.168.1.1");
    item.height = 0;
    item.fontSize = 17;
    item.colourA = 0x8E9D;
    const Picture expected = pictureOf(item);
    std::memset(&item.colourB, 0x5A, sizeof item.colourB);
    item.height = -77;
    item.selected = 1;
    item.touchable = -1;
    item.word7 = item.word8 = item.word10 = item.word11 = 0x1234567;
    item.scale = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(pictureOf(item), expected);

    const PanelFile panel;
    drawText(L"192.168.1.1", 40, 60, 150, 1, 0, 17, 0x8E9D, 0);
    EXPECT_EQ(panel.picture(), expected);
    item.word9 = 1;
    const PanelFile centred;
    drawText(L"192.168.1.1", 40, 60, 150, 1, 0, 17, 0x8E9D, 1);
    EXPECT_EQ(centred.picture(), pictureOf(item));
}

TEST(WidgetPlace, OfALockPadKeyIsItsRectangle) {
    WidgetRecord key{};
    key.x = 3;
    key.y = 94;
    key.width = 75;
    key.height = 45;
    key.text[0] = L'1';
    const TouchArea area = getTouchArea(key);
    EXPECT_EQ(area.left, 2);
    EXPECT_EQ(area.right, 78);
    EXPECT_EQ(area.top, 93);
    EXPECT_EQ(area.bottom, 139);
    EXPECT_TRUE(paintsExactlyItsArea(key));
    EXPECT_TRUE(matchesTextGolden(cut(panelCanvas(), {1, 92, 80, 141}), "widget-lock-key"));
}

TEST(WidgetPlace, IsWhatIsPainted) {
    for (int kind = 0; kind < KINDS; ++kind) {
        for (const int selected : {0, 1}) {
            for (const int touchable : {1, -1}) {
                WidgetRecord record = element(kind, L"A text that is too long for its field by far, \tand more");
                record.selected = selected;
                record.touchable = touchable;
                EXPECT_TRUE(paintsExactlyItsArea(record)) << kind;
                record.width = record.height = 0;
                EXPECT_TRUE(paintsExactlyItsArea(record)) << kind;
                record.width = 9;
                record.height = 5;
                EXPECT_TRUE(paintsExactlyItsArea(record)) << kind;
            }
        }
    }
}

TEST(WidgetPlace, OfRandomElementsIsWhatIsPainted) {
    std::mt19937 random(SEED);
    for (long i = 0; i < scaled(400); ++i) {
        WidgetRecord record = element(static_cast<int>(random() % 12) - 1, L"");
        for (size_t length = random() % WIDGET_TEXT_LENGTH; length > 0; --length)
            record.text[length - 1] = static_cast<wchar_t>(0x20 + random() % 0x500);
        record.x = static_cast<int>(random() % 400) - 40;
        record.y = static_cast<int>(random() % 300) - 30;
        record.width = static_cast<int>(random() % 340) - 10;
        record.height = static_cast<int>(random() % 90) - 5;
        record.fontSize = static_cast<float>(random() % 40);
        record.password = static_cast<int>(random() % 2);
        record.selected = static_cast<int>(random() % 2);
        record.word9 = static_cast<int>(random() % 2);
        record.touchable = static_cast<int>(random() % 2) - 1;
        record.colourA = static_cast<int>(random() % 2 * random());
        ASSERT_TRUE(paintsExactlyItsArea(record)) << "seed " << SEED << ", round " << i;
    }
}

TEST(WidgetPlace, WithoutASizeFitsTheText) {
    for (int kind = 0; kind < KINDS; ++kind) {
        WidgetRecord record = element(kind, L"Connect");
        record.width = record.height = 0;
        const TouchArea area = getTouchArea(record);
        EXPECT_GE(area.right - area.left - 1, textWidth(L"Connect", 20)) << kind;
        EXPECT_GE(area.bottom - area.top - 1, 20) << kind;
        record.fontSize = 20;
        const TouchArea same = getTouchArea(record);
        EXPECT_EQ(std::memcmp(&area, &same, sizeof area), 0) << kind;
        record.fontSize = 30;
        EXPECT_GT(getTouchArea(record).right, area.right) << kind;
        EXPECT_GT(getTouchArea(record).bottom, area.bottom) << kind;
    }
}

TEST(WidgetPlace, HasThePagesColourInItsCorners) {
    for (const int kind : {0, 1, 2, 3, 4, 5, 9}) {
        const Picture drawn = drawnOver(element(kind, L"Connect"), 0xF800, 0x1234);
        EXPECT_EQ(drawn.at(40, 60), 0x1234) << kind;
        EXPECT_EQ(drawn.at(189, 60), 0x1234) << kind;
        EXPECT_EQ(drawn.at(40, 95), 0x1234) << kind;
        EXPECT_EQ(drawn.at(189, 95), 0x1234) << kind;
    }
}

TEST(WidgetText, ThatBecomesShorterLeavesNothingOfTheLongerOne) {
    for (int kind = 0; kind < KINDS; ++kind) {
        for (const int width : {150, 0}) {
            WidgetRecord longer = element(kind, L"A longer text");
            WidgetRecord shorter = element(kind, L"Short");
            longer.width = shorter.width = width;
            longer.height = shorter.height = width == 0 ? 0 : 36;
            const PanelFile panel;
            lcd_clear(0x0841);
            drawWidget(longer);
            drawWidget(shorter);
            EXPECT_EQ(panel.picture(), pictureOf(shorter, 0x0841)) << kind << ", width " << width;
        }
    }
}

TEST(WidgetText, OfAnEarlierPageIsForgotten) {
    WidgetRecord longer = element(0, L"A longer text");
    WidgetRecord shorter = element(0, L"Short");
    longer.width = shorter.width = 0;
    const PanelFile panel;
    drawWidget(longer);
    lcd_clear(0);
    fillRect(130, 60, 200, 90, 0xF800); // another element, where the longer text once was
    drawWidget(shorter);
    EXPECT_EQ(panel.at(150, 70), 0xF800);
}

TEST(WidgetErasing, PaintsThePagesColourOverAllOfIt) {
    for (int kind = 0; kind < KINDS; ++kind) {
        for (const int width : {150, 0}) {
            WidgetRecord record = element(kind, L"Connect");
            record.width = width;
            const PanelFile panel;
            lcd_clear(0x2104);
            drawWidget(record);
            EXPECT_NE(panel.picture(), blankPicture(320, 240, 0x2104)) << kind;
            std::wcscpy(record.text, L"x");
            unDrawWidget(record);
            EXPECT_EQ(panel.picture(), blankPicture(320, 240, 0x2104)) << kind;
        }
    }
}

TEST(WidgetRecords, OfAnyBitsAreDrawnClipped) {
    std::mt19937 random(SEED);
    const PanelFile panel;
    for (long i = 0; i < scaled(20000); ++i) {
        WidgetRecord record{};
        auto* const bytes = reinterpret_cast<unsigned char*>(&record);
        for (size_t byte = 0; byte < sizeof record; ++byte)
            bytes[byte] = static_cast<unsigned char>(random());
        // Half of them near the panel, so that their insides are drawn too.
        if (i % 2 == 0) {
            record.x %= 300;
            record.y %= 200;
        }
        record.type = static_cast<int>(random() % 12) - 1;
        drawWidget(record);
        const TouchArea area = getTouchArea(record);
        ASSERT_LE(area.left, area.right);
        if (i % 16 == 0)
            unDrawWidget(record);
    }
}

TEST(WidgetRecords, WithoutATerminatorEndAtTheirArray) {
    WidgetRecord record = element(0, L"");
    std::wmemset(record.text, L'i', WIDGET_TEXT_LENGTH);
    record.width = 0;
    const int width = getTouchArea(record).right - getTouchArea(record).left;
    record.text[79] = 0;
    EXPECT_EQ(getTouchArea(record).right - getTouchArea(record).left, width - textWidth(L"i", 20));
}

TEST(WidgetRecords, WithOverflowingPlacesAreSafe) {
    const PanelFile panel;
    const int edges[] = {INT_MIN, INT_MIN + 1, -1, 0, 1, 319, INT_MAX - 1, INT_MAX};
    const float sizes[] = {0, -1, 1e30F, std::numeric_limits<float>::quiet_NaN()};
    for (int kind = 0; kind < KINDS; ++kind)
        for (const int x : edges)
            for (const int width : edges)
                for (const float size : sizes) {
                    WidgetRecord record = element(kind, L"Connect\tnow");
                    record.x = record.y = x;
                    record.width = record.height = width;
                    record.fontSize = size;
                    drawWidget(record);
                    const TouchArea area = getTouchArea(record);
                    ASSERT_LE(area.left, area.right);
                    unDrawWidget(record);
                }
    EXPECT_EQ(intersection(panelCanvas().clip, EVERYTHING).right, 320);
}
