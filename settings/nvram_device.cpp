#include "settings/nvram_device.h"

#include "settings/nvram.h"
#include "util/allocate.h"
#include "util/bounded_copy.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace ostrel {

char* newNvramText(const char* text) {
    char* const block = static_cast<char*>(allocateCleared(NVRAM_TEXT_LENGTH));
    if (block != nullptr)
        copyText(block, NVRAM_TEXT_LENGTH, text);
    return block;
}

int openNvram() {
    return open("/dev/apsoc_nvram", O_RDONLY);
}

void sendNvram(int device, NvramCommand command, NvramRequest& request) {
    const bool hasTexts = request.name != nullptr && request.value != nullptr;
    if (command != NVRAM_IOCTL_COMMIT && !hasTexts)
        return;
    ioctl(device, command, &request);
    if (hasTexts)
        request.value[NVRAM_TEXT_LENGTH - 1] = 0;
}

int closeNvram(int device) {
    return close(device);
}

} // namespace ostrel
