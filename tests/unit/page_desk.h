// A page with two buttons, and everything around it taken over.
#ifndef OSTREL_TESTS_UNIT_PAGE_DESK_H
#define OSTREL_TESTS_UNIT_PAGE_DESK_H

#include "gui/screen.h"
#include "tests/support/fake_system.h"
#include "tests/unit/lock_desk.h"

#include <gtest/gtest.h>
#include <string>

inline void note(const char* line) {
    display().calls.emplace_back(line);
}

// A page with two buttons, "Upper" at y 60 and "Lower" at y 120, each 100x40 at x 20.
class PageDesk : public ::testing::Test {
  protected:
    PageDesk() {
        fakeSystem() = {};
        upper.callback = [] { note("upper()"); };
        lower.callback = [] { note("lower()"); };
        for (Widget* const widget : {&upper, &lower}) {
            widget->record.password = 0;
            widget->record.touchable = 1;
        }
        upper.prev = nullptr;
        upper.next = &lower;
        lower.prev = &upper;
        lower.next = nullptr;
        page.widgets = &upper;
        page.onBack = [] { note("onBack()"); };
        page.keyboard.returnHandler = [] { note("returnHandler()"); };
        fakeSleep().log = true;
        desk.take();
    }
    ~PageDesk() override { page.widgets = &upper; }

    std::string touch(int x, int y) {
        page.getTouch(x, y);
        return desk.take();
    }

    LockDesk desk;
    Widget upper{0, 20, 60, 0, 0, 0, 100, 40, 20.0F, 0, L"Upper"};
    Widget lower{0, 20, 120, 0, 0, 0, 100, 40, 20.0F, 0, L"Lower"};
    Screen page{L"Network"};
};

inline const std::string UPPER = "type 0 at 20,60 100x40 selected 0 \"Upper\")\n";
inline const std::string LOWER = "type 0 at 20,120 100x40 selected 0 \"Lower\")\n";

inline std::string pressed(const std::string& label, int y, const std::string& callback) {
    const std::string place = "drawWidget(type 0 at 20," + std::to_string(y) + " 100x40 selected ";
    std::string log = place;
    log += "1 \"" + label + "\")\nwaitForPenUp()\n";
    log += place;
    return log + "0 \"" + label + "\")\n" + callback + "()\n";
}

inline std::string readOfRtdev(const std::string& name) {
    return "open(\"/dev/apsoc_nvram\", O_RDONLY) = 700\nioctl(700, 0x1001, index 2, \"" + name + "\")\nclose(700)\n";
}

#endif
