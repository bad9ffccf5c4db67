// The PIN's page: the order of the entries, what they refuse, and that nothing is stored before the last.
#include "tests/unit/settings/pages_desk.h"

#include <cerrno>

namespace {

class PinPage : public PagesDesk {
  protected:
    PinPage() { open(""); }
    ~PinPage() override {
        if (isTyping())
            shownPage().screen->keyboard.keyboardBack_onTouch();
    }

    static void open(const std::string& pin) {
        fakeSettings().working[1]["PIN"] = pin;
        fakeSettings().committed = fakeSettings().working;
        goHome();
        touch(82, 141);
        touch(96, 215);
        display().calls.clear();
    }
    static void touchCurrent() { touch(160, 108); }
    static void touchNew() { touch(160, 158); }
    static void touchRepeated() { touch(160, 208); }
    static bool isTyping() { return shownPage().screen->keyboard.active != 0; }

    // The fields as the page draws them.
    static std::string fields() {
        display().calls.clear();
        redrawPage();
        return callsWith({"type 2"});
    }

    static std::string refusalOf(const wchar_t* text) {
        display().calls.clear();
        tapAwayNext();
        typeInstead(text);
        return callsWith({"17, 65535, 1)"}); // what is typed is drawn in another size
    }
};

TEST_F(PinPage, TakesANewPinTwiceWhereThereIsNone) {
    EXPECT_EQ(&shownPage(), &pinPage);
    touchCurrent();
    EXPECT_FALSE(isTyping());
    touchRepeated();
    EXPECT_FALSE(isTyping());
    touchNew();
    typeInstead(L"2580");
    touchRepeated();
    EXPECT_EQ(stored(), "");
    typeInstead(L"2580");
    EXPECT_EQ(
        stored(), "ioctl(700, 0x1003, index 1, \"PIN\", \"2580\")\n"
                  "ioctl(700, 0x1004, index 1)\n" +
                      std::string(RESTART));
    EXPECT_EQ(fakeSettings().committed[1]["PIN"], "2580");
    EXPECT_EQ(&shownPage(), &screenPage);
}

TEST_F(PinPage, AsksForTheCurrentPinFirst) {
    open("1357");
    touchNew();
    EXPECT_FALSE(isTyping());
    touchCurrent();
    typeInstead(L"1357");
    touchCurrent();
    EXPECT_FALSE(isTyping());
    touchNew();
    typeInstead(L"2580");
    touchRepeated();
    typeInstead(L"2580");
    EXPECT_EQ(fakeSettings().committed[1]["PIN"], "2580");
}

TEST_F(PinPage, ReplacesWhatThePadCannotTypeWithoutAskingForIt) {
    for (const char* const pin : {"12ab", "258", "25800"}) {
        open(pin);
        EXPECT_NE(fields().find("\"Current PIN\tnone\""), std::string::npos) << pin;
        touchCurrent();
        EXPECT_FALSE(isTyping()) << pin;
        touchNew();
        typeInstead(L"2580");
        touchRepeated();
        typeInstead(L"2580");
        EXPECT_EQ(fakeSettings().committed[1]["PIN"], "2580") << pin;
        EXPECT_EQ(&shownPage(), &screenPage) << pin;
    }
}

TEST_F(PinPage, MasksWhatWasEntered) {
    open("1357");
    touchCurrent();
    typeInstead(L"1357");
    touchNew();
    typeInstead(L"2580");
    EXPECT_EQ(
        fields(), "drawWidget(type 2 at 8,86 304x44 selected 0 \"Current PIN\t••••\")\n"
                  "drawWidget(type 2 at 8,136 304x44 selected 0 \"New PIN\t••••\")\n"
                  "drawWidget(type 2 at 8,186 304x44 selected 0 \"Repeat the new PIN\")\n");
}

TEST_F(PinPage, RefusesAWrongCurrentPinAndGivesUpAfterTheThird) {
    open("1357");
    touchCurrent();
    const std::string wrong = "drawText(\"This is not the\", 130, 80, 130, 1, 0, 17, 65535, 1)\n"
                              "drawText(\"current PIN.\", 130, 100, 130, 1, 0, 17, 65535, 1)\n"
                              "drawText(\"Please try again.\", 130, 120, 130, 1, 0, 17, 65535, 1)\n";
    EXPECT_EQ(refusalOf(L"1358"), wrong);
    EXPECT_TRUE(isTyping());
    EXPECT_EQ(textLen(shownPage().screen->keyboard.text), 0);
    EXPECT_EQ(refusalOf(L"135"), wrong);
    EXPECT_TRUE(isTyping());
    EXPECT_EQ(
        refusalOf(L"0000"), "drawText(\"Wrong three\", 130, 80, 130, 1, 0, 17, 65535, 1)\n"
                            "drawText(\"times. The PIN\", 130, 100, 130, 1, 0, 17, 65535, 1)\n"
                            "drawText(\"stays as it is.\", 130, 120, 130, 1, 0, 17, 65535, 1)\n");
    EXPECT_FALSE(isTyping());
    EXPECT_EQ(&shownPage(), &screenPage);
    EXPECT_EQ(fakeSettings().committed[1]["PIN"], "1357");
}

TEST_F(PinPage, RefusesWhatIsNotFourDigitsAndKeepsItForCorrection) {
    const std::string fourDigits = "drawText(\"A PIN has\", 130, 80, 130, 1, 0, 17, 65535, 1)\n"
                                   "drawText(\"exactly four\", 130, 100, 130, 1, 0, 17, 65535, 1)\n"
                                   "drawText(\"digits.\", 130, 120, 130, 1, 0, 17, 65535, 1)\n";
    touchNew();
    for (const wchar_t* const text : {L"", L"258", L"25800", L"25.0"}) {
        EXPECT_EQ(refusalOf(text), fourDigits) << narrow(text);
        EXPECT_TRUE(isTyping());
        EXPECT_STREQ(shownPage().screen->keyboard.text, text);
    }
    typeInstead(L"2580");
    touchRepeated();
    EXPECT_EQ(refusalOf(L"25"), fourDigits);
    EXPECT_TRUE(isTyping());
}

TEST_F(PinPage, StartsOverWhenTheTwoDiffer) {
    touchNew();
    typeInstead(L"2580");
    touchRepeated();
    EXPECT_EQ(
        refusalOf(L"2581"), "drawText(\"The two PINs are\", 130, 80, 130, 1, 0, 17, 65535, 1)\n"
                            "drawText(\"not the same.\", 130, 100, 130, 1, 0, 17, 65535, 1)\n"
                            "drawText(\"Please start over.\", 130, 120, 130, 1, 0, 17, 65535, 1)\n");
    EXPECT_FALSE(isTyping());
    EXPECT_EQ(
        fields(), "drawWidget(type 2 at 8,86 304x44 selected 0 \"Current PIN\tnone\")\n"
                  "drawWidget(type 2 at 8,136 304x44 selected 0 \"New PIN\")\n"
                  "drawWidget(type 2 at 8,186 304x44 selected 0 \"Repeat the new PIN\")\n");
    EXPECT_EQ(stored(), "");
}

TEST_F(PinPage, StoresNothingWhenItIsLeftAtAnyStep) {
    for (int steps = 0; steps <= 5; ++steps) {
        open("1357");
        void (*const fieldsInOrder[])() = {touchCurrent, touchNew, touchRepeated};
        const wchar_t* const texts[] = {L"1357", L"2580", L"2580"};
        for (int step = 0; step < steps; ++step)
            if (step % 2 == 0)
                fieldsInOrder[step / 2]();
            else
                typeInstead(texts[step / 2]);
        if (isTyping())
            shownPage().screen->keyboard.keyboardBack_onTouch();
        EXPECT_EQ(&shownPage(), &pinPage) << steps;
        touch(27, 22);
        EXPECT_EQ(&shownPage(), &screenPage) << steps;
        EXPECT_EQ(stored(), "") << steps;
        EXPECT_EQ(fakeSettings().working, fakeSettings().committed) << steps;
    }
}

TEST_F(PinPage, ForgetsAllEntriesWhenItIsLeft) {
    open("1357");
    touchCurrent();
    typeInstead(L"1357");
    touch(27, 22);
    touch(96, 215);
    touchNew();
    EXPECT_FALSE(isTyping());
}

TEST_F(PinPage, CancelsItsEntryWhenThePanelIsUnlocked) {
    touchNew();
    shownPage().screen->keyboard.appendChar(L'2');
    unlockPage();
    EXPECT_FALSE(isTyping());
    EXPECT_EQ(&shownPage(), &pinPage);
    EXPECT_EQ(stored(), "");
}

TEST_F(PinPage, KeepsTheChangesOfTheScreenPage) {
    touch(27, 22);
    touch(262, 123); // never
    touch(96, 215);
    touchNew();
    typeInstead(L"2580");
    touchRepeated();
    typeInstead(L"2580");
    EXPECT_EQ(&shownPage(), &screenPage);
    EXPECT_EQ(fakeSettings().committed[2]["ScreenTimeout"], "300");
    touch(251, 215); // Save
    EXPECT_EQ(fakeSettings().committed[2]["ScreenTimeout"], "31536000");
}

TEST_F(PinPage, AsksOnItsWayHomeBeforeChangesOfTheScreenPageAreLost) {
    touch(27, 22);
    touch(262, 123); // never
    touch(96, 215);
    touch(68, 22); // home
    EXPECT_EQ(&shownPage(), &confirmPage);
    touch(160, 211);
    EXPECT_EQ(&shownPage(), &pinPage);
}

TEST_F(PinPage, SaysWhenTheRouterCouldNotSave) {
    touchNew();
    typeInstead(L"2580");
    touchRepeated();
    fakeSettings().refusal = EIO;
    EXPECT_NE(refusalOf(L"2580").find("\"The router could\""), std::string::npos);
    EXPECT_EQ(fakeSettings().committed[1]["PIN"], "");
}

TEST_F(PinPage, WorksWithoutASettingsDriver) {
    fakeSettings().refusal = ENODEV;
    touch(27, 22);
    touch(96, 215);
    touchNew();
    typeInstead(L"2580");
    touchRepeated();
    EXPECT_NE(refusalOf(L"2580").find("\"The router could\""), std::string::npos);
    EXPECT_EQ(&shownPage(), &screenPage);
}

} // namespace
