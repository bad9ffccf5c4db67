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
#include <fstream>
#include <iterator>
#include <sstream>

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
    fakeSystem().run = [this](const std::string& command) {
        std::istringstream words(command);
        std::string verb;
        std::string from;
        std::string to;
        words >> verb >> from >> to;
        if (verb == "cp")
            copy(from, to);
        return 0;
    };
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
    fakeSystem() = {};
}

const std::string PageWalk::NAME = "Familie Meier-Mollerhausen 5 GHz";
const std::string PageWalk::PASSWORD(63, 'm');

void PageWalk::copy(const std::string& from, const std::string& to) {
    constexpr const char* FLASH = "/data";
    if (to.rfind(FLASH, 0) == 0) {
        std::ifstream source(from, std::ios::binary);
        flash[to] = std::string(std::istreambuf_iterator<char>(source), {});
    } else if (flash.count(from) != 0) {
        std::ofstream(to, std::ios::binary) << flash[from];
    }
}

void PageWalk::duringSleep(uint64_t us) {
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
    if (lang.file != spoken)
        speakEverywhere(); // the program went by the setting again, whose files lie elsewhere
}

void PageWalk::speakEverywhere() {
    speak(spokenLanguage);
    spoken = lang.file;
    for (const Page* const page : allPages())
        page->retext();
}

// Addresses by hand and the longest values, or what is the other way round.
void PageWalk::make(World world) {
    const bool isByHand = world == World::ByHand;
    FakeSettings::Section& main = fakeSettings().working[1];
    main["WifiName"] = NAME;
    main["WifiPassword"] = PASSWORD;
    main["WifiSecurity"] = isByHand ? "wpa2" : "open";
    main["DHCP"] = isByHand ? "0" : "1";
    main["IPAddress"] = "192.168.178.254";
    main["NetMask"] = "255.255.255.128";
    main["Gateway"] = "192.168.178.253";
    main["PIN"] = isByHand ? "2580" : "";
    main["ScreenLock"] = isByHand ? "1" : "0";
    FakeSettings::Section& rtdev = fakeSettings().working[2];
    rtdev["ShowPass"] = isByHand ? "1" : "0";
    rtdev["ScreenTimeout"] = isByHand ? "1800" : "31536000";
}

void PageWalk::walk(const std::string& language, const Look& look) {
    spokenLanguage = language;
    fakeSettings().working[1]["Language"] = language;
    make(World::ByHand);
    speakEverywhere();
    const std::vector<const Page*> pages = allPages();
    for (const World world : {World::ByHand, World::Automatic})
        for (size_t number = 0; number < pages.size(); ++number)
            walkPage(world, number, language + ", page " + std::to_string(number), look);
    walkPicker(language, look);
}

// From its last widget to its first in the second world, so that a backup of the first one is found in it.
void PageWalk::walkPage(World world, size_t number, const std::string& where, const Look& look) {
    const Page* const page = allPages()[number];
    if (page == &confirmPage)
        return; // comes up where it is asked for
    make(world);
    showPage(*page);
    look(*page->screen, where);
    std::vector<const Widget*> widgets = widgetsOf(*page->screen);
    if (world == World::Automatic)
        std::reverse(widgets.begin(), widgets.end());
    for (const Widget* const widget : widgets) {
        const WidgetRecord& record = widget->record;
        make(world);
        showPage(*page);
        if (record.touchable == -1 || record.type == wType.kind7 || record.type == wType.kind8)
            continue;
        touch(record.x + record.width / 2, record.y + record.height / 2);
        look(*shownPage().screen, where + ", a touch");
        if (&shownPage() == page)
            touch(BACK_X, BACK_Y);
        look(*shownPage().screen, where + ", a touch and back");
        if (&shownPage() == &confirmPage) {
            touch(160, 160);
            look(*shownPage().screen, where + ", yes");
        }
    }
}

void PageWalk::walkPicker(const std::string& language, const Look& look) {
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
