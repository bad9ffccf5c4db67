#include "apps/settings/store.h"
#include "tests/unit/settings/pages_desk.h"

#include <cerrno>

namespace {

class ChangesOfSettings : public PagesDesk {
  protected:
    Batch batch;
};

std::string request(const std::string& what) {
    return "open(\"/dev/apsoc_nvram\", O_RDONLY) = 700\nioctl(700, " + what + ")\nclose(700)\n";
}

const char* const NOTICE = "drawPNG(60, 60, 1, 0, 0)\n"
                           "drawPNG(65, 65, 1, 0, 1)\n"
                           "drawText(\"Saving…\", 130, 65, 130, 1, 0, 17, 65535, 1)\n"
                           "drawText(\"Please wait and do\", 130, 85, 130, 1, 0, 17, 65535, 1)\n"
                           "drawText(\"not switch off.\", 130, 105, 130, 1, 0, 17, 65535, 1)\n";

// 20 steps of 178 / 20 = 8 pixels.
std::string bar() {
    std::string calls = "disableTouch(1)\ndrawRect(70, 130, 250, 150, 65535)\n";
    for (const int right :
         {72, 80, 88, 96, 104, 112, 120, 128, 136, 144, 152, 160, 168, 176, 184, 192, 200, 208, 216, 224}) {
        calls += "fillRect(72, 132, " + std::to_string(right) + ", 148, 65535)\n";
        if (right == 224)
            calls += "fillRect(72, 132, 248, 148, 65535)\n";
        calls += "sleep(1)\n";
    }
    return calls + "disableTouch(0)\n";
}

TEST_F(ChangesOfSettings, AreReadOnceAndStoredAsOneBatch) {
    fakeSleep().log = true;
    EXPECT_EQ(batch.get(setting::WIFI_NAME), "Ostrel");
    EXPECT_EQ(batch.get(setting::WIFI_NAME), "Ostrel");
    EXPECT_EQ(batch.get(setting::WIFI_PASSWORD), "change-me-soon");
    EXPECT_FALSE(batch.isOn(setting::SHOW_PASSWORDS));
    EXPECT_EQ(
        display().take(), request("0x1001, index 1, \"WifiName\"") + request("0x1001, index 1, \"WifiPassword\"") +
                              request("0x1001, index 2, \"ShowPass\""));
    batch.set(setting::WIFI_NAME, "Home");
    batch.setOn(setting::SHOW_PASSWORDS, true);
    batch.set(setting::ADDRESS, "10.0.0.1");
    EXPECT_TRUE(batch.changed());
    EXPECT_EQ(display().take(), request("0x1001, index 1, \"IPAddress\""));

    EXPECT_TRUE(batch.store());
    EXPECT_EQ(
        display().take(), std::string(NOTICE) + request("0x1003, index 1, \"WifiName\", \"Home\"") +
                              request("0x1003, index 2, \"ShowPass\", \"1\"") +
                              request("0x1003, index 1, \"IPAddress\", \"10.0.0.1\"") +
                              request("0x1001, index 1, \"WifiName\"") + request("0x1001, index 2, \"ShowPass\"") +
                              request("0x1001, index 1, \"IPAddress\"") + request("0x1004, index 1") +
                              request("0x1004, index 2") + RESTART + bar());
    EXPECT_EQ(fakeSettings().committed[1]["WifiName"], "Home");
    EXPECT_EQ(fakeSettings().committed[2]["ShowPass"], "1");
    EXPECT_FALSE(batch.changed());
    EXPECT_EQ(batch.get(setting::WIFI_NAME), "Home");
    EXPECT_TRUE(batch.store());
    EXPECT_EQ(display().take(), "");
}

TEST_F(ChangesOfSettings, SaveOnlyTheSectionThatTheyConcern) {
    batch.set(setting::WIFI_NAME, "Home");
    batch.get(setting::SHOW_PASSWORDS);
    EXPECT_TRUE(batch.store());
    EXPECT_EQ(
        stored(),
        "ioctl(700, 0x1003, index 1, \"WifiName\", \"Home\")\nioctl(700, 0x1004, index 1)\n" + std::string(RESTART));
    batch.setOn(setting::SHOW_PASSWORDS, true);
    EXPECT_TRUE(batch.store());
    EXPECT_EQ(
        stored(),
        "ioctl(700, 0x1003, index 2, \"ShowPass\", \"1\")\nioctl(700, 0x1004, index 2)\n" + std::string(RESTART));
}

TEST_F(ChangesOfSettings, AreNoneWhenTheDraftIsWhatIsStored) {
    batch.set(setting::WIFI_NAME, "Home");
    batch.set(setting::WIFI_NAME, "Ostrel");
    batch.set(setting::MASK, "255.0.0.0");
    batch.revert(setting::MASK);
    EXPECT_FALSE(batch.changed());
    EXPECT_EQ(batch.get(setting::MASK), "255.255.255.0");
    display().calls.clear();
    EXPECT_TRUE(batch.store());
    EXPECT_EQ(display().take(), "");
}

TEST_F(ChangesOfSettings, LeaveTheStoreAloneWhenTheyAreDiscarded) {
    batch.set(setting::WIFI_NAME, "Home");
    batch.discard();
    EXPECT_FALSE(batch.changed());
    fakeSettings().working[1]["WifiName"] = "Elsewhere";
    EXPECT_EQ(batch.get(setting::WIFI_NAME), "Elsewhere");
    EXPECT_EQ(stored(), "");
}

TEST_F(ChangesOfSettings, ArePutBackAndKeptAsDraftsWhenTheDeviceDoesNotTakeThemAll) {
    batch.set(setting::WIFI_NAME, "Home");
    batch.set(setting::ADDRESS, "10.0.0.1");
    display().calls.clear();
    callLog().failCall(5); // open and request of the first setting; close; and open; then the second request
    EXPECT_FALSE(batch.store());
    EXPECT_TRUE(callLog().failureWasMet());
    EXPECT_EQ(
        stored(), "ioctl(700, 0x1003, index 1, \"WifiName\", \"Home\")\n"
                  "ioctl(700, 0x1003, index 1, \"IPAddress\", \"10.0.0.1\") = -1 EIO\n"
                  "ioctl(700, 0x1003, index 1, \"WifiName\", \"Ostrel\")\n"
                  "ioctl(700, 0x1003, index 1, \"IPAddress\", \"192.168.1.1\")\n");
    EXPECT_EQ(fakeSettings().working, fakeSettings().committed);
    EXPECT_TRUE(batch.changed());
    EXPECT_EQ(batch.get(setting::WIFI_NAME), "Home");
}

TEST_F(ChangesOfSettings, FailWithoutADevice) {
    batch.set(setting::WIFI_NAME, "Home");
    fakeSettings().refusal = EIO;
    EXPECT_FALSE(batch.store());
    EXPECT_TRUE(batch.changed());
    EXPECT_EQ(callsWith({"system(", "disableTouch"}), "");
}

} // namespace
