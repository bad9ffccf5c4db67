#include "simulator/store/power_on.h"

#include "tests/unit/devices/store_fixture.h"

#include <gtest/gtest.h>

namespace ostrel {
namespace {

constexpr char FACTORY[] = "# defaults\n"
                           "\n"
                           "[main]\n"
                           "Language=english\n"
                           "Motto=a=b\n"
                           "[rtdev]\n"
                           "ScreenTimeout=300\n";

struct PowerOn : testing::Test {
    PowerOn() { write(factory(), FACTORY); }
    std::string factory() const { return directory.file("factory-settings"); }

    std::vector<std::string> powerOn() {
        std::vector<std::string> messages;
        usable = powerOnStore(directory.path, factory(), messages);
        return messages;
    }

    StoreDirectory directory;
    bool usable = false;
};

using Messages = std::vector<std::string>;

TEST_F(PowerOn, TheFirstTimeBringsTheFactorySettings) {
    EXPECT_EQ(powerOn(), Messages());
    EXPECT_TRUE(usable);
    EXPECT_EQ(committed(directory.path, Section::Main, "Language"), "english");
    EXPECT_EQ(committed(directory.path, Section::Main, "Motto"), "a=b");
    EXPECT_EQ(committed(directory.path, Section::Rtdev, "ScreenTimeout"), "300");
    EXPECT_EQ(committed(directory.path, Section::Main, "ScreenTimeout"), "");
}

TEST_F(PowerOn, WhatWasCommittedStaysAndWhatWasOnlySetIsGone) {
    powerOn();
    setStored(directory.c_str(), Section::Main, "Language", "greek");
    commitStored(directory.c_str(), Section::Main);
    setStored(directory.c_str(), Section::Main, "Language", "polish");
    setStored(directory.c_str(), Section::Rtdev, "ScreenTimeout", "30");
    EXPECT_EQ(powerOn(), Messages());
    EXPECT_EQ(stored(directory.path, Section::Main, "Language"), "greek");
    EXPECT_EQ(stored(directory.path, Section::Rtdev, "ScreenTimeout"), "300");
}

TEST_F(PowerOn, ADamagedSectionIsKeptAsideAndTheOtherStaysAsItIs) {
    powerOn();
    setStored(directory.c_str(), Section::Rtdev, "ScreenTimeout", "30");
    commitStored(directory.c_str(), Section::Rtdev);
    const std::string path = directory.file("settings.main");
    write(path, "ostrel-settings 1 main\nLanguage=gre");
    EXPECT_EQ(
        powerOn(), (Messages{
                       path + " is damaged: line 2: it has no checksum; it is kept as " + path +
                       ".damaged and the factory settings are used."}));
    EXPECT_TRUE(usable);
    EXPECT_EQ(contents(path + ".damaged"), "ostrel-settings 1 main\nLanguage=gre");
    EXPECT_EQ(stored(directory.path, Section::Main, "Language"), "english");
    EXPECT_EQ(stored(directory.path, Section::Rtdev, "ScreenTimeout"), "30");
}

TEST_F(PowerOn, NoDamagedFileReplacesAnEarlierOne) {
    for (const char* damage : {"first", "second", "third"}) {
        write(directory.file("settings.main"), damage);
        powerOn();
    }
    EXPECT_EQ(contents(directory.file("settings.main.damaged")), "first");
    EXPECT_EQ(contents(directory.file("settings.main.damaged2")), "second");
    EXPECT_EQ(contents(directory.file("settings.main.damaged3")), "third");
}

TEST_F(PowerOn, MissingFactorySettingsLeaveTheStoreEmptyAndAreTold) {
    std::filesystem::remove(factory());
    const Messages messages = powerOn();
    ASSERT_EQ(messages.size(), 2U); // once a section
    EXPECT_EQ(messages[0], "The factory settings " + factory() + " cannot be read: No such file or directory.");
    EXPECT_TRUE(usable);
    EXPECT_EQ(stored(directory.path, Section::Main, "Language"), "");
}

TEST_F(PowerOn, AStateDirectoryThatIsMissingCannotBeUsed) {
    Messages messages;
    EXPECT_FALSE(powerOnStore("/nowhere", factory(), messages));
    EXPECT_EQ(messages, (Messages{"the settings in /nowhere cannot be used: No such file or directory"}));
}

TEST_F(PowerOn, AResetForgetsSetAndCommittedValuesOfOneSection) {
    powerOn();
    for (const Section section : SECTIONS) {
        setStored(directory.c_str(), section, "Mine", "1");
        commitStored(directory.c_str(), section);
    }
    setStored(directory.c_str(), Section::Main, "Language", "greek");
    Messages messages;
    EXPECT_EQ(resetSection(directory.path, Section::Main, factory(), messages), 0);
    EXPECT_EQ(messages, Messages());
    EXPECT_EQ(stored(directory.path, Section::Main, "Mine"), "");
    EXPECT_EQ(stored(directory.path, Section::Main, "Language"), "english");
    EXPECT_EQ(stored(directory.path, Section::Rtdev, "Mine"), "1");
}

TEST_F(PowerOn, EveryMistakeInTheFactorySettingsIsToldWithItsLine) {
    struct Case {
        const char* text;
        const char* mistake;
    };
    const Case cases[] = {
        {"Language=english\n", "line 1: a setting before the first [section]."},
        {"[main]\n[flash]\n", "line 2: there is no such section."},
        {"[main]\nLanguage\n", "line 2: neither name=value, a [section] nor a comment."},
        {"[main]\n=english\n", "line 2: the name is missing."},
        {"[main]\nA=1\n\n# again\nA=2\n", "line 5: the setting is given twice."},
        {"[main]\nA=tab\there\n", "line 2: the value is too long or holds a character that has to be escaped."},
    };
    for (const Case& row : cases) {
        static char text[STORE_SIZE];
        Messages messages;
        write(factory(), row.text);
        EXPECT_EQ(readFactory(factory(), Section::Main, text, messages), 0U);
        EXPECT_EQ(messages, (Messages{"The factory settings are wrong in " + factory() + ", " + row.mistake}))
            << row.text;
    }
}

TEST_F(PowerOn, TheShippedFactorySettingsAreRight) {
    std::filesystem::remove(factory());
    std::filesystem::copy(FACTORY_SETTINGS, factory());
    EXPECT_EQ(powerOn(), Messages());
    EXPECT_EQ(stored(directory.path, Section::Main, "Language"), "english");
    EXPECT_EQ(stored(directory.path, Section::Main, "ScreenLock"), "0");
    EXPECT_EQ(stored(directory.path, Section::Main, "PIN"), "");
    EXPECT_EQ(stored(directory.path, Section::Rtdev, "ShowPass"), "0");
    EXPECT_EQ(stored(directory.path, Section::Rtdev, "ScreenTimeout"), "300");
}

} // namespace
} // namespace ostrel
