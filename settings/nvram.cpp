#include "settings/nvram.h"

#include "settings/nvram_device.h"
#include "util/allocate.h"

#include <utility>

using namespace ostrel;

namespace {

// Programs pass 0 and 1 for the Rtdev section.
int sectionOf(int index) {
    return index == 0 || index == 1 ? 2 : index;
}

} // namespace

char* nvram_get(int index, char* name) {
    NvramRequest request = {};
    request.name = newNvramText(name);
    request.index = sectionOf(index);
    request.value = newNvramText("");
    const int device = openNvram();
    sendNvram(device, NVRAM_IOCTL_GET, request);
    char* result = newNvramText(request.value);
    if (result == nullptr)
        std::swap(result, request.value); // a block of the same size that holds the same text
    release(request.value);
    release(request.name);
    closeNvram(device);
    return result;
}

char* nvram_getRtdev(int index, char* name) {
    return nvram_get(index, name);
}

int nvram_set(int index, char* name, char* value) {
    NvramRequest request = {};
    request.name = newNvramText(name);
    request.index = sectionOf(index);
    request.value = newNvramText(value);
    const bool complete = request.name != nullptr && request.value != nullptr;
    const int device = openNvram();
    sendNvram(device, NVRAM_IOCTL_SET, request);
    release(request.name);
    release(request.value);
    const int closed = closeNvram(device);
    return complete ? closed : -1;
}

int nvram_setRtdev(int index, char* name, char* value) {
    return nvram_set(index, name, value);
}
