#include "tests/support/fake_device.h"
#include "tests/support/keyboard_entry_desk.h"
#include "util/bounded_copy.h"

#include <algorithm>

namespace {

using KeyboardEntry = KeyboardEntryDesk;

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

TEST_F(KeyboardEntry, ClearsThePanelAndReturnsToTheProgram) {
    begin(1, "x");
    keyboard.unDraw();
    EXPECT_EQ(display().take(), END);
    EXPECT_EQ(keyboard.active, 0);
}

} // namespace
