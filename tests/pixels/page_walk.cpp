#include "tests/pixels/page_walk.h"

#include "apps/language/picker.h"
#include "apps/settings/pages.h"
#include "display/clock.h"
#include "display/touch_device.h"
#include "tests/support/fake_settings.h"
#include "tests/support/fake_sleep.h"
#include "tests/support/fake_system.h"
#include "tests/support/panel_file.h"
#include "tests/support/panel_pen.h"
#include "util/bounded_copy.h"

#include <algorithm>
#include <filesystem>

namespace {

constexpr int BACK_X = 27;
constexpr int BACK_Y = 22;
constexpr uint64_t MODAL_LOOKS_US = 1000; // how often a message looks for its tap
constexpr uint64_t TOO_LONG_US = 3'600'000'000;

// Thrown out of what would never end.
struct WaitsForEver {};

// Before the pages: those in static storage open the library's pen, which it does only once.
__attribute__((init_priority(1000))) const PanelPen pen;

PanelFile& panel() {
    static auto* const instance = new PanelFile;
    return *instance;
}

int lift(int, int) {
    pen.send(0, BACK_X, BACK_Y);
    return 1;
}

int64_t standingClock() {
    return 1'000'000;
}

} // namespace

std::vector<const Widget*> widgetsOf(const Screen& page) {
    const Widget* head = page.widgets;
    while (head != nullptr && head->prev != nullptr)
        head = head->prev;
    std::vector<const Widget*> widgets;
    for (; head != nullptr; head = head->next)
        widgets.push_back(head);
    return widgets;
}

std::vector<std::string> allLanguages() {
    std::vector<std::string> names;
    for (const auto& item : std::filesystem::directory_iterator(OSTREL_LANGUAGES))
        if (item.path().extension() == ".xml")
            names.push_back(item.path().stem().string());
    std::sort(names.begin(), names.end());
    return names;
}

void speak(const std::string& language) {
    ostrel::copyText(lang.file, (std::string(OSTREL_LANGUAGES) + "/" + language + ".xml").c_str());
}

PageWalk::PageWalk() {
    restartFakeSettings();
    fakeSystem() = {};
    fakeSleep() = {};
    fakeSleep().log = false;
    fakeSleep().duringSleep = [this](uint64_t us) { duringSleep(us); };
    panel();
    ostrel::replaceClock(standingClock);
    ostrel::touchCalls.wait = lift;
    speak("english");
    static const bool isPrepared = (preparePages(), true);
    EXPECT_TRUE(isPrepared);
}

PageWalk::~PageWalk() {
    fakeSleep() = {};
}

void PageWalk::store(int section, const std::string& name, const std::string& value) {
    fakeSettings().working[section][name] = value;
}

void PageWalk::duringSleep(unsigned long us) {
    if (fakeSleep().sleptUs > TOO_LONG_US)
        throw WaitsForEver{};
    if (us != MODAL_LOOKS_US)
        return;
    isPenDown = !isPenDown;
    pen.send(isPenDown ? 1 : 0, 300, 230);
    if (!isPenDown)
        return;
    ++messages;
    const uint16_t corner = panel().at(2, 2);
    if (corner == 0x057D || corner == 0xFA6A)
        ++fullMessages;
}

void PageWalk::touch(int x, int y) {
    fakeSleep().sleptUs = 0;
    pen.send(1, x, y);
    readX();
    readY();
    try {
        touchPage(x, y);
    } catch (const WaitsForEver&) {
    }
    if (shownPage().screen->keyboard.active != 0)
        unlockPage(); // cancels the entry
}

void PageWalk::walk(const std::string& language, const Look& look) {
    speak(language);
    for (const Page* const page : allPages())
        page->retext();
    int number = 0;
    for (const Page* const page : allPages()) {
        const std::string name = language + ", page " + std::to_string(++number);
        if (page == &confirmPage)
            continue; // comes up where it is asked for
        showPage(*page);
        look(*page->screen, name);
        const std::vector<const Widget*> widgets = widgetsOf(*page->screen);
        for (size_t i = 0; i < widgets.size(); ++i) {
            const WidgetRecord& record = widgets[i]->record;
            if (record.touchable == -1 || record.type == wType.kind7 || record.type == wType.kind8)
                continue;
            const std::string where = name + ", widget " + std::to_string(i);
            showPage(*page);
            touch(record.x + record.width / 2, record.y + record.height / 2);
            look(*shownPage().screen, where);
            if (&shownPage() == page)
                touch(BACK_X, BACK_Y);
            look(*shownPage().screen, where + ", back");
            if (&shownPage() == &confirmPage) {
                touch(160, 160);
                look(*shownPage().screen, where + ", yes");
            }
        }
    }
    walkPicker(language, look);
}

void PageWalk::walkPicker(const std::string& language, const Look& look) {
    store(1, "Language", language);
    preparePicker(OSTREL_LANGUAGES);
    drawPicker();
    look(pickerPage(), language + ", picker");
    const int x = 134; // the second page
    const int y = 218;
    pen.send(1, x, y);
    readX();
    readY();
    pickerPage().getTouch(x, y);
    look(pickerPage(), language + ", picker, second page");
}
