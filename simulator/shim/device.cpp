#include "simulator/shim/device.h"

#include "simulator/state.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace ostrel {
namespace {

struct BoundFile {
    Device device;
    const char* path;
    dev_t dev;
    ino_t ino;
};

struct Shim {
    BoundFile files[4] = {
        {Device::Framebuffer, router::FRAMEBUFFER, 0, 0},
        {Device::Touch, router::TOUCH, 0, 0},
        {Device::Nvram, router::NVRAM, 0, 0},
        {Device::Backlight, router::BACKLIGHT, 0, 0},
    };
    char state[4096] = "";
    SharedPage* page = nullptr;
    bool joined = false;
};

Shim shim;

SharedPage* mapSharedPage(const char* directory) {
    char path[4096];
    const int length = snprintf(path, sizeof path, "%s/%s", directory, state::SHARED_PAGE);
    if (length < 0 || static_cast<size_t>(length) >= sizeof path)
        return nullptr;
    const int fd = open(path, O_RDWR | O_CLOEXEC);
    if (fd < 0)
        return nullptr;
    void* page = mmap(nullptr, sizeof(SharedPage), PROT_READ | PROT_WRITE, MAP_SHARED, fd, 0);
    close(fd);
    return page == MAP_FAILED ? nullptr : static_cast<SharedPage*>(page);
}

void join() {
    const char* directory = getenv(variable::STATE);
    if (directory == nullptr || strlen(directory) >= sizeof shim.state)
        return;
    const int savedErrno = errno;
    for (BoundFile& file : shim.files) {
        struct stat status = {};
        if (stat(file.path, &status) == 0) {
            file.dev = status.st_dev;
            file.ino = status.st_ino;
        }
    }
    snprintf(shim.state, sizeof shim.state, "%s", directory);
    shim.page = mapSharedPage(directory);
    if (shim.page != nullptr)
        ++shim.page->programs;
    shim.joined = true;
    errno = savedErrno;
}

// Libraries that read settings while they are loaded come before this one's turn: whoever asks first joins.
const Shim& joinedShim() {
    if (!shim.joined)
        join();
    return shim;
}

// The environment is read once, before the program can change it.
__attribute__((constructor)) void joinAtLast() {
    joinedShim();
    shim.joined = true;
}

} // namespace

Device deviceOf(int fd) {
    struct stat status = {};
    if (joinedShim().page == nullptr || fstat(fd, &status) != 0)
        return Device::None;
    for (const BoundFile& file : shim.files)
        if (file.ino == status.st_ino && file.dev == status.st_dev)
            return file.device;
    return Device::None;
}

SharedPage* sharedPage() {
    return joinedShim().page;
}

const char* stateDirectory() {
    return joinedShim().page != nullptr ? shim.state : nullptr;
}

void* nextDefinition(const char* name) {
    return dlsym(RTLD_NEXT, name);
}

} // namespace ostrel
