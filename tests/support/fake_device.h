// Character devices that exist in this process only. open, open64, ioctl and close are taken over; what does not
// concern a device registered here goes on to the kernel. Calls are logged:
//
//     open("/dev/apsoc_nvram", O_RDONLY) = 700
//     ioctl(700, 0x1001, index 2, "ShowPass")
//     close(700)
//
// and one that fails ends with " = -1 EIO". Descriptors count from 700, the lowest free one first.
#ifndef OSTREL_TESTS_SUPPORT_FAKE_DEVICE_H
#define OSTREL_TESTS_SUPPORT_FAKE_DEVICE_H

#include <functional>
#include <map>
#include <string>

struct FakeDevice {
    // errno that open gives; 0: the device can be opened.
    int openError = 0;

    // Answers a request: 0, or the errno that it is refused with. Unset: every request is accepted.
    std::function<int(unsigned long request, void* argument)> answer;

    // The argument as the log shows it. Unset: as a number.
    std::function<std::string(unsigned long request, void* argument)> describe;
};

struct FakeDevices {
    std::map<std::string, FakeDevice> byPath;
    std::map<int, std::string> openDescriptors; // the path that each was opened by
    std::string lastRefused;                    // what the last open could not open; empty: it could
};

// The devices of this process. `fakeDevices() = {}` is a fresh start without any.
FakeDevices& fakeDevices();

#endif
