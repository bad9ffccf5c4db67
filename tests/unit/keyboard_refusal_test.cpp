#include "lang/languages.h"
#include "tests/support/keyboard_entry_desk.h"
#include "util/bounded_copy.h"

namespace {

std::string message(const std::string& name, const std::string& number) {
    return "drawRoundedRectangle(60, 60, 260, 160, 0, 240)\n"
           "drawPNG(65, 85, 1, 0, 1)\n"
           "drawText(\"[" +
           name + "_l1]\", 130, 80, 130, 1, 0, 17, 65535, 1)\ndrawText(\"[" + name + "_l2]" + number +
           "\", 130, 100, 130, 1, 0, 17, 65535, 1)\ndrawText(\"[" + name +
           "_l3]\", 130, 120, 130, 1, 0, 17, 65535, 1)\n"
           "lcd_clear(0)\n";
}

class RefusedText : public KeyboardEntryDesk {};

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

} // namespace
