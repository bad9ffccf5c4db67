// Lighting and darkening the panel, by whatever switches the machine has.
#include "display/panel.h"
#include "gui/display.h"
#include "tests/support/fake_framebuffer.h"
#include "tests/support/picture.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

using namespace ostrel;

namespace {

using Log = std::vector<std::string>;

struct PowerTest : testing::Test {
    void SetUp() override {
        fakeDevices() = {};
        fakeDevices().setScreen(320, 240, 16, 640, 0);
        fakeDevices().setChannels({11, 5, 0}, {5, 6, 0}, {0, 5, 0});
        setenv("OSTREL_FRAMEBUFFER", FAKE_FRAMEBUFFER, 1);
        reopenPanel();
    }

    uint16_t shownAt(int x, int y) const {
        uint16_t value;
        memcpy(&value, &fakeDevices().memory[static_cast<size_t>(y) * 640 + static_cast<size_t>(x) * 2], sizeof value);
        return value;
    }
};

std::string contentOf(const std::string& path) {
    std::string text;
    std::ifstream(path) >> text;
    return text;
}

} // namespace

TEST_F(PowerTest, DarkensTheLightBeforeTheScreenAndLightsItLast) {
    fakeDevices().hasBacklightDevice = true;
    turnOff();
    EXPECT_EQ(fakeDevices().log, (Log{"backlight 11 1", "blank 4"}));
    fakeDevices().log.clear();
    turnOn();
    EXPECT_EQ(fakeDevices().log, (Log{"blank 0", "backlight 10 1"}));
    EXPECT_EQ(fakeDevices().openCount, 1) << "only the framebuffer stays open";
}

TEST_F(PowerTest, ShowsAtTurnOnWhatWasDrawnInTheDark) {
    turnOff();
    fillRect(10, 10, 20, 20, 0xABCD);
    // The screen forgets its picture without power.
    std::fill(fakeDevices().memory.begin(), fakeDevices().memory.end(), uint8_t{0x55});
    turnOn();
    EXPECT_EQ(shownAt(10, 10), 0xABCD);
    EXPECT_EQ(shownAt(0, 0), 0);
    EXPECT_EQ(shownAt(319, 239), 0);
}

TEST_F(PowerTest, HasThePictureThereBeforeTheLight) {
    fakeDevices().hasBacklightDevice = true;
    turnOff();
    std::fill(fakeDevices().memory.begin(), fakeDevices().memory.end(), uint8_t{0x55});
    uint16_t shownWhenLit = 1;
    fakeDevices().beforeLog = [&] { shownWhenLit = shownAt(5, 5); };
    turnOn();
    EXPECT_EQ(shownWhenLit, 0);
}

TEST_F(PowerTest, LeavesAnotherProgramsPictureAloneWhenThePanelWasLit) {
    std::fill(fakeDevices().memory.begin(), fakeDevices().memory.end(), uint8_t{0x55});
    turnOn();
    EXPECT_EQ(shownAt(5, 5), 0x5555);
}

TEST_F(PowerTest, WritesToEveryListedBacklightWhereThereIsNoBacklightDevice) {
    const std::string lights = testing::TempDir() + "ostrel-backlights";
    for (const char* light : {"first", "second"}) {
        std::filesystem::create_directories(lights + '/' + light);
        std::ofstream(lights + '/' + light + "/bl_power") << "9";
    }
    fakeDevices().backlightClass = lights;
    turnOff();
    EXPECT_EQ(contentOf(lights + "/first/bl_power"), "4");
    EXPECT_EQ(contentOf(lights + "/second/bl_power"), "4");
    turnOn();
    EXPECT_EQ(contentOf(lights + "/first/bl_power"), "0");
    EXPECT_EQ(contentOf(lights + "/second/bl_power"), "0");
    std::filesystem::remove_all(lights);
}

TEST_F(PowerTest, PrefersTheBacklightDevice) {
    const std::string lights = testing::TempDir() + "ostrel-unused-backlight";
    std::filesystem::create_directories(lights + "/only");
    std::ofstream(lights + "/only/bl_power") << "9";
    fakeDevices().backlightClass = lights;
    fakeDevices().hasBacklightDevice = true;
    turnOff();
    EXPECT_EQ(contentOf(lights + "/only/bl_power"), "9");
    std::filesystem::remove_all(lights);
}

TEST_F(PowerTest, NeedsNoLightAtAll) {
    turnOff();
    turnOn();
    EXPECT_EQ(fakeDevices().log, (Log{"blank 4", "blank 0"}));
}
