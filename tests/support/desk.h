// A fresh panel, clock, shell and settings store for each test. What the toolkit asks of them stands in one log, in
// order: display().take() gives it.
#ifndef OSTREL_TESTS_SUPPORT_DESK_H
#define OSTREL_TESTS_SUPPORT_DESK_H

#include "tests/support/call_log.h"
#include "tests/support/fake_settings.h"
#include "tests/support/fake_sleep.h"
#include "tests/support/fake_system.h"
#include "tests/support/recording_display.h"

#include <gtest/gtest.h>

class Desk : public ::testing::Test {
  protected:
    Desk() { clear(); }
    ~Desk() override { clear(); }

  private:
    static void clear() {
        display() = {};
        restartFakeSettings();
        fakeSleep() = {};
        fakeSystem() = {};
        callLog().shareWith(&display().calls);
    }
};

#endif
