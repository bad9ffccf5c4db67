// Messages when the language file is there but no good.
#include "lang/languages.h"
#include "tests/support/keyboard_desk.h"
#include "util/bounded_copy.h"

#include <cstdio>
#include <unistd.h>

namespace {

class BrokenLanguageFile : public KeyboardDesk {
  protected:
    ~BrokenLanguageFile() override { std::remove(path().c_str()); }

    static std::string path() { return "/tmp/ostrel-broken-language-" + std::to_string(getpid()) + ".xml"; }

    void speak(const std::string& content) {
        std::FILE* const file = std::fopen(path().c_str(), "wb");
        std::fwrite(content.data(), 1, content.size(), file);
        std::fclose(file);
        ostrel::copyText(lang.file, path().c_str());
    }

    // Done on a text that is too long, its message tapped away: whether a message with three lines appeared and the
    // entry went on behind it.
    testing::AssertionResult messageAppearsAndTheEntryGoesOn() {
        begin(KEYBOARD_LETTERS);
        keyboard.maxLength = 1;
        type(L"ab");
        display().pen = {{160, 120}, {-1, -1}};
        display().penRead = 0;
        fakeSleep().log = false;
        keyboard.doneOnTouch();
        const std::string log = display().take();
        size_t from = 0;
        for (const char* call :
             {"drawRoundedRectangle(60, 60, 260, 160, 0, 240)\n", ", 130, 80, 130, 1, 0, 17, 65535, 1)\n",
              ", 130, 100, 130, 1, 0, 17, 65535, 1)\n", ", 130, 120, 130, 1, 0, 17, 65535, 1)\n", "lcd_clear(0)\n",
              "drawText(\"Done\""}) {
            from = log.find(call, from);
            if (from == std::string::npos)
                return testing::AssertionFailure() << "no " << call << " in\n" << log;
        }
        if (keyboard.active == 0 || shown() != "ab")
            return testing::AssertionFailure() << "the entry ended, or its text changed: " << shown();
        return testing::AssertionSuccess();
    }
};

TEST_F(BrokenLanguageFile, ThatIsEmptyStillGivesAMessage) {
    speak("");
    EXPECT_TRUE(messageAppearsAndTheEntryGoesOn());
}

TEST_F(BrokenLanguageFile, ThatLacksTheTextsStillGivesAMessage) {
    speak("<modal>\n<savingl1>Saving</savingl1>\n</modal>\n");
    EXPECT_TRUE(messageAppearsAndTheEntryGoesOn());
}

TEST_F(BrokenLanguageFile, ThatNeverClosesItsTagsStillGivesAMessage) {
    speak("<modal>\n<less_than_6_l1>Text\n<less_than_6_l2>\n<less_than_6_l3>" + std::string(5000, 'x') + "\n");
    EXPECT_TRUE(messageAppearsAndTheEntryGoesOn());
}

TEST_F(BrokenLanguageFile, OfBytesThatAreNoTextStillGivesAMessage) {
    std::string bytes;
    for (int i = 0; i < 20000; ++i)
        bytes += static_cast<char>(i * 167 + i / 256);
    speak("<modal>\n" + bytes + "\n<less_than_6_l1>\xFF\xFE\xC3</less_than_6_l1>\n" + bytes);
    EXPECT_TRUE(messageAppearsAndTheEntryGoesOn());
}

TEST_F(BrokenLanguageFile, ThatIsAFolderStillGivesAMessage) {
    ostrel::copyText(lang.file, "/tmp");
    EXPECT_TRUE(messageAppearsAndTheEntryGoesOn());
}

// Longer than a line of a message and than what it is formatted in.
TEST_F(BrokenLanguageFile, WithTextsThatAreTooLongIsCutAtTheLine) {
    const std::string text(250, 'W');
    speak(
        "<modal>\n<less_than_6_l1>" + text + "</less_than_6_l1>\n<less_than_6_l2>" + text +
        "</less_than_6_l2>\n<less_than_6_l3>" + text + "</less_than_6_l3>\n</modal>\n");
    EXPECT_TRUE(messageAppearsAndTheEntryGoesOn());
}

} // namespace
