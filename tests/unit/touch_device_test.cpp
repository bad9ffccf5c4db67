// Finding, opening, reading and asking a touch screen, through event devices that answer as the test tells them. A
// FIFO stands for the device node, since only the kernel makes real ones.
#include "display/touch_device.h"
#include "display/touch_search.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace ostrel;

namespace {

// What an event device says when it is asked.
struct Answers {
    std::set<unsigned> axes;
    std::set<unsigned> keys;
    bool isTouchPad = false;
    std::map<unsigned, input_absinfo> ranges;
    bool tellsKeys = false;
    std::set<unsigned> pressedKeys;
    std::map<uint32_t, int32_t> firstSlot;
};

Answers touchScreen(int32_t maximumX, int32_t maximumY) {
    Answers answers;
    answers.axes = {ABS_X, ABS_Y};
    answers.keys = {BTN_TOUCH};
    answers.ranges[ABS_X].maximum = maximumX;
    answers.ranges[ABS_Y].maximum = maximumY;
    return answers;
}

Answers multiTouchScreen(int32_t maximumX, int32_t maximumY) {
    Answers answers = touchScreen(99, 99);
    answers.axes.insert({ABS_MT_SLOT, ABS_MT_TRACKING_ID, ABS_MT_POSITION_X, ABS_MT_POSITION_Y});
    answers.ranges[ABS_MT_POSITION_X].maximum = maximumX;
    answers.ranges[ABS_MT_POSITION_Y].maximum = maximumY;
    return answers;
}

std::map<std::string, Answers> devices; // by path
std::map<int, std::string> openPaths;
std::map<std::string, int> openErrors;

int fakeOpen(const char* path, int flags) {
    if (openErrors.count(path) != 0) {
        errno = openErrors[path];
        return -1;
    }
    const int descriptor = open(path, flags);
    openPaths[descriptor] = path;
    return descriptor;
}

int setBits(void* argument, unsigned long size, const std::set<unsigned>& bits) {
    auto* const bytes = static_cast<unsigned char*>(argument);
    memset(bytes, 0, size);
    for (const unsigned bit : bits)
        if (bit / 8 < size)
            bytes[bit / 8] = static_cast<unsigned char>(bytes[bit / 8] | 1U << bit % 8);
    return static_cast<int>(size);
}

int refuse() {
    errno = ENOTTY;
    return -1;
}

int fakeIoctl(int descriptor, unsigned long request, void* argument) {
    const auto found = devices.find(openPaths[descriptor]);
    if (found == devices.end())
        return refuse();
    const Answers& answers = found->second;
    const unsigned number = _IOC_NR(request);
    const unsigned long size = _IOC_SIZE(request);
    if (number == _IOC_NR(EVIOCGPROP(0)))
        return setBits(
            argument, size, answers.isTouchPad ? std::set<unsigned>{INPUT_PROP_POINTER} : std::set<unsigned>{});
    if (number == _IOC_NR(EVIOCGBIT(EV_ABS, 0)))
        return setBits(argument, size, answers.axes);
    if (number == _IOC_NR(EVIOCGBIT(EV_KEY, 0)))
        return setBits(argument, size, answers.keys);
    if (number == _IOC_NR(EVIOCGKEY(0)))
        return answers.tellsKeys ? setBits(argument, size, answers.pressedKeys) : refuse();
    if (number == _IOC_NR(EVIOCGMTSLOTS(0))) {
        auto* const slots = static_cast<int32_t*>(argument);
        const auto slot = answers.firstSlot.find(static_cast<uint32_t>(slots[0]));
        if (slot == answers.firstSlot.end())
            return refuse();
        slots[1] = slot->second;
        return 0;
    }
    const auto range = answers.ranges.find(static_cast<unsigned>(number - _IOC_NR(EVIOCGABS(0))));
    if (range == answers.ranges.end())
        return refuse();
    *static_cast<input_absinfo*>(argument) = range->second;
    return 0;
}

class TouchNodes : public testing::Test {
  protected:
    TouchNodes() : systemCalls(touchCalls) {
        char pattern[] = "/tmp/ostrel-touch-XXXXXX";
        directory = mkdtemp(pattern);
        touchCalls.open = fakeOpen;
        touchCalls.ioctl = fakeIoctl;
        unsetenv("OSTREL_TOUCH");
        unsetenv("OSTREL_TOUCH_CALIBRATION");
        unsetenv("OSTREL_TOUCH_STALE_MS");
    }
    ~TouchNodes() override {
        closeTouchDevice(device);
        touchCalls = systemCalls;
        devices.clear();
        openPaths.clear();
        openErrors.clear();
        for (const std::string& path : nodes)
            unlink(path.c_str());
        rmdir(directory.c_str());
        unsetenv("OSTREL_TOUCH");
        unsetenv("OSTREL_TOUCH_CALIBRATION");
        unsetenv("OSTREL_TOUCH_STALE_MS");
    }

    std::string node(const std::string& name) {
        std::string path = directory + "/" + name;
        EXPECT_EQ(mkfifo(path.c_str(), 0600), 0);
        nodes.push_back(path);
        return path;
    }
    std::string found() { return findTouchDevice(directory, device, why) ? device.path.substr(directory.size()) : why; }

    std::string directory;
    std::vector<std::string> nodes;
    TouchDevice device;
    std::string why;
    TouchCalls systemCalls;
};

// A device that answers queries and is no stream, over a pipe.
struct AskedDevice {
    TouchDevice device;
    int writer = -1;
    TouchCalls systemCalls = touchCalls;

    explicit AskedDevice(const Answers& answers, bool multiTouch) {
        int ends[2] = {-1, -1};
        EXPECT_EQ(pipe2(ends, O_NONBLOCK | O_CLOEXEC), 0);
        writer = ends[1];
        device.descriptor = ends[0];
        device.multiTouch = multiTouch;
        openPaths[ends[0]] = "asked";
        devices["asked"] = answers;
        touchCalls.ioctl = fakeIoctl;
    }
    ~AskedDevice() {
        closeTouchDevice(device);
        if (writer >= 0)
            close(writer);
        touchCalls = systemCalls;
        devices.clear();
        openPaths.clear();
    }
    AskedDevice(const AskedDevice&) = delete;
    AskedDevice& operator=(const AskedDevice&) = delete;
};

} // namespace

TEST_F(TouchNodes, AreSearchedInTheOrderOfTheirNumbers) {
    devices[node("event10")] = touchScreen(319, 239);
    devices[node("event9")] = touchScreen(319, 239);
    EXPECT_EQ(found(), "/event9");
}

TEST_F(TouchNodes, AreTakenOnlyWhenTheyAreTouchScreens) {
    devices[node("event0")].keys = {KEY_A, KEY_ENTER};
    Answers& joystick = devices[node("event1")] = touchScreen(255, 255);
    joystick.keys = {BTN_TRIGGER};
    devices[node("event2")] = touchScreen(1000, 1000);
    devices[directory + "/event2"].isTouchPad = true;
    node("event3"); // answers nothing
    node("event4x");
    node("mouse0");
    devices[node("event5")] = multiTouchScreen(4095, 2047);
    EXPECT_EQ(found(), "/event5");
    EXPECT_TRUE(device.multiTouch);
    EXPECT_EQ(device.scale.toPanel(2048, 1024).x, 160);
    EXPECT_EQ(device.scale.toPanel(2048, 1024).y, 120);
}

TEST_F(TouchNodes, AreReportedWhenNoneServes) {
    EXPECT_EQ(found(), "there is none");
    devices[node("event0")].keys = {KEY_A};
    EXPECT_EQ(found(), "none is a touch screen");
}

TEST_F(TouchNodes, ThatMayNotBeOpenedSayWhy) {
    openErrors[node("event0")] = EACCES;
    EXPECT_EQ(found(), "Permission denied");
}

TEST_F(TouchNodes, AreFoundInADirectoryThatDoesNotExist) {
    directory += "/none";
    EXPECT_EQ(found(), "there is none");
    directory.resize(directory.size() - 5);
}

TEST_F(TouchNodes, AreNamedByTheVariableFirst) {
    devices[node("event0")] = touchScreen(319, 239);
    const std::string named = node("panel");
    setenv("OSTREL_TOUCH", named.c_str(), 1);
    device = openPanelTouch(directory);
    EXPECT_EQ(device.path, named);
    EXPECT_TRUE(device.isStream);
    EXPECT_EQ(device.scale.toPanel(17, 18).x, 17);
    EXPECT_EQ(device.scale.toPanel(17, 18).y, 18);
}

TEST_F(TouchNodes, AreSearchedWhenTheVariableIsEmpty) {
    devices[node("event0")] = touchScreen(639, 479);
    setenv("OSTREL_TOUCH", "", 1);
    device = openPanelTouch(directory);
    EXPECT_EQ(device.path, directory + "/event0");
    EXPECT_EQ(device.scale.toPanel(100, 100).x, 50);
}

TEST_F(TouchNodes, MayBeCalibrated) {
    setenv("OSTREL_TOUCH", node("panel").c_str(), 1);
    setenv("OSTREL_TOUCH_CALIBRATION", "-1 0 319 0 -1 239 1", 1);
    device = openPanelTouch(directory);
    EXPECT_EQ(device.scale.toPanel(19, 39).x, 300);
    EXPECT_EQ(device.scale.toPanel(19, 39).y, 200);
}

TEST_F(TouchNodes, IgnoreABrokenCalibrationAndSaySo) {
    setenv("OSTREL_TOUCH", node("panel").c_str(), 1);
    setenv("OSTREL_TOUCH_CALIBRATION", "1 0 0", 1);
    testing::internal::CaptureStderr();
    device = openPanelTouch(directory);
    EXPECT_EQ(
        testing::internal::GetCapturedStderr(), "ostrel: OSTREL_TOUCH_CALIBRATION is \"1 0 0\": not seven whole "
                                                "numbers \"a b c d e f divisor\". The pen is not "
                                                "corrected.\n");
    EXPECT_EQ(device.scale.toPanel(19, 39).x, 19);
}

TEST_F(TouchNodes, MayKeepStrokesForLonger) {
    setenv("OSTREL_TOUCH", node("panel").c_str(), 1);
    for (const auto& [text, staleAfterMs] : {std::pair("1", 1), std::pair("86400000", 86400000), std::pair("", 250)}) {
        setenv("OSTREL_TOUCH_STALE_MS", text, 1);
        device = openPanelTouch(directory);
        EXPECT_EQ(device.staleAfterMs, staleAfterMs) << text;
        closeTouchDevice(device);
    }
    for (const char* text : {"0", "86400001", "-1", "1 s", "soon"}) {
        setenv("OSTREL_TOUCH_STALE_MS", text, 1);
        testing::internal::CaptureStderr();
        device = openPanelTouch(directory);
        EXPECT_EQ(
            testing::internal::GetCapturedStderr(),
            "ostrel: OSTREL_TOUCH_STALE_MS is \"" + std::string(text) +
                "\": not a whole number of milliseconds up to a day. Old strokes are dropped after 250 ms.\n");
        EXPECT_EQ(device.staleAfterMs, 250);
        closeTouchDevice(device);
    }
}

TEST_F(TouchNodes, ThatAreMissingAreSaidInOneLine) {
    const struct {
        std::string named;
        std::string line;
    } cases[] = {
        {"", "at " + directory + "/event*: there is none"},
        {directory + "/none", "at " + directory + "/none: No such file or directory"},
        {directory, "at " + directory + ": it is neither an input device nor a FIFO"},
        {"/dev/null", "at /dev/null: it is not a touch screen"},
        {"/etc/passwd", "at /etc/passwd: it is neither an input device nor a FIFO"},
    };
    for (const auto& one : cases) {
        setenv("OSTREL_TOUCH", one.named.c_str(), 1);
        testing::internal::CaptureStderr();
        const TouchDevice none = openPanelTouch(directory);
        EXPECT_EQ(
            testing::internal::GetCapturedStderr(),
            "ostrel: no touch screen " + one.line +
                ". The pen stays up; run the program with 'ostrel-sim PROGRAM', or name a touch device in "
                "OSTREL_TOUCH.\n");
        EXPECT_EQ(none.descriptor, -1);
    }
}

TEST_F(TouchNodes, ThatAreFifosNeedNoWriterAndOutliveOne) {
    const std::string path = node("panel");
    ASSERT_TRUE(openTouchDevice(path.c_str(), device, why)) << why;
    TouchEvent events[READ_EVENTS];
    size_t count = 0;
    EXPECT_EQ(readTouchEvents(device, events, count), TouchRead::All);
    for (int writer = 0; writer < 2; ++writer) {
        const int stream = open(path.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
        ASSERT_GE(stream, 0);
        input_event record{};
        record.type = EV_ABS;
        record.code = ABS_X;
        record.value = writer;
        EXPECT_EQ(write(stream, &record, sizeof record), static_cast<ssize_t>(sizeof record));
        close(stream);
        EXPECT_EQ(readTouchEvents(device, events, count), TouchRead::All);
        ASSERT_EQ(count, 1U);
        EXPECT_EQ(events[0].value, writer);
        EXPECT_EQ(readTouchEvents(device, events, count), TouchRead::All);
        EXPECT_EQ(count, 0U);
    }
}

TEST_F(TouchNodes, AreNotInheritedByProgramsThatAreStarted) {
    ASSERT_TRUE(openTouchDevice(node("panel").c_str(), device, why)) << why;
    EXPECT_NE(fcntl(device.descriptor, F_GETFD) & FD_CLOEXEC, 0);
    EXPECT_NE(fcntl(device.descriptor, F_GETFL) & O_NONBLOCK, 0);
}

TEST(TouchReading, IsGoneAtTheEndOfTheDeviceAndAtAnError) {
    AskedDevice asked(Answers{}, false);
    close(asked.writer);
    asked.writer = -1;
    TouchEvent events[READ_EVENTS];
    size_t count = 7;
    EXPECT_EQ(readTouchEvents(asked.device, events, count), TouchRead::Gone);
    EXPECT_EQ(count, 0U);
    touchCalls.read = [](int, void*, size_t) -> ssize_t {
        errno = ENODEV;
        return -1;
    };
    EXPECT_EQ(readTouchEvents(asked.device, events, count), TouchRead::Gone);
}

TEST(TouchReading, IsRepeatedWhenASignalInterruptsIt) {
    AskedDevice asked(Answers{}, false);
    static int calls = 0;
    calls = 0;
    touchCalls.read = [](int, void*, size_t) -> ssize_t {
        errno = ++calls < 3 ? EINTR : EAGAIN;
        return -1;
    };
    TouchEvent events[READ_EVENTS];
    size_t count = 0;
    EXPECT_EQ(readTouchEvents(asked.device, events, count), TouchRead::All);
    EXPECT_EQ(calls, 3);
}

TEST(TouchReading, SaysThatThereMayBeMoreWhenItsBufferIsFull) {
    AskedDevice asked(Answers{}, false);
    const input_event record{};
    for (int i = 0; i < 65; ++i)
        ASSERT_EQ(write(asked.writer, &record, sizeof record), static_cast<ssize_t>(sizeof record));
    TouchEvent events[READ_EVENTS];
    size_t count = 0;
    EXPECT_EQ(readTouchEvents(asked.device, events, count), TouchRead::More);
    EXPECT_EQ(count, 64U);
    EXPECT_EQ(readTouchEvents(asked.device, events, count), TouchRead::All);
    EXPECT_EQ(count, 1U);
}

TEST(AskingForTheState, TellsTheOnlyTouch) {
    Answers answers = touchScreen(319, 239);
    answers.tellsKeys = true;
    answers.pressedKeys = {BTN_TOUCH};
    answers.ranges[ABS_X].value = 100;
    answers.ranges[ABS_Y].value = 50;
    const AskedDevice asked(answers, false);
    TouchState state;
    ASSERT_TRUE(askTouchState(asked.device, state));
    EXPECT_TRUE(state.down);
    EXPECT_FALSE(state.multiTouch);
    EXPECT_EQ(state.x, 100);
    EXPECT_EQ(state.y, 50);
    devices["asked"].pressedKeys.clear();
    ASSERT_TRUE(askTouchState(asked.device, state));
    EXPECT_FALSE(state.down);
}

TEST(AskingForTheState, TellsTheFirstContact) {
    Answers answers = multiTouchScreen(4095, 4095);
    answers.ranges[ABS_MT_SLOT].value = 3;
    answers.firstSlot = {{ABS_MT_TRACKING_ID, 12}, {ABS_MT_POSITION_X, 1000}, {ABS_MT_POSITION_Y, 2000}};
    const AskedDevice asked(answers, true);
    TouchState state;
    ASSERT_TRUE(askTouchState(asked.device, state));
    EXPECT_TRUE(state.multiTouch);
    EXPECT_TRUE(state.down);
    EXPECT_EQ(state.trackingId, 12);
    EXPECT_EQ(state.slot, 3);
    EXPECT_EQ(state.x, 1000);
    EXPECT_EQ(state.y, 2000);
    devices["asked"].firstSlot[ABS_MT_TRACKING_ID] = -1;
    ASSERT_TRUE(askTouchState(asked.device, state));
    EXPECT_FALSE(state.down);
}

TEST(AskingForTheState, IsInVainWhereTheDeviceDoesNotAnswer) {
    const AskedDevice silent(touchScreen(319, 239), false);
    TouchState state;
    state.x = 77;
    EXPECT_FALSE(askTouchState(silent.device, state));
    EXPECT_EQ(state.x, 77);
}

TEST(AskingForTheState, IsNotDoneWithAStreamWhoseUnreadPartComesFirst) {
    Answers answers = touchScreen(319, 239);
    answers.tellsKeys = true;
    AskedDevice asked(answers, false);
    asked.device.isStream = true;
    TouchState state;
    EXPECT_FALSE(askTouchState(asked.device, state));
}
