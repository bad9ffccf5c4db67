#include "lang/languages.h"

#include "tests/support/call_log.h"
#include "tests/support/fake_settings.h"

#include <gtest/gtest.h>

namespace {

// The settings driver must be there before libOstrel is loaded: what stands in this section runs first of all.
void prepareDevice() {
    restartFakeSettings();
    fakeSettings().working[1]["Language"] = "ukrainian";
}
__attribute__((section(".preinit_array"), used)) void (*const beforeLoading)() = prepareDevice;

TEST(LoadingTheLibrary, ReadsTheLanguageOnce) {
    EXPECT_EQ(callLog().take(), R"(open("/dev/apsoc_nvram", O_RDONLY) = 700
ioctl(700, 0x1001, index 1, "Language")
close(700)
)");
    EXPECT_STREQ(lang.language, "ukrainian");
    EXPECT_STREQ(lang.file, "/ostrel/ukrainian.xml");
    EXPECT_STREQ(ret, "");
    EXPECT_STREQ(wret, L"");
}

} // namespace
