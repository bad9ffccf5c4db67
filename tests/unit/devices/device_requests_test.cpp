// What the simulated devices answer, asked without a simulator around them.
#include "simulator/shim/device.h"
#include "simulator/shim/requests.h"
#include "tests/unit/devices/store_fixture.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <gtest/gtest.h>
#include <linux/fb.h>
#include <linux/input.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace ostrel {
namespace {

SharedPage page;
std::string state;

constexpr unsigned long GET = 0x1001;
constexpr unsigned long SET = 0x1003;
constexpr unsigned long COMMIT = 0x1004;

struct Record {
    int index;
    int reserved;
    const char* name;
    char* value;
};

// Two pages, of which only the first can be used.
struct EdgeOfMemory {
    EdgeOfMemory()
        : size(static_cast<size_t>(sysconf(_SC_PAGESIZE))),
          start(
              static_cast<char*>(mmap(nullptr, 2 * size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0))) {
        mprotect(start + size, size, PROT_NONE);
    }
    ~EdgeOfMemory() { munmap(start, 2 * size); }
    EdgeOfMemory(const EdgeOfMemory&) = delete;
    EdgeOfMemory& operator=(const EdgeOfMemory&) = delete;

    char* before(size_t bytes) const { return start + size - bytes; }

    size_t size;
    char* start;
};

struct DeviceRequests : testing::Test {
    DeviceRequests() {
        state = directory.path;
        writeEmptyStore(state);
        page.penDown = 0;
        memset(value, '#', sizeof value);
    }

    int request(unsigned long number, int index, const char* name, char* buffer) {
        Record record = {index, -1, name, buffer};
        return requestSettings(number, &record);
    }
    int set(const char* name, const char* text) { return request(SET, 1, name, const_cast<char*>(text)); }
    std::string log() const {
        std::string lines;
        std::ifstream file(directory.file("log"));
        for (std::string line; std::getline(file, line);)
            lines += line.substr(line.find("] ") + 2) + "\n";
        return lines;
    }

    StoreDirectory directory;
    char value[SETTING_SIZE] = {};
};

TEST_F(DeviceRequests, AReadWritesTheValueItsTerminatorAndNothingBehind) {
    EXPECT_EQ(set("Language", "greek"), 0);
    EXPECT_EQ(request(GET, 1, "Language", value), 0);
    EXPECT_EQ(std::string(value, 7), std::string("greek\0#", 7));
    EXPECT_EQ(request(GET, 2, "Language", value), 0);
    EXPECT_EQ(std::string(value, 2), std::string("\0r", 2));
}

TEST_F(DeviceRequests, ACommitUsesTheIndexOnly) {
    set("Language", "greek");
    EXPECT_EQ(request(COMMIT, 1, nullptr, nullptr), 0);
    EXPECT_EQ(committed(state, Section::Main, "Language"), "greek");
}

TEST_F(DeviceRequests, UnknownNumbersAndSectionsAreRefused) {
    for (const unsigned long number : {0UL, 0x1000UL, 0x1002UL, 0x1005UL, 0xFFFF1001UL})
        EXPECT_EQ(request(number, 1, "PIN", value), -ENOTTY) << number;
    for (const int section : {-1, 0, 3, 256 + 1})
        for (const unsigned long number : {GET, SET, COMMIT})
            EXPECT_EQ(request(number, section, "PIN", value), -EINVAL) << section;
    EXPECT_EQ(value[0], '#');
}

TEST_F(DeviceRequests, AddressesThatCannotBeUsedAreRefused) {
    const EdgeOfMemory edge;
    char* const unusable = edge.before(0);
    char* const low = reinterpret_cast<char*>(8);
    EXPECT_EQ(requestSettings(GET, nullptr), -EFAULT);
    EXPECT_EQ(requestSettings(GET, unusable), -EFAULT);
    EXPECT_EQ(requestSettings(COMMIT, edge.before(sizeof(Record) - 1)), -EFAULT);
    for (char* const bad : {static_cast<char*>(nullptr), low, unusable}) {
        EXPECT_EQ(request(GET, 1, bad, value), -EFAULT);
        EXPECT_EQ(request(SET, 1, bad, value), -EFAULT);
        EXPECT_EQ(request(GET, 1, "PIN", bad), -EFAULT);
        EXPECT_EQ(request(SET, 1, "PIN", bad), -EFAULT);
    }
    mprotect(edge.start, edge.size, PROT_READ);
    EXPECT_EQ(request(GET, 1, "PIN", edge.start), -EFAULT);
}

TEST_F(DeviceRequests, TextsMayEndWithTheirMemory) {
    const EdgeOfMemory edge;
    memcpy(edge.before(4), "PIN", 4);
    EXPECT_EQ(set("PIN", "123"), 0);
    EXPECT_EQ(request(GET, 1, edge.before(4), value), 0);
    EXPECT_STREQ(value, "123");
    EXPECT_EQ(request(GET, 1, "PIN", edge.before(4)), 0);
    EXPECT_STREQ(edge.before(4), "123");
    EXPECT_EQ(request(GET, 1, "PIN", edge.before(3)), -EFAULT);
    memcpy(edge.before(3), "PIN", 3);
    EXPECT_EQ(request(GET, 1, edge.before(3), value), -EFAULT);
}

TEST_F(DeviceRequests, NamesAndValuesHave1023BytesAndATerminator) {
    const std::string longest(1023, 'x');
    const std::string tooLong(1024, 'x');
    EXPECT_EQ(set(longest.c_str(), longest.c_str()), 0);
    EXPECT_EQ(request(GET, 1, longest.c_str(), value), 0);
    EXPECT_EQ(value, longest);
    EXPECT_EQ(set(tooLong.c_str(), "v"), -EINVAL);
    EXPECT_EQ(set("Name", tooLong.c_str()), -EINVAL);
    EXPECT_EQ(set("", "v"), -EINVAL);
}

TEST_F(DeviceRequests, TheLogShowsRequestsButNoSecrets) {
    set("Language", "greek");
    set("PIN", "1234");
    set("WifiPassword", "");
    set("Motto", "two\nlines");
    request(GET, 1, "PIN", value);
    request(COMMIT, 2, nullptr, nullptr);
    request(GET, 7, "PIN", value);
    request(GET, 1, nullptr, value);
    EXPECT_EQ(
        log(), "nvram set main Language: \"greek\"\n"
               "nvram set main PIN: ****\n"
               "nvram set main WifiPassword: (empty)\n"
               "nvram set main Motto: \"two?lines\"\n"
               "nvram get main PIN: ****\n"
               "nvram commit rtdev\n"
               "nvram request for an unknown section: refused with EINVAL\n"
               "nvram get: refused with EFAULT\n");
}

TEST_F(DeviceRequests, AFileSizeLimitRefusesTheChangeAndKillsNobody) {
    const pid_t child = fork();
    if (child == 0) {
        const rlimit limit = {40, 40};
        setrlimit(RLIMIT_FSIZE, &limit);
        const bool refused = set("Name", "a value that is longer than the limit") == -EFBIG;
        const bool kept = stored(state, Section::Main, "Name").empty();
        _exit(refused && kept ? 0 : 1);
    }
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
}

volatile sig_atomic_t handled = 0;

TEST_F(DeviceRequests, ASignalWaitsForTheEndOfTheRequest) {
    // The handler asks the device itself: inside another request it would wait for that one's lock for ever.
    struct sigaction action = {};
    action.sa_handler = [](int) {
        Record record = {1, 0, "FromHandler", const_cast<char*>("1")};
        handled = requestSettings(SET, &record) == 0 ? handled + 1 : -1000;
    };
    struct sigaction before = {};
    sigaction(SIGALRM, &action, &before);
    const itimerval often = {{0, 500}, {0, 500}};
    const itimerval never = {};
    handled = 0;
    setitimer(ITIMER_REAL, &often, nullptr);
    for (int i = 0; i < 100000 && handled < 20 && handled >= 0; ++i)
        EXPECT_EQ(set("Counter", std::to_string(i).c_str()), 0);
    setitimer(ITIMER_REAL, &never, nullptr);
    sigaction(SIGALRM, &before, nullptr);
    EXPECT_GE(handled, 20);
}

TEST_F(DeviceRequests, TheBacklightGoesOnAndOff) {
    EXPECT_EQ(requestBacklight(11, reinterpret_cast<void*>(1)), 0);
    EXPECT_EQ(page.backlightOff, 1U);
    EXPECT_EQ(requestBacklight(10, reinterpret_cast<void*>(1)), 0);
    EXPECT_EQ(page.backlightOff, 0U);
    EXPECT_EQ(requestBacklight(12, nullptr), -ENOTTY);
    EXPECT_EQ(log(), "backlight off\nbacklight on\n");
}

TEST_F(DeviceRequests, ThePanelTellsItsFormatAndGoesDark) {
    fb_var_screeninfo format = {};
    fb_fix_screeninfo memory = {};
    EXPECT_EQ(requestFramebuffer(FBIOGET_VSCREENINFO, &format), 0);
    EXPECT_EQ(requestFramebuffer(FBIOGET_FSCREENINFO, &memory), 0);
    EXPECT_EQ(format.xres, 320U);
    EXPECT_EQ(format.yres, 240U);
    EXPECT_EQ(format.bits_per_pixel, 16U);
    EXPECT_EQ(format.red.offset, 11U);
    EXPECT_EQ(memory.line_length, 640U);
    EXPECT_EQ(memory.smem_len, 153600U);
    EXPECT_EQ(requestFramebuffer(FBIOPUT_VSCREENINFO, &format), 0);
    format.xres = 640;
    EXPECT_EQ(requestFramebuffer(FBIOPUT_VSCREENINFO, &format), -EINVAL);
    EXPECT_EQ(requestFramebuffer(FBIOBLANK, reinterpret_cast<void*>(4)), 0);
    EXPECT_EQ(page.blanked, 4U);
    EXPECT_EQ(requestFramebuffer(FBIOBLANK, reinterpret_cast<void*>(5)), -EINVAL);
    EXPECT_EQ(requestFramebuffer(FBIOBLANK, nullptr), 0);
    EXPECT_EQ(page.blanked, 0U);
    EXPECT_EQ(requestFramebuffer(FBIOGET_VSCREENINFO, nullptr), -EFAULT);
    EXPECT_EQ(requestFramebuffer(0x1234, &format), -ENOTTY);
}

TEST_F(DeviceRequests, TheTouchPanelTellsWhatItIs) {
    char name[64] = {};
    EXPECT_EQ(requestTouch(EVIOCGNAME(sizeof name), name), static_cast<int>(sizeof "Ostrel touch panel"));
    EXPECT_STREQ(name, "Ostrel touch panel");
    EXPECT_EQ(requestTouch(EVIOCGNAME(4), name), 4);
    unsigned long bits[16] = {};
    EXPECT_EQ(requestTouch(EVIOCGBIT(0, sizeof bits), bits), static_cast<int>(sizeof(long)));
    EXPECT_EQ(bits[0], 1UL << EV_SYN | 1UL << EV_KEY | 1UL << EV_ABS);
    EXPECT_EQ(requestTouch(EVIOCGBIT(EV_ABS, sizeof bits), bits), 8);
    EXPECT_EQ(bits[0], 1UL << ABS_X | 1UL << ABS_Y);
    input_absinfo axis = {};
    EXPECT_EQ(requestTouch(EVIOCGABS(ABS_X), &axis), 0);
    EXPECT_EQ(axis.maximum, 319);
    EXPECT_EQ(requestTouch(EVIOCGABS(ABS_Y), &axis), 0);
    EXPECT_EQ(axis.maximum, 239);
    EXPECT_EQ(requestTouch(EVIOCGABS(ABS_MT_POSITION_X), &axis), -EINVAL);
    EXPECT_EQ(requestTouch(EVIOCGABS(ABS_X), nullptr), -EFAULT);
    EXPECT_EQ(requestTouch(EVIOCGRAB, reinterpret_cast<void*>(1)), 0);
    EXPECT_EQ(requestTouch(0x5401, bits), -EINVAL);
}

TEST_F(DeviceRequests, TheTouchPanelTellsWhereThePenIs) {
    page.penDown = 1;
    page.penX = 160;
    page.penY = 120;
    unsigned long keys[KEY_CNT / (8 * sizeof(long))] = {};
    input_absinfo axis = {};
    EXPECT_EQ(requestTouch(EVIOCGKEY(sizeof keys), keys), static_cast<int>(sizeof keys));
    EXPECT_EQ(keys[BTN_TOUCH / (8 * sizeof(long))], 1UL << BTN_TOUCH % (8 * sizeof(long)));
    EXPECT_EQ(requestTouch(EVIOCGABS(ABS_X), &axis), 0);
    EXPECT_EQ(axis.value, 160);
    EXPECT_EQ(requestTouch(EVIOCGABS(ABS_Y), &axis), 0);
    EXPECT_EQ(axis.value, 120);
    page.penDown = 0;
    requestTouch(EVIOCGKEY(sizeof keys), keys);
    EXPECT_EQ(keys[BTN_TOUCH / (8 * sizeof(long))], 0UL);
}

} // namespace

SharedPage* sharedPage() {
    return &page;
}

const char* stateDirectory() {
    return state.c_str();
}

} // namespace ostrel
