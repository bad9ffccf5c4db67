#include "tests/unit/settings/pages_desk.h"

#include <cerrno>
#include <cwchar>

namespace {

// Middles of what is touched.
void pressBack() {
    touchPage(28, 22);
}

class WifiPage : public PagesDesk {
  protected:
    WifiPage() {
        touch(82, 77);
        display().calls.clear();
    }
    static void touchName() { touch(210, 63); }
    static void chooseOpen() { touch(60, 101); }
    static void chooseWpa3() { touch(268, 101); }
    static void touchPassword() { touch(210, 139); }
    static void switchShow() { touch(160, 177); }
    static void touchSave() { touch(160, 218); }
};

TEST_F(WifiPage, StoresAllItsChangesAtOnce) {
    touchName();
    typeInstead(L"Home");
    chooseWpa3();
    touchPassword();
    typeInstead(L"correct horse");
    switchShow();
    EXPECT_EQ(stored(), "");
    touchSave();
    EXPECT_EQ(
        stored(), "ioctl(700, 0x1003, index 1, \"WifiName\", \"Home\")\n"
                  "ioctl(700, 0x1003, index 1, \"WifiPassword\", \"correct horse\")\n"
                  "ioctl(700, 0x1003, index 1, \"WifiSecurity\", \"wpa3\")\n"
                  "ioctl(700, 0x1003, index 2, \"ShowPass\", \"1\")\n"
                  "ioctl(700, 0x1004, index 1)\n"
                  "ioctl(700, 0x1004, index 2)\n" +
                      std::string(RESTART));
    EXPECT_EQ(fakeSettings().working, fakeSettings().committed);
    EXPECT_EQ(&shownPage(), &wifiPage);
}

TEST_F(WifiPage, HasNothingToSaveBeforeAChange) {
    touchSave();
    EXPECT_EQ(display().take(), "");
    switchShow();
    switchShow();
    display().calls.clear();
    touchSave();
    EXPECT_EQ(display().take(), "");
}

TEST_F(WifiPage, ShowsThePasswordAtOnceAndAsStoredLater) {
    switchShow();
    EXPECT_EQ(callsWith({"setShowPasswords"}), "setShowPasswords(true)\n");
    redrawPage(); // by the stored setting at first
    EXPECT_EQ(callsWith({"setShowPasswords"}), "setShowPasswords(false)\nsetShowPasswords(true)\n");
    switchShow();
    EXPECT_EQ(callsWith({"setShowPasswords"}), "setShowPasswords(false)\n");
}

TEST_F(WifiPage, RefusesWpaWithAPasswordThatIsTooShort) {
    fakeSettings().working[1]["WifiPassword"] = "1234567";
    fakeSettings().working[1]["WifiSecurity"] = "open";
    showPage(wifiPage);
    chooseWpa3();
    display().calls.clear();
    tapAwayNext();
    touchSave();
    EXPECT_EQ(
        said(), "drawText(\"The password needs\", 130, 80, 130, 1, 0, 17, 65535, 1)\n"
                "drawText(\"at least eight\", 130, 100, 130, 1, 0, 17, 65535, 1)\n"
                "drawText(\"characters.\", 130, 120, 130, 1, 0, 17, 65535, 1)\n");
    touchPassword();
    typeInstead(L"12345678");
    touchSave();
    EXPECT_EQ(fakeSettings().committed[1]["WifiSecurity"], "wpa3");
    EXPECT_EQ(fakeSettings().committed[1]["WifiPassword"], "12345678");
}

TEST_F(WifiPage, AsksForNoPasswordOfAnOpenNetwork) {
    fakeSettings().working[1]["WifiPassword"] = "short";
    showPage(wifiPage);
    chooseOpen();
    display().calls.clear();
    touchPassword();
    EXPECT_EQ(display().take(), "");
    touchSave();
    EXPECT_EQ(fakeSettings().committed[1]["WifiSecurity"], "open");
}

TEST_F(WifiPage, RefusesANameOfMoreThan32BytesInItsEntry) {
    touchName();
    display().calls.clear();
    tapAwayNext();
    typeInstead(L"ααααααααααααααααx"); // 17 letters, 33 bytes
    EXPECT_NE(said().find("\"Name too long:\""), std::string::npos);
    EXPECT_EQ(shownPage().screen->keyboard.active, 1);
    shownPage().screen->keyboard.deleteChar();
    shownPage().screen->keyboard.doneOnTouch();
    touchSave();
    EXPECT_EQ(fakeSettings().committed[1]["WifiName"], "αααααααααααααααα");
}

TEST_F(WifiPage, StoresNoNetworkWhoseNameOthersGotWrong) {
    const std::pair<const char*, const char*> refusals[] = {
        {"", "drawText(\"The network has\", 130, 80, 130, 1, 0, 17, 65535, 1)\n"
             "drawText(\"no name. Please\", 130, 100, 130, 1, 0, 17, 65535, 1)\n"
             "drawText(\"enter one.\", 130, 120, 130, 1, 0, 17, 65535, 1)\n"},
        {"123456789012345678901234567890123", "drawText(\"Name too long:\", 130, 80, 130, 1, 0, 17, 65535, 1)\n"
                                              "drawText(\"letters such as é\", 130, 100, 130, 1, 0, 17, 65535, 1)\n"
                                              "drawText(\"count twice.\", 130, 120, 130, 1, 0, 17, 65535, 1)\n"},
    };
    for (const auto& [name, refusal] : refusals) {
        fakeSettings().working[1]["WifiName"] = name;
        fakeSettings().committed = fakeSettings().working;
        showPage(wifiPage);
        chooseOpen();
        display().calls.clear();
        tapAwayNext();
        touchSave();
        EXPECT_EQ(said(), refusal) << name;
        EXPECT_EQ(fakeSettings().working, fakeSettings().committed) << name;
        touchName();
        typeInstead(L"Home");
        touchSave();
        EXPECT_EQ(fakeSettings().committed[1]["WifiName"], "Home");
        EXPECT_EQ(fakeSettings().committed[1]["WifiSecurity"], "open");
        fakeSettings().working[1]["WifiSecurity"] = "wpa2";
    }
}

TEST_F(WifiPage, AsksBeforeChangesAreLost) {
    switchShow();
    pressBack();
    EXPECT_EQ(&shownPage(), &confirmPage);
    touch(160, 211); // keep editing
    EXPECT_EQ(&shownPage(), &wifiPage);
    display().calls.clear();
    touch(67, 22); // home
    EXPECT_EQ(&shownPage(), &confirmPage);
    pressBack();
    EXPECT_EQ(&shownPage(), &wifiPage);
    pressBack();
    touch(160, 163); // discard
    EXPECT_EQ(&shownPage(), &homePage);
    EXPECT_EQ(stored(), "");
    touch(82, 77);
    EXPECT_EQ(callsWith({"selected 1"}).find("Show password"), std::string::npos);
    pressBack();
    EXPECT_EQ(&shownPage(), &homePage);
}

TEST_F(WifiPage, KeepsTheDraftsOfACancelledEntry) {
    touchName();
    shownPage().screen->keyboard.appendChar(L'x');
    shownPage().screen->keyboard.keyboardBack_onTouch();
    EXPECT_EQ(&shownPage(), &wifiPage);
    EXPECT_EQ(stored(), "");
    pressBack();
    EXPECT_EQ(&shownPage(), &homePage);
}

TEST_F(WifiPage, CancelsAnOpenEntryWhenThePanelIsUnlocked) {
    touchName();
    EXPECT_EQ(shownPage().screen->keyboard.active, 1);
    display().calls.clear();
    unlockPage();
    EXPECT_EQ(shownPage().screen->keyboard.active, 0);
    EXPECT_NE(callsWith({"drawFontBigWhiteString"}).find("\"Wi-Fi\""), std::string::npos);
    unlockPage();
    EXPECT_NE(callsWith({"drawFontBigWhiteString"}).find("\"Wi-Fi\""), std::string::npos);
}

TEST_F(WifiPage, SaysWhenTheRouterCouldNotSave) {
    switchShow();
    fakeSettings().refusal = EIO;
    display().calls.clear();
    tapAwayNext();
    touchSave();
    EXPECT_NE(said().find("\"The router could\""), std::string::npos);
    fakeSettings().refusal = 0;
    touchSave();
    EXPECT_EQ(fakeSettings().committed[2]["ShowPass"], "1");
}

class NetworkPage : public PagesDesk {
  protected:
    NetworkPage() {
        touch(238, 77);
        display().calls.clear();
    }
    static void switchDhcp() { touch(160, 63); }
    static void touchAddress() { touch(160, 101); }
    static void touchMask() { touch(160, 139); }
    static void touchGateway() { touch(160, 177); }
    static void touchSave() { touch(160, 218); }

    static std::string refusal() {
        display().calls.clear();
        tapAwayNext();
        touchSave();
        const std::string text = said();
        EXPECT_EQ(fakeSettings().working, fakeSettings().committed);
        return text.substr(0, text.find(','));
    }
};

TEST_F(NetworkPage, StoresOnlyWhatChanged) {
    touchAddress();
    typeInstead(L"10.1.2.3");
    touchGateway();
    typeInstead(L"10.1.2.254");
    touchSave();
    EXPECT_EQ(
        stored(), "ioctl(700, 0x1003, index 1, \"IPAddress\", \"10.1.2.3\")\n"
                  "ioctl(700, 0x1003, index 1, \"Gateway\", \"10.1.2.254\")\n"
                  "ioctl(700, 0x1004, index 1)\n" +
                      std::string(RESTART));
}

TEST_F(NetworkPage, RefusesAMaskWithGapsInItsEntry) {
    touchMask();
    display().calls.clear();
    tapAwayNext();
    typeInstead(L"255.0.255.0");
    EXPECT_NE(said().find("\"This is not a\""), std::string::npos);
    EXPECT_EQ(shownPage().screen->keyboard.active, 1);
    typeInstead(L"255.0.0.0");
    EXPECT_EQ(shownPage().screen->keyboard.active, 0);
    touchSave();
    EXPECT_EQ(fakeSettings().committed[1]["NetMask"], "255.0.0.0");
}

TEST_F(NetworkPage, RefusesAddressesThatDoNotFitTogether) {
    touchGateway();
    typeInstead(L"10.0.0.1");
    EXPECT_EQ(refusal(), "drawText(\"The gateway is not\"");
    touchGateway();
    typeInstead(L"192.168.1.1");
    EXPECT_EQ(refusal(), "drawText(\"The gateway must\"");
    touchAddress();
    typeInstead(L"192.168.1.255");
    EXPECT_EQ(refusal(), "drawText(\"This address means\"");
    touchAddress();
    typeInstead(L"127.0.0.1");
    EXPECT_EQ(refusal(), "drawText(\"The router cannot\"");
    touchAddress();
    typeInstead(L"192.168.1.2");
    touchSave();
    EXPECT_EQ(fakeSettings().committed[1]["IPAddress"], "192.168.1.2");
    EXPECT_EQ(fakeSettings().committed[1]["Gateway"], "192.168.1.1");
}

TEST_F(NetworkPage, StoresNoAddressesThatAreNotInUse) {
    touchGateway();
    typeInstead(L"10.0.0.1");
    switchDhcp();
    display().calls.clear();
    touchAddress();
    touchMask();
    touchGateway();
    EXPECT_EQ(display().take(), "");
    touchSave();
    EXPECT_EQ(
        stored(), "ioctl(700, 0x1003, index 1, \"DHCP\", \"1\")\nioctl(700, 0x1004, index 1)\n" + std::string(RESTART));
    switchDhcp();
    EXPECT_NE(callsWith({"Gateway"}).find("192.168.1.254"), std::string::npos);
}

TEST_F(NetworkPage, HasNothingToSaveOnceItIsAutomaticAgain) {
    fakeSettings().working[1]["DHCP"] = "1";
    showPage(networkPage);
    switchDhcp();
    touchGateway();
    typeInstead(L"192.168.1.7");
    switchDhcp();
    display().calls.clear();
    touchSave();
    EXPECT_EQ(display().take(), "");
    pressBack();
    EXPECT_EQ(&shownPage(), &homePage);
}

TEST_F(NetworkPage, AsksForAddressesThatAreMissing) {
    fakeSettings().working[1]["Gateway"] = "";
    fakeSettings().working[1]["DHCP"] = "1";
    fakeSettings().committed = fakeSettings().working;
    showPage(networkPage);
    switchDhcp();
    EXPECT_EQ(refusal(), "drawText(\"Please fill in\"");
}

class PagesTexts : public PagesDesk {};

TEST_F(PagesTexts, AreThoseOfTheLanguageFileAndTheirKeysWithoutAny) {
    std::snprintf(lang.file, sizeof lang.file, "/nowhere/klingon.xml");
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    homePage.retext();
    testing::internal::GetCapturedStdout();
    testing::internal::GetCapturedStderr();
    EXPECT_STREQ(homePage.screen->title, L"home_title"); // nor is there an English file on this desk
    std::snprintf(lang.file, sizeof lang.file, "%s", OSTREL_LANGUAGES "/greek.xml");
    homePage.retext();
    EXPECT_STREQ(homePage.screen->title, L"Ρυθμίσεις");
    std::snprintf(lang.file, sizeof lang.file, "%s", OSTREL_LANGUAGES "/english.xml");
    homePage.retext();
    EXPECT_STREQ(homePage.screen->title, L"Settings");
}

} // namespace
