// The settings driver: the one place that knows its device, its request numbers and the record of a request.
#ifndef OSTREL_SETTINGS_NVRAM_DEVICE_H
#define OSTREL_SETTINGS_NVRAM_DEVICE_H

#include <cstddef>
#include <cstdint>

namespace ostrel {

enum NvramCommand : unsigned long {
    NVRAM_IOCTL_GET = 0x1001,    // index, name; the driver fills value
    NVRAM_IOCTL_SET = 0x1003,    // index, name, value: into the section's working copy
    NVRAM_IOCTL_COMMIT = 0x1004, // index: the section's working copy is kept for good
};

// What a request hands to the driver by address. Names and values lie in blocks of NVRAM_TEXT_LENGTH bytes.
struct NvramRequest {
    int32_t index;    // section: 1 the main one, 2 Rtdev
    int32_t reserved; // 0
    char* name;
    char* value;
};
static_assert(offsetof(NvramRequest, index) == 0, "driver interface");
static_assert(offsetof(NvramRequest, reserved) == 4, "driver interface");
static_assert(offsetof(NvramRequest, name) == 8, "driver interface");
static_assert(offsetof(NvramRequest, value) == 8 + sizeof(char*), "driver interface");
static_assert(sizeof(char*) != 4 || sizeof(NvramRequest) == 16, "driver interface");

// A block of NVRAM_TEXT_LENGTH bytes that holds `text`, cut at its end, with zeros behind it. Null when there is no
// memory. Returned with release.
char* newNvramText(const char* text);

// Opens the device for one request, reading only, whatever the request. -1 when that fails.
int openNvram();

// Sends one request. How it ended is not told: the driver leaves the value buffer as it was, and a read's is cleared
// before. A request whose texts lack memory is not sent. Whatever the driver wrote, the value is terminated.
void sendNvram(int device, NvramCommand command, NvramRequest& request);

// The result of close: 0, or -1 when `device` is -1.
int closeNvram(int device);

} // namespace ostrel

#endif
