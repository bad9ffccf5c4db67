#include "gui/modal.h"
#include "lang/languages.h"
#include "tests/support/fake_device.h"
#include "tests/support/keyboard_desk.h"
#include "util/bounded_copy.h"

#include <cstring>

namespace {

class KeyboardEntry : public KeyboardDesk {
  protected:
    // The calls of an entry's start, without what it draws.
    std::string requestsOf(const std::string& log) { return log.substr(0, log.find("lcd_clear")); }

    // What drawing the layout again draws.
    std::string redrawn() {
        std::vector<std::string> kept;
        kept.swap(display().calls);
        const int oldWidth = keyboard.oldWidth;
        if (isNumericMode == 1) {
            keyboard.drawNumKeyboard();
        } else {
            keyboard.drawBase();
            keyboard.drawKeyboard();
        }
        keyboard.oldWidth = oldWidth;
        std::string calls = display().take();
        display().calls.swap(kept);
        return calls;
    }

    std::string done() {
        display().calls.clear();
        keyboard.doneOnTouch();
        return display().take();
    }

    // The next message is tapped away.
    void tapOnce() {
        display().pen = {{160, 120}, {-1, -1}};
        display().penRead = 0;
        fakeSleep().log = false;
    }
};

const char* const END = "lcd_clear(0)\nreturnHandler()\n";

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

std::string request(const std::string& what) {
    return "open(\"/dev/apsoc_nvram\", O_RDONLY) = 700\nioctl(700, " + what + ")\nclose(700)\n";
}

std::string message(const std::string& name, const std::string& number) {
    return "drawRoundedRectangle(60, 60, 260, 160, 0, 240)\n"
           "drawPNG(65, 85, 1, 0, 1)\n"
           "drawText(\"[" +
           name + "_l1]\", 130, 80, 130, 1, 0, 17, 65535, 1)\ndrawText(\"[" + name + "_l2]" + number +
           "\", 130, 100, 130, 1, 0, 17, 65535, 1)\ndrawText(\"[" + name +
           "_l3]\", 130, 120, 130, 1, 0, 17, 65535, 1)\n"
           "lcd_clear(0)\n";
}

TEST_F(KeyboardEntry, OfASettingReadsItFromTheMainSectionAndDrawsIt) {
    fakeSettings().working[1]["wifiName"] = "home";
    keyboard.keyboardMode(1);
    keyboard.rtdev = 1;
    isCap = 1;
    kbCapChanged = 1;
    leftShift = 1;
    keyboard.blinkCounter = 7;
    keyboard.draw("wifiName");
    const std::string log = display().take();
    EXPECT_EQ(requestsOf(log), request("0x1001, index 1, \"wifiName\""));
    EXPECT_EQ(log.substr(requestsOf(log).size()), redrawn());
    EXPECT_STREQ(keyboard.settingKey, "wifiName");
    EXPECT_STREQ(keyboard.settingValue, "home");
    EXPECT_STREQ(keyboard.text, L"home");
    EXPECT_STREQ(keyboard.initialText, L"home");
    EXPECT_EQ(keyboard.active, 1);
    EXPECT_EQ(keyboard.rtdev, 0);
    EXPECT_EQ(isCap, 0);
    EXPECT_EQ(kbCapChanged, 0);
    EXPECT_EQ(leftShift, 0);
    EXPECT_EQ(keyboard.blinkCounter, 0);
    EXPECT_TRUE(saveMode);
}

TEST_F(KeyboardEntry, OfAnRtdevSettingReadsItFromTheSecondSection) {
    fakeSettings().working[1]["ShowPass"] = "main";
    fakeSettings().working[2]["ShowPass"] = "1";
    keyboard.keyboardMode(5);
    keyboard.drawRtdev("ShowPass");
    const std::string log = display().take();
    EXPECT_EQ(requestsOf(log), request("0x1001, index 2, \"ShowPass\""));
    EXPECT_EQ(log.substr(requestsOf(log).size()), redrawn());
    EXPECT_STREQ(keyboard.text, L"1");
    EXPECT_EQ(keyboard.rtdev, 1);
}

TEST_F(KeyboardEntry, OfAFreeTextClears45CharactersOfTheBufferAndAsksNoSetting) {
    for (wchar_t& character : out)
        character = L'?';
    keyboard.keyboardMode(3);
    keyboard.rtdev = 1;
    keyboard.drawText(
        "Gr\xC3\xBC\xC3\x9F"
        "e",
        out);
    EXPECT_EQ(display().take(), redrawn());
    for (int i = 0; i < 180; ++i)
        EXPECT_EQ(out[i], i < 45 ? 0 : L'?') << i;
    EXPECT_STREQ(keyboard.text, L"Gr\u00FC\u00DFe");
    EXPECT_STREQ(keyboard.initialText, L"Gr\u00FC\u00DFe");
    EXPECT_EQ(keyboard.outputText, out);
    EXPECT_EQ(keyboard.active, 1);
    EXPECT_EQ(keyboard.deferCommit, 1);
    EXPECT_EQ(keyboard.edited, 1);
    EXPECT_FALSE(saveMode);
    EXPECT_EQ(keyboard.rtdev, 1) << "left as it was";
}

TEST_F(KeyboardEntry, LeavesWhatTheProgramSetAlone) {
    fakeSettings().working[1]["PIN"] = "1234";
    keyboard.keyboardMode(2);
    keyboard.prefixLength = 1;
    keyboard.maxLength = 2;
    keyboard.minLength = 3;
    keyboard.outputText = out;
    keyboard.draw("PIN");
    EXPECT_EQ(keyboard.prefixLength, 1);
    EXPECT_EQ(keyboard.maxLength, 2);
    EXPECT_EQ(keyboard.minLength, 3);
    EXPECT_EQ(keyboard.edited, 0);
    EXPECT_EQ(keyboard.deferCommit, 0);
    EXPECT_EQ(keyboard.outputText, out);
    EXPECT_EQ(keyboard.layoutMode, 2);
}

TEST_F(KeyboardEntry, ShowsTheEndOfALongSetting) {
    fakeSettings().working[1]["key"] = "abcdefghijklmnopqrstuvwxyz12345"; // 310 pixels: pixel 67 is the "g"
    keyboard.keyboardMode(1);
    keyboard.oldWidth = 5; // of an earlier entry
    keyboard.draw("key");
    EXPECT_NE(display().take().find("drawText(\"ghijklmnopqrstuvwxyz12345\", 50, 24"), std::string::npos);
}

TEST_F(KeyboardEntry, PrintsANumberThrownWhileItIsDrawnAndStaysActive) {
    fakeSettings().working[1]["key"] = "value";
    keyboard.keyboardMode(1);
    display().beforeCall = [](const std::string& operation) {
        if (operation == "drawPNG")
            throw 42;
    };
    const auto start = [&](int way) {
        keyboard.active = 0;
        testing::internal::CaptureStdout();
        if (way == 0)
            keyboard.draw("key");
        else if (way == 1)
            keyboard.drawRtdev("key");
        else
            keyboard.drawText("key", out);
        return testing::internal::GetCapturedStdout();
    };
    for (const int way : {0, 1, 2}) {
        EXPECT_EQ(start(way), "Draw Keyboard Exception. Number:42") << way;
        EXPECT_EQ(keyboard.active, 1) << way;
    }
    display().beforeCall = [](const std::string& operation) {
        if (operation == "drawPNG")
            throw std::string("no number");
    };
    EXPECT_THROW(keyboard.draw("key"), std::string);
    EXPECT_THROW(keyboard.drawText("key", out), std::string);
    display().beforeCall = nullptr;
}

TEST_F(KeyboardEntry, IsEmptyWhenTheSettingCannotBeRead) {
    fakeDevices().byPath["/dev/apsoc_nvram"].openError = 2;
    ostrel::copyText(keyboard.settingValue, "old");
    ostrel::copyText(keyboard.text, L"old");
    keyboard.draw("key");
    EXPECT_STREQ(keyboard.text, L"");
    EXPECT_STREQ(keyboard.settingValue, "");
}

TEST_F(KeyboardEntry, Keeps179BytesOfALongerValueAndWritesNothingBackUnchanged) {
    for (const size_t length : {178U, 179U, 180U, 1023U}) {
        fakeSettings().working[1]["key"] = std::string(length, 'v');
        keyboard.draw("key");
        EXPECT_EQ(textLen(keyboard.text), static_cast<int>(std::min<size_t>(length, 179)));
        EXPECT_EQ(keyboard.text[179], 0);
        EXPECT_EQ(done(), END);
        EXPECT_EQ(fakeSettings().working[1]["key"].size(), length);
    }
}

TEST_F(KeyboardEntry, DropsBytesThatAreNoUtf8AndWritesNothingBackUnchanged) {
    const std::string broken = "a\xFF"
                               "b\xC3"; // ends inside a character
    fakeSettings().working[1]["key"] = broken;
    keyboard.draw("key");
    EXPECT_STREQ(keyboard.text, L"ab");
    EXPECT_EQ(done(), END);
    EXPECT_EQ(fakeSettings().working[1]["key"], broken);
    // Cut at 179 bytes, inside the two of the last character.
    fakeSettings().working[1]["key"] = std::string(178, 'v') + "\xC3\xBC";
    keyboard.draw("key");
    EXPECT_EQ(std::wstring(keyboard.text), std::wstring(178, L'v'));
}

TEST_F(KeyboardEntry, CutsAKeyAtItsBufferAndTakesNullForAnEmptyOne) {
    for (const size_t length : {179U, 180U, 2000U}) {
        keyboard.draw(std::string(length, 'k').c_str());
        EXPECT_EQ(std::string(keyboard.settingKey), std::string(179, 'k'));
        keyboard.drawText(std::string(length, 'k').c_str(), out);
        EXPECT_EQ(std::wstring(keyboard.text), std::wstring(179, L'k'));
    }
    keyboard.draw(static_cast<char*>(nullptr));
    EXPECT_STREQ(keyboard.settingKey, "");
    keyboard.drawText(static_cast<char*>(nullptr), nullptr);
    EXPECT_STREQ(keyboard.text, L"");
    type(L"x");
    EXPECT_EQ(done(), END);
}

class ChangedSetting : public KeyboardEntry {
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

TEST_F(KeyboardEntry, UnchangedSavesNothingInAnyMode) {
    fakeSettings().working[1]["key"] = "old";
    for (const bool save : {true, false})
        for (const unsigned char edited : {static_cast<unsigned char>(0), static_cast<unsigned char>(1)})
            for (const bool second : {true, false}) {
                keyboard.keyboardMode(1);
                keyBoardSaveMode(save);
                keyboard.edited = edited;
                keyboard.outputText = out;
                fakeSettings().working[2]["key"] = "old";
                out[0] = L'?';
                if (second)
                    keyboard.drawRtdev("key");
                else
                    keyboard.draw("key");
                EXPECT_EQ(done(), END);
                EXPECT_EQ(saveMode, save);
                EXPECT_EQ(out[0], !save && edited != 0 ? L'o' : L'?');
            }
}

TEST_F(KeyboardEntry, OfAChangedFreeTextCopiesItAndTurnsSavingOnAgain) {
    begin(1, "old");
    for (wchar_t& character : out)
        character = L'?';
    type(L"!");
    EXPECT_EQ(done(), END);
    EXPECT_EQ(std::wstring(out, 6), std::wstring(L"old!\0?", 6)) << "nothing is written behind the terminator";
    EXPECT_TRUE(saveMode);
    EXPECT_EQ(keyboard.deferCommit, 0);
    EXPECT_EQ(keyboard.edited, 1);
    EXPECT_EQ(returns, 1);
}

TEST_F(KeyboardEntry, OfAnUnchangedFreeTextCopiesItAndLeavesSavingOff) {
    begin(1, "old");
    for (wchar_t& character : out)
        character = L'?';
    EXPECT_EQ(done(), END);
    EXPECT_EQ(std::wstring(out, 5), std::wstring(L"old\0?", 5));
    EXPECT_FALSE(saveMode);
    EXPECT_EQ(keyboard.deferCommit, 1);
}

TEST_F(KeyboardEntry, CopiesAFreeTextIntoABufferThatIsJustLongEnough) {
    const std::wstring text(60, L'x');
    std::vector<wchar_t> exact(61, L'?');
    keyboard.keyboardMode(1);
    keyboard.drawText(std::string(60, 'x').c_str(), exact.data());
    EXPECT_EQ(done(), END);
    EXPECT_EQ(exact.data(), text);
}

TEST_F(KeyboardEntry, CopiesAFreeTextThatFillsTheKeyboard) {
    begin(1, std::string(178, 'x').c_str());
    type(L"y");
    EXPECT_EQ(done(), END);
    EXPECT_EQ(out, std::wstring(178, L'x') + L'y');
}

TEST_F(KeyboardEntry, SavesTheNextSettingAfterAChangedFreeText) {
    begin(1, "old");
    type(L"!");
    done();
    fakeSettings().working[1]["key"] = "value";
    keyboard.draw("key");
    type(L"s");
    EXPECT_NE(done().find("ioctl(700, 0x1003, index 1, \"key\", \"values\")"), std::string::npos);
}

TEST_F(KeyboardEntry, GivesTheInitialFreeTextBackWhenItIsCancelled) {
    begin(1, "old");
    for (wchar_t& character : out)
        character = L'?';
    type(L"!");
    keyboard.keyboardBack_onTouch();
    EXPECT_EQ(display().take(), END);
    EXPECT_EQ(std::wstring(out, 5), std::wstring(L"old\0?", 5));
    EXPECT_FALSE(saveMode);
    EXPECT_EQ(keyboard.edited, 1);
    EXPECT_EQ(keyboard.outputText, out);
}

TEST_F(KeyboardEntry, ChangesNothingWhenASettingIsCancelled) {
    fakeSettings().working[1]["key"] = "old";
    keyboard.keyboardMode(1);
    keyboard.outputText = out;
    out[0] = L'?';
    for (const bool save : {true, false}) {
        keyBoardSaveMode(save);
        keyboard.edited = save ? 1 : 0;
        keyboard.draw("key");
        type(L"!");
        keyboard.keyboardBack_onTouch();
        EXPECT_EQ(display().take(), END);
        EXPECT_EQ(out[0], L'?');
        EXPECT_EQ(fakeSettings().working[1]["key"], "old");
    }
}

class RefusedText : public KeyboardEntry {};

TEST_F(RefusedText, IsAnyNumberOfCharactersBeyondTheLimitsWithoutThePrefix) {
    const struct {
        int max, min, prefix;
        const char* text;
        const char* message; // null: accepted
        const char* number;
    } cases[] = {
        {0, 0, 0, "", nullptr, ""},
        {0, 0, 0, "1234567890", nullptr, ""},
        {-1, -1, 0, "12345", nullptr, ""},
        {6, 0, 0, "123456", nullptr, ""},
        {6, 0, 0, "1234567", "less_than_6", " 6"},
        {1, 0, 0, "1", nullptr, ""},
        {1, 0, 0, "12", "less_than_6", " 1"},
        {6, 0, 3, "123456789", nullptr, ""},
        {6, 0, 3, "1234567890", "less_than_6", " 6"},
        {0, 2, 0, "12", nullptr, ""},
        {0, 2, 0, "1", "more_than_2", " 2"},
        {0, 2, 0, "", "more_than_2", " 2"},
        {0, 2, 3, "1234", "more_than_2", " 2"},
        {0, 2, 3, "12345", nullptr, ""},
        {0, 2, 3, "1", "more_than_2", " 2"},
        {2, 3, 0, "123", "less_than_6", " 2"},
        {2, 3, 0, "12", "more_than_2", " 3"},
    };
    for (const int mode : {1, 3, 2}) {
        for (const auto& limit : cases) {
            keyboard.maxLength = limit.max;
            keyboard.minLength = limit.min;
            keyboard.prefixLength = limit.prefix;
            begin(mode, limit.text);
            tapOnce();
            const std::string again = redrawn();
            const std::string expected = limit.message == nullptr ? END : message(limit.message, limit.number) + again;
            EXPECT_EQ(done(), expected) << limit.text << " with " << limit.max << " and " << limit.min;
            EXPECT_EQ(keyboard.active, limit.message == nullptr ? 0 : 1);
            EXPECT_EQ(shown(), limit.text);
        }
    }
}

TEST_F(RefusedText, IsWhatIsNoAddressInTheAddressLayoutOnly) {
    const struct {
        const char* text;
        bool address;
    } cases[] = {{"192.168.1.1", true}, {"0.0.0.0", true},   {"255.255.255.255", true}, {"192.168.1", false},
                 {"256.1.1.1", false},  {"1.2.3.4.", false}, {"1.2.3.4.5", false},      {"", false},
                 {"1..2.3", false},     {"1.2.3.4 ", false}};
    for (const auto& entry : cases) {
        begin(7, entry.text);
        tapOnce();
        const std::string again = redrawn();
        EXPECT_EQ(done(), entry.address ? END : message("valid_ip", "") + again) << entry.text;
        for (const int mode : {0, 2, 5, 1}) {
            begin(mode, entry.text);
            EXPECT_EQ(done(), END) << entry.text;
        }
    }
}

TEST_F(RefusedText, IsAskedForTheAddressWithItsPrefix) {
    keyboard.prefixLength = 8;
    begin(7, "192.168.1.1");
    EXPECT_EQ(done(), END);
}

std::wstring validated;
bool verdict = true;

bool validate(wchar_t* text) {
    validated = text;
    display().calls.emplace_back("validation");
    return verdict;
}

TEST_F(RefusedText, IsWhatTheProgramsFunctionRefusesWithoutAMessage) {
    setKeyboardValidationFunction(validate);
    keyboard.prefixLength = 2;
    for (const int mode : {1, 3, 2}) {
        begin(mode, "a@b.c");
        verdict = false;
        const std::string again = redrawn();
        EXPECT_EQ(done(), "validation\n" + again);
        EXPECT_EQ(validated, L"a@b.c") << "the whole text";
        EXPECT_EQ(keyboard.active, 1);
        verdict = true;
        EXPECT_EQ(done(), std::string("validation\n") + END);
    }
    keyboard.prefixLength = 0;
    begin(7, "1.2.3.4");
    verdict = false;
    EXPECT_EQ(done(), "validation\n" + redrawn());
    EXPECT_EQ(keyboardValidation, validate) << "it stays";
}

TEST_F(RefusedText, IsNotShownToTheProgramsFunctionBeforeItsLengthAndAddressAreRight) {
    setKeyboardValidationFunction(validate);
    keyboard.maxLength = 3;
    begin(1, "1234");
    tapOnce();
    EXPECT_EQ(done().find("validation"), std::string::npos);
    keyboard.maxLength = 0;
    begin(7, "1234");
    tapOnce();
    EXPECT_EQ(done().find("validation"), std::string::npos);
}

TEST_F(RefusedText, CanBeCorrectedAndAccepted) {
    keyboard.maxLength = 2;
    begin(1, "abc");
    tapOnce();
    done();
    keyboard.deleteChar();
    EXPECT_EQ(done(), END);
    EXPECT_STREQ(out, L"ab");
}

TEST_F(RefusedText, ShowsItsMessageWithoutALanguageFileToo) {
    ostrel::copyText(lang.file, "/nowhere/english.xml");
    keyboard.maxLength = 2;
    begin(1, "abc");
    tapOnce();
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const std::string log = done();
    testing::internal::GetCapturedStdout();
    testing::internal::GetCapturedStderr();
    EXPECT_EQ(
        log.find("drawRoundedRectangle(60, 60, 260, 160, 0, 240)\n"
                 "drawPNG(65, 85, 1, 0, 1)\n"
                 "drawText(\"\", 130, 80, 130, 1, 0, 17, 65535, 1)\n"
                 "drawText(\" 2\", 130, 100, 130, 1, 0, 17, 65535, 1)\n"
                 "drawText(\"\", 130, 120, 130, 1, 0, 17, 65535, 1)\n"),
        0U);
    EXPECT_EQ(keyboard.active, 1);
}

TEST_F(KeyboardEntry, ClearsThePanelAndReturnsToTheProgram) {
    begin(1, "x");
    keyboard.unDraw();
    EXPECT_EQ(display().take(), END);
    EXPECT_EQ(keyboard.active, 0);
}

} // namespace
