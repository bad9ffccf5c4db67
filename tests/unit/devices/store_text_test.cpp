#include "simulator/store/store_text.h"

#include "tests/support/scale.h"

#include <cstring>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <string>

namespace ostrel {
namespace {

// Checksums here come from another implementation of the same CRC-32.
constexpr char TWO_SETTINGS[] = "ostrel-settings 1 main\n"
                                "Language=english\n"
                                "PIN=1234\n"
                                "checksum 34bfdb23\n";

std::string empty(Section section) {
    static char text[STORE_SIZE];
    return {text, emptyStore(section, text)};
}

std::string put(const std::string& text, const std::string& name, const std::string& value) {
    static char changed[STORE_SIZE];
    const size_t size = putSetting(text.data(), text.size(), name.c_str(), value.c_str(), changed);
    return {changed, size};
}

std::string find(const std::string& text, const std::string& name) {
    char value[SETTING_SIZE];
    return findSetting(text.data(), text.size(), name.c_str(), value) ? value : "(none)";
}

std::string faultOf(const std::string& text, Section section = Section::Main) {
    const StoreFault fault = checkStore(text.data(), text.size(), section);
    return fault.reason == nullptr ? "" : std::to_string(fault.line) + ": " + fault.reason;
}

TEST(StoreText, TwoSettingsAreWrittenInTheOrderOfTheirNames) {
    EXPECT_EQ(put(put(empty(Section::Main), "PIN", "1234"), "Language", "english"), TWO_SETTINGS);
    EXPECT_EQ(put(put(empty(Section::Main), "Language", "english"), "PIN", "1234"), TWO_SETTINGS);
}

TEST(StoreText, ASettingIsReplacedInItsPlace) {
    const std::string changed = put(TWO_SETTINGS, "Language", "greek");
    EXPECT_EQ(changed.substr(0, changed.find("checksum")), "ostrel-settings 1 main\nLanguage=greek\nPIN=1234\n");
    EXPECT_EQ(put(changed, "Language", "english"), TWO_SETTINGS);
}

TEST(StoreText, EachSectionSaysItsName) {
    EXPECT_EQ(empty(Section::Main), "ostrel-settings 1 main\nchecksum 714eb06a\n");
    EXPECT_EQ(empty(Section::Rtdev), "ostrel-settings 1 rtdev\nchecksum b8f4691f\n");
    EXPECT_EQ(faultOf(empty(Section::Rtdev), Section::Rtdev), "");
    EXPECT_EQ(faultOf(empty(Section::Rtdev)), "1: it does not begin as this section's settings do");
}

TEST(StoreText, ControlCharactersBackslashesAndEqualSignsAreEscaped) {
    const std::string text = put(empty(Section::Main), "a=b\\c", "one\ntwo=\t\\\x7F\xC3\xA9");
    EXPECT_EQ(
        text.substr(0, text.find("checksum")),
        "ostrel-settings 1 main\na\\x3db\\x5cc=one\\x0atwo=\\x09\\x5c\\x7f\xC3\xA9\n");
    EXPECT_EQ(faultOf(text), "");
    EXPECT_EQ(find(text, "a=b\\c"), "one\ntwo=\t\\\x7F\xC3\xA9");
}

TEST(StoreText, AnUnknownSettingIsEmpty) {
    char value[SETTING_SIZE] = "left over";
    EXPECT_FALSE(findSetting(TWO_SETTINGS, sizeof TWO_SETTINGS - 1, "Pin", value));
    EXPECT_STREQ(value, "");
}

TEST(StoreText, NamesAndValuesAreAsLongAsTheDriverAllows) {
    const std::string longest(SETTING_SIZE - 1, '\x01');
    const std::string text = put(empty(Section::Main), longest, longest);
    EXPECT_EQ(faultOf(text), "");
    EXPECT_EQ(find(text, longest), longest);
}

TEST(StoreText, ALongerNameOrValueIsNoStore) {
    const std::string head = "ostrel-settings 1 main\n";
    const std::string tail = "checksum 00000000\n";
    EXPECT_EQ(faultOf(head + std::string(SETTING_SIZE, 'n') + "=\n" + tail), "2: neither a setting nor the checksum");
    EXPECT_EQ(faultOf(head + std::string(SETTING_SIZE - 1, 'n') + "=\n" + tail), "3: the checksum does not fit");
    EXPECT_EQ(
        faultOf(head + "n=" + std::string(SETTING_SIZE, 'v') + "\n" + tail),
        "2: a value that is too long, cut off or holds a character that has to be escaped");
}

TEST(StoreText, TheLastByteOfTheSectionCanBeUsedAndNoMore) {
    std::string text = empty(Section::Main);
    for (int i = 0; i < 63; ++i)
        text = put(text, "name" + std::to_string(100 + i), std::string(1023, 'v'));
    const size_t left = STORE_SIZE - text.size();
    EXPECT_EQ(put(text, "n", std::string(left - 3 + 1, 'v')), "");
    const std::string full = put(text, "n", std::string(left - 3, 'v'));
    EXPECT_EQ(full.size(), STORE_SIZE);
    EXPECT_EQ(faultOf(full), "");
    EXPECT_EQ(put(full, "another", ""), "");
    EXPECT_EQ(faultOf(full + "\n"), "1: it is longer than the section can be");
}

TEST(StoreText, EveryDamageIsToldWithItsLine) {
    struct Case {
        const char* text;
        const char* fault;
    };
    const Case cases[] = {
        {"", "1: it does not begin as this section's settings do"},
        {"ostrel-settings 1 main\n", "2: it has no checksum"},
        {"ostrel-settings 2 main\nchecksum 714eb06a\n", "1: it does not begin as this section's settings do"},
        {"ostrel-settings 1 main\nchecksum 714EB06A\n", "2: the checksum does not fit"},
        {"ostrel-settings 1 main\n=x\nchecksum 714eb06a\n", "2: a setting without a name"},
        {"ostrel-settings 1 main\nword\nchecksum 714eb06a\n", "2: neither a setting nor the checksum"},
        {"ostrel-settings 1 main\nb=\na=\nchecksum 714eb06a\n", "3: names are not in order"},
        {"ostrel-settings 1 main\na=\na=\nchecksum 714eb06a\n", "3: names are not in order"},
        {"ostrel-settings 1 main\na\\x41=\nchecksum 714eb06a\n", "2: neither a setting nor the checksum"},
        {"ostrel-settings 1 main\na=\\x0A\nchecksum 714eb06a\n",
         "2: a value that is too long, cut off or holds a character that has to be escaped"},
        {"ostrel-settings 1 main\na=\\x00\nchecksum 714eb06a\n",
         "2: a value that is too long, cut off or holds a character that has to be escaped"},
    };
    for (const Case& row : cases)
        EXPECT_EQ(faultOf(row.text), row.fault) << row.text;
}

TEST(StoreText, EveryChangedLostOrAddedByteIsNoticed) {
    const std::string good = TWO_SETTINGS;
    EXPECT_EQ(faultOf(good), "");
    for (size_t at = 0; at < good.size(); ++at) {
        for (int byte = 0; byte < 256; ++byte) {
            std::string changed = good;
            changed[at] = static_cast<char>(byte);
            EXPECT_EQ(faultOf(changed).empty(), changed == good) << "byte " << at << " is " << byte;
        }
        EXPECT_NE(faultOf(good.substr(0, at)), "") << "cut at " << at;
        EXPECT_NE(faultOf(good.substr(0, at) + good.substr(at + 1)), "") << "without " << at;
    }
    EXPECT_NE(faultOf(good + "\n"), "");
}

TEST(StoreText, TheExampleInTheDocumentationIsAStore) {
    std::ifstream documentation(STORE_DOCUMENTATION);
    std::string example;
    for (std::string line; std::getline(documentation, line);)
        if (line.rfind("    ostrel-settings", 0) == 0 || (!example.empty() && line.rfind("    ", 0) == 0))
            example += line.substr(4) + "\n";
        else if (!example.empty())
            break;
    EXPECT_EQ(faultOf(example), "");
    EXPECT_EQ(find(example, "Motto"), "one\ntwo");
}

TEST(StoreText, RandomChangesAgreeWithAMap) {
    constexpr unsigned SEED = 20240917;
    SCOPED_TRACE("seed " + std::to_string(SEED));
    std::mt19937 random(SEED);
    const auto text = [&](size_t least, size_t most) {
        std::string result(least + random() % (most - least + 1), ' ');
        for (char& character : result)
            character = static_cast<char>(random() % 4 == 0 ? 1 + random() % 255 : 'a' + random() % 3);
        return result;
    };
    std::map<std::string, std::string> model;
    std::string store = empty(Section::Rtdev);
    for (long step = 0; step < scaled(4000); ++step) {
        const std::string name = text(1, 3);
        const std::string value = text(0, random() % 50 == 0 ? 1023 : 8);
        const std::string changed = put(store, name, value);
        if (changed.empty()) { // full: begin again
            ASSERT_GT(store.size(), STORE_SIZE - 2 * 4 * SETTING_SIZE);
            store = empty(Section::Rtdev);
            model.clear();
            continue;
        }
        store = changed;
        model[name] = value;
        const std::string asked = text(1, 3);
        const auto known = model.find(asked);
        ASSERT_EQ(find(store, asked), known != model.end() ? known->second : "(none)") << "step " << step;
        if (step % 100 != 0)
            continue;
        ASSERT_EQ(faultOf(store, Section::Rtdev), "") << "step " << step;
        std::map<std::string, std::string> listed;
        char listedName[SETTING_SIZE];
        char listedValue[SETTING_SIZE];
        for (size_t at = 0; nextSetting(store.data(), store.size(), at, listedName, listedValue);)
            listed[listedName] = listedValue;
        ASSERT_EQ(listed, model) << "step " << step;
    }
}

} // namespace
} // namespace ostrel
