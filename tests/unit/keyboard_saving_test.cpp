#include "lang/languages.h"
#include "tests/support/keyboard_entry_desk.h"
#include "util/bounded_copy.h"

namespace {

const char* const SAVING_NOTICE = "drawPNG(60, 60, 1, 0, 0)\n"
                                  "drawPNG(65, 65, 1, 0, 2)\n"
                                  "drawText(\"[savingl1]\", 130, 65, 130, 1, 0, 17, 65535, 1)\n"
                                  "drawText(\"[savingl2]\", 130, 85, 130, 1, 0, 17, 65535, 1)\n"
                                  "drawText(\"[savingl3]\", 130, 105, 130, 1, 0, 17, 65535, 1)\n";

const char* const COMMANDS = "system(\"killall nvram_daemon\")\n"
                             "system(\"nvram_daemon &\")\n"
                             "system(\"init_system restart&\")\n";

// 23 steps of 178 / 23 = 7 pixels.
std::string savingBar() {
    std::string calls = "disableTouch(1)\ndrawRect(70, 130, 250, 150, 65535)\n";
    for (const int right : {72,  79,  86,  93,  100, 107, 114, 121, 128, 135, 142, 149,
                            156, 163, 170, 177, 184, 191, 198, 205, 212, 219, 226}) {
        calls += "fillRect(72, 132, " + std::to_string(right) + ", 148, 65535)\n";
        if (right == 226)
            calls += "fillRect(72, 132, 248, 148, 65535)\n";
        calls += "sleep(1)\n";
    }
    return calls + "disableTouch(0)\n";
}

class ChangedSetting : public KeyboardEntryDesk {
  protected:
    // Changes the setting "key" from "old" to "old!" and presses Done.
    std::string change(bool second) {
        fakeSettings().working[1]["key"] = "old";
        fakeSettings().working[2]["key"] = "old";
        keyboard.keyboardMode(1);
        if (second)
            keyboard.drawRtdev("key");
        else
            keyboard.draw("key");
        type(L"!");
        return done();
    }
};

TEST_F(ChangedSetting, IsSavedAndCommittedUnderANoticeWithAProgressBar) {
    EXPECT_EQ(
        change(false), SAVING_NOTICE + request("0x1003, index 1, \"key\", \"old!\"") + request("0x1004, index 1") +
                           COMMANDS + savingBar() + END);
    EXPECT_EQ(fakeSettings().committed[1]["key"], "old!");
    EXPECT_STREQ(keyboard.settingValue, "old!");
    EXPECT_EQ(keyboard.active, 0);
    EXPECT_EQ(returns, 1);
    EXPECT_TRUE(saveMode);
}

TEST_F(ChangedSetting, OfTheSecondSectionIsSavedThere) {
    EXPECT_EQ(
        change(true), SAVING_NOTICE + request("0x1003, index 2, \"key\", \"old!\"") + request("0x1004, index 2") +
                          COMMANDS + savingBar() + END);
    EXPECT_EQ(fakeSettings().working[1]["key"], "old");
}

TEST_F(ChangedSetting, IsSavedButNotCommittedWhenTheProgramDefersThat) {
    keyboard.deferCommit = 1;
    EXPECT_EQ(
        change(false),
        SAVING_NOTICE + request("0x1003, index 1, \"key\", \"old!\"") + request("0x1004, index 1") + END);
    EXPECT_EQ(
        change(true), SAVING_NOTICE + request("0x1003, index 2, \"key\", \"old!\"") + request("0x1004, index 2") + END);
    EXPECT_EQ(keyboard.deferCommit, 1);
}

TEST_F(ChangedSetting, IsSavedAsASettingAlsoWhenAFreeTextWasEditedBefore) {
    keyboard.edited = 1;
    keyboard.deferCommit = 1;
    keyboard.outputText = out;
    EXPECT_NE(change(false).find("0x1003"), std::string::npos);
    EXPECT_EQ(out[0], 0);
}

TEST_F(ChangedSetting, GoesNowhereWithoutSaveModeAndWithoutAFreeTextsBuffer) {
    keyBoardSaveMode(false);
    EXPECT_EQ(change(false), END);
    EXPECT_FALSE(saveMode);
}

TEST_F(ChangedSetting, GoesToTheBufferOfTheLastFreeTextWhileSaveModeIsOff) {
    keyboard.drawText("x", out);
    keyboard.keyboardBack_onTouch();
    EXPECT_EQ(change(false), END);
    EXPECT_STREQ(out, L"old!");
    EXPECT_TRUE(saveMode);
    EXPECT_EQ(keyboard.deferCommit, 0);
}

TEST_F(ChangedSetting, IsSavedWithEmptyMessagesWithoutALanguageFile) {
    ostrel::copyText(lang.file, "/nowhere/english.xml");
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const std::string log = change(false);
    testing::internal::GetCapturedStdout();
    testing::internal::GetCapturedStderr();
    EXPECT_EQ(
        log.find("drawPNG(60, 60, 1, 0, 0)\n"
                 "drawPNG(65, 65, 1, 0, 2)\n"
                 "drawText(\"\", 130, 65, 130, 1, 0, 17, 65535, 1)\n"
                 "drawText(\"\", 130, 85, 130, 1, 0, 17, 65535, 1)\n"
                 "drawText(\"\", 130, 105, 130, 1, 0, 17, 65535, 1)\n"
                 "open("),
        0U);
    EXPECT_EQ(fakeSettings().committed[1]["key"], "old!");
}

TEST_F(ChangedSetting, IsCutBetweenCharactersWhereItsBytesExceedTheBuffer) {
    fakeSettings().working[1]["key"] = std::string(100, 'a');
    keyboard.draw("key");
    for (int i = 0; i < 50; ++i)
        keyboard.appendChar(L'\u03A9'); // two bytes
    done();
    EXPECT_EQ(
        keyboard.settingValue, std::string(100, 'a') + [] {
            std::string omegas;
            for (int i = 0; i < 39; ++i)
                omegas += "\xCE\xA9";
            return omegas;
        }());
}

} // namespace
