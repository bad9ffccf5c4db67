#include "apps/language/picker.h"
#include "tests/support/desk.h"
#include "tests/unit/simulator/temporary_directory.h"

#include <cerrno>
#include <fstream>

namespace {

struct Point {
    int x, y;
};

// Middles of what is touched; choices go down the left column, then down the right one.
constexpr Point CHOICE[] = {{80, 63}, {80, 101}, {80, 139}, {80, 177}, {240, 63}, {240, 101}, {240, 139}, {240, 177}};
constexpr Point PREVIOUS = {31, 218};
constexpr Point NEXT = {134, 218};
constexpr Point DONE = {237, 218};
constexpr Point BACK = {27, 22};

const std::string DONE_TOUCHED = "drawWidget(type 0 at 163,200 149x36 selected 1 \"Done it\")\nwaitForPenUp()\n"
                                 "drawWidget(type 0 at 163,200 149x36 selected 0 \"Done it\")\n";

std::string request(const std::string& what) {
    return "open(\"/dev/apsoc_nvram\", O_RDONLY) = 700\nioctl(700, " + what + ")\nclose(700)\n";
}

class LanguagePicker : public Desk {
  protected:
    void install(const std::string& setting, const std::string& name, const std::string& done = "Done it") const {
        write(
            setting + ".xml", "<language>\n<name>" + name + "</name>\n</language>\n<picker>\n<title>In " + name +
                                  "</title>\n<done>" + done + "</done>\n</picker>\n");
    }

    void write(const std::string& name, const std::string& content) const {
        std::ofstream(languages.file(name), std::ios::binary) << content;
    }

    // The names 01, 02, ... of the settings l01, l02, ...
    void installMany(int count) const {
        for (int i = 1; i <= count; ++i) {
            const std::string number = (i < 10 ? "0" : "") + std::to_string(i);
            install("l" + number, number);
        }
    }

    void start(const std::string& stored) {
        fakeSettings().working[1]["Language"] = stored;
        preparePicker(languages.path);
        drawPicker();
        display().take();
    }

    std::string touch(const Point& at) {
        pickerPage().getTouch(at.x, at.y);
        return display().take();
    }

    // The page as it is, drawn anew: its title, then the texts of what is on it, "*" in front of the chosen one.
    std::string shown() {
        drawPicker();
        std::string texts;
        for (const std::string& call : display().calls) {
            const size_t first = call.find('"');
            const size_t last = call.rfind('"');
            if (call.rfind("drawWidget", 0) != 0 && call.rfind("drawFontBig", 0) != 0)
                continue;
            texts += call.find("selected 1") != std::string::npos ? "*" : "";
            texts += call.substr(first + 1, last - first - 1) + "\n";
        }
        display().take();
        return texts;
    }

    std::string stored() { return fakeSettings().committed[1]["Language"]; }

    TemporaryDirectory languages;
};

TEST_F(LanguagePicker, ListsTheLanguagesByTheirOwnNamesAndMarksTheCurrentOne) {
    install("german", "Deutsch");
    install("ukrainian", "Українська");
    install("greek", "Ελληνικά");
    install("turkish", "Türkçe");
    install("czech", "Čeština");
    install("icelandic", "íslenska");
    start("greek");
    EXPECT_EQ(shown(), "In Ελληνικά\nČeština\nDeutsch\níslenska\nTürkçe\n*Ελληνικά\nУкраїнська\nDone it\n");
}

TEST_F(LanguagePicker, LeavesOutWhatCannotBeChosen) {
    install("english", "English");
    install(".hidden", "Hidden");
    install("note.txt", "A file that is no language");
    std::filesystem::rename(languages.file("note.txt.xml"), languages.file("note.txt"));
    write("empty.xml", "");
    write("nameless.xml", "<language>\n</language>\n<name>Outside</name>\n");
    write("blank.xml", "<language>\n<name> \t </name>\n</language>\n");
    write("binary.xml", std::string(5000, '\xFF'));
    std::filesystem::create_directory(languages.file("folder.xml"));
    std::filesystem::create_symlink("nowhere", languages.file("broken.xml"));
    start("english");
    EXPECT_EQ(shown(), "In English\n*English\nDone it\n");
}

TEST_F(LanguagePicker, KeepsTheNamesOfAFileThatFollowsABrokenOneApart) {
    install("a", "Alpha");
    write("b.xml", "<language>\n</language>\n"); // must not inherit Alpha
    install("c", "Gamma");
    start("c");
    EXPECT_EQ(shown(), "In Gamma\nAlpha\n*Gamma\nDone it\n");
}

TEST_F(LanguagePicker, ChoosesNoFileWhoseNameTheSettingCannotHold) {
    install(std::string(167, 'a'), "Longest");
    install(std::string(168, 'b'), "Too long");
    start("");
    EXPECT_EQ(shown(), "In Longest\nLongest\nDone it\n");
}

TEST_F(LanguagePicker, ShowsItsOwnTextsInTheLanguageThatIsTouched) {
    install("english", "English");
    install("greek", "Ελληνικά", "Τέλος");
    start("english");
    EXPECT_EQ(
        touch(CHOICE[1]), "drawWidget(type 3 at 8,84 149x34 selected 1 \"Ελληνικά\")\n"
                          "drawWidget(type 3 at 8,46 149x34 selected 0 \"English\")\n"
                          "waitForPenUp()\n"
                          "unDrawTitle(\"xxxxxxxxxxxxx\")\n"
                          "drawFontBigWhiteString(\"In Ελληνικά\", 90, 10)\n"
                          "drawWidget(type 0 at 163,200 149x36 selected 0 \"Τέλος\")\n");
    EXPECT_EQ(shown(), "In Ελληνικά\nEnglish\n*Ελληνικά\nΤέλος\n");
    EXPECT_FALSE(isPickerOver());
}

TEST_F(LanguagePicker, SpeaksEnglishWhereALanguageLacksItsTexts) {
    write("short.xml", "<language>\n<name>Short</name>\n</language>\n");
    install("long", "Long");
    start("long");
    touch(CHOICE[1]);
    EXPECT_EQ(shown(), "Language\nLong\n*Short\nDone\n");
}

TEST_F(LanguagePicker, SpeaksEnglishWhereALanguagesFileHasGone) {
    install("english", "English");
    install("greek", "Ελληνικά", "Τέλος");
    start("english");
    std::filesystem::remove(languages.file("greek.xml"));
    touch(CHOICE[1]);
    EXPECT_EQ(shown(), "Language\nEnglish\n*Ελληνικά\nDone\n");
}

TEST_F(LanguagePicker, StoresTheChoiceOnDoneWithOneAddAndOneSaveAndRestartsNothing) {
    install("english", "English");
    install("greek", "Ελληνικά");
    start("english");
    touch(CHOICE[1]);
    EXPECT_EQ(
        touch(DONE), DONE_TOUCHED + request("0x1003, index 1, \"Language\", \"greek\"") + request("0x1004, index 1") +
                         request("0x1001, index 1, \"Language\""));
    EXPECT_TRUE(isPickerOver());
    EXPECT_EQ(stored(), "greek");
}

TEST_F(LanguagePicker, LeavesTheSettingAloneWhenTheChoiceIsTheStoredOne) {
    install("english", "English");
    install("greek", "Ελληνικά");
    start("english");
    touch(CHOICE[1]);
    touch(CHOICE[0]);
    EXPECT_EQ(touch(DONE), DONE_TOUCHED);
    EXPECT_TRUE(isPickerOver());
}

TEST_F(LanguagePicker, LeavesTheSettingAsItWasOnBack) {
    install("english", "English");
    install("greek", "Ελληνικά");
    start("english");
    touch(CHOICE[1]);
    EXPECT_EQ(touch(BACK).find("ioctl"), std::string::npos);
    EXPECT_TRUE(isPickerOver());
    EXPECT_EQ(fakeSettings().working[1]["Language"], "english");
}

TEST_F(LanguagePicker, SaysSoAndStaysWhenTheChoiceCannotBeStored) {
    install("english", "English");
    install("greek", "Ελληνικά");
    start("english");
    touch(CHOICE[1]);
    fakeSettings().refusal = EIO;
    display().pen = {{200, 100}, {-1, -1}};
    const std::string log = touch(DONE);
    EXPECT_NE(log.find("drawText(\"The language\", 130, 80"), std::string::npos) << log;
    EXPECT_NE(log.find("drawText(\"stored.\", 130, 120"), std::string::npos) << log;
    EXPECT_NE(log.find("drawWidget(type 3 at 8,84 149x34 selected 1 \"Ελληνικά\")"), std::string::npos) << log;
    EXPECT_FALSE(isPickerOver());
    fakeSettings().refusal = 0;
    touch(DONE);
    EXPECT_TRUE(isPickerOver());
    EXPECT_EQ(stored(), "greek");
}

TEST_F(LanguagePicker, WaitsForAChoiceWhenTheCurrentLanguageIsNotInstalled) {
    install("english", "English");
    install("greek", "Ελληνικά");
    start("klingon");
    EXPECT_EQ(shown(), "In English\nEnglish\nΕλληνικά\nDone it\n");
    EXPECT_EQ(touch(DONE), "");
    EXPECT_FALSE(isPickerOver());
    touch(CHOICE[0]);
    touch(DONE);
    EXPECT_TRUE(isPickerOver());
    EXPECT_EQ(stored(), "english");
}

TEST_F(LanguagePicker, SaysSoWhenNoLanguageIsInstalled) {
    for (const std::string& directory : {languages.path, languages.file("missing")}) {
        preparePicker(directory);
        EXPECT_EQ(shown(), "Language\nNo languages are installed.\n");
        EXPECT_EQ(touch(DONE), "");
        EXPECT_FALSE(isPickerOver());
        touch(BACK);
        EXPECT_TRUE(isPickerOver());
    }
}

TEST_F(LanguagePicker, ShowsEightLanguagesWithoutPageButtons) {
    installMany(8);
    start("l08");
    EXPECT_EQ(shown(), "In 08\n01\n02\n03\n04\n05\n06\n07\n*08\nDone it\n");
    EXPECT_EQ(touch(NEXT), "");
}

TEST_F(LanguagePicker, TurnsThePagesOfNineLanguages) {
    installMany(9);
    start("l01");
    const std::string first = "In 01\n*01\n02\n03\n04\n05\n06\n07\n08\n◀\n1/2\n▶\nDone it\n";
    EXPECT_EQ(shown(), first);
    EXPECT_EQ(touch(PREVIOUS), ""); // there is none before the first
    touch(NEXT);
    EXPECT_EQ(shown(), "In 01\n09\n◀\n2/2\n▶\nDone it\n");
    EXPECT_EQ(touch(NEXT), "");
    EXPECT_EQ(touch(CHOICE[1]), ""); // nothing is there
    touch(PREVIOUS);
    EXPECT_EQ(shown(), first);
}

TEST_F(LanguagePicker, KeepsTheChoiceOfOneFromAnotherPage) {
    installMany(40);
    start("l03");
    for (int turns = 0; turns < 4; ++turns)
        touch(NEXT);
    EXPECT_EQ(shown(), "In 03\n33\n34\n35\n36\n37\n38\n39\n40\n◀\n5/5\n▶\nDone it\n");
    touch(CHOICE[7]);
    touch(PREVIOUS);
    EXPECT_EQ(shown(), "In 40\n25\n26\n27\n28\n29\n30\n31\n32\n◀\n4/5\n▶\nDone it\n");
    touch(NEXT);
    EXPECT_EQ(shown(), "In 40\n33\n34\n35\n36\n37\n38\n39\n*40\n◀\n5/5\n▶\nDone it\n");
    touch(PREVIOUS);
    touch(DONE);
    EXPECT_EQ(stored(), "l40");
}

TEST_F(LanguagePicker, OpensAtThePageOfTheCurrentLanguage) {
    installMany(17);
    start("l17");
    EXPECT_EQ(shown(), "In 17\n*17\n◀\n3/3\n▶\nDone it\n");
}

TEST_F(LanguagePicker, CutsANameThatIsTooLong) {
    install("long", std::string(100, 'n'));
    start("long");
    EXPECT_EQ(shown(), "In " + std::string(76, 'n') + "\n*" + std::string(79, 'n') + "\nDone it\n");
}

TEST_F(LanguagePicker, ShowsANameOnOneLine) {
    write("two.xml", "<language>\n<name>  Two\tnames\nand a line</name>\n</language>\n");
    start("two");
    EXPECT_EQ(shown(), "Language\n*Two names and a line\nDone\n");
}

} // namespace
