// The settings driver of the fake devices: numbered sections of names and values, each with a working copy, which
// requests read and change, and what the last commit kept. Requests are logged as
//
//     ioctl(700, 0x1003, index 1, "PIN", "1234")
//
// and the driver reads and writes each buffer in its whole length, so that a short one is found by the sanitizer.
#ifndef OSTREL_TESTS_SUPPORT_FAKE_SETTINGS_H
#define OSTREL_TESTS_SUPPORT_FAKE_SETTINGS_H

#include <map>
#include <string>

struct FakeSettings {
    using Section = std::map<std::string, std::string>;
    std::map<int, Section> working;
    std::map<int, Section> committed;

    // A broken driver: a read fills the whole buffer and leaves no terminator.
    bool unterminated = false;

    // errno that every request is refused with; 0: they are answered.
    int refusal = 0;
};

FakeSettings& fakeSettings();

// A fresh start: an empty call log of its own without planned failures, no device but the settings driver, empty
// sections.
void restartFakeSettings();

#endif
