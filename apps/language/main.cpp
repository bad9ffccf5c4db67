// language: the language picker, which the header's language button of any program starts as ./ostrel/language.
#include "apps/language/picker.h"

#include <cstdlib>

namespace {

// The settings program stores this for "never"; other programs, which arm the counter whatever is stored, then wait
// for a year.
constexpr long NEVER_SECONDS = 31536000;

bool goesDark() {
    Memory settings;
    char value[NVRAM_TEXT_LENGTH];
    settings.getSettingRtdev("ScreenTimeout", value);
    const long seconds = std::strtol(value, nullptr, 10);
    return seconds > 0 && seconds < NEVER_SECONDS;
}

} // namespace

int main() {
    preparePicker("/ostrel");
    setLockHandler(drawPicker);
    drawPicker();
    cntEn = goesDark() ? 1 : 0;
    while (!isPickerOver() && !panelClosed()) {
        int x = 0;
        int y = 0;
        if (waitForTouch(&x, &y))
            pickerPage().getTouch(x, y);
    }
    return 0;
}
