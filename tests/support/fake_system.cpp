#include "tests/support/fake_system.h"

#include "tests/support/call_log.h"
#include "util/api.h"

#include <cerrno>
#include <dirent.h>
#include <dlfcn.h>
#include <memory>

FakeSystem& fakeSystem() {
    static FakeSystem* const system = new FakeSystem;
    return *system;
}

namespace {

const std::string PARTITION = "/data";

bool isOnPartition(const std::string& path) {
    return path == PARTITION || path.compare(0, PARTITION.size() + 1, PARTITION + "/") == 0;
}

template<typename Function>
Function* realFunction(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

} // namespace

extern "C" OSTREL_API int systemTaken(const char* command) __asm__("system");
extern "C" int systemTaken(const char* command) {
    const bool fails = callLog().nextCallFails();
    callLog().add("system(" + quotedBytes(command) + ")");
    if (fails)
        return -1;
    const int status = fakeSystem().run ? fakeSystem().run(command) : 0;
    return status << 8; // as wait encodes an exit status
}

extern "C" OSTREL_API DIR* opendirTaken(const char* path) __asm__("opendir");
extern "C" DIR* opendirTaken(const char* path) {
    FakeSystem& system = fakeSystem();
    if (!isOnPartition(path))
        return realFunction<DIR*(const char*)>("opendir")(path);
    const std::string call = "opendir(" + quotedBytes(path) + ")";
    if (callLog().nextCallFails() || system.directories.count(path) == 0) {
        callLog().add(call + " = null");
        errno = ENOENT;
        return nullptr;
    }
    callLog().add(call);
    // Only its address is used: a handle that no real directory has.
    void* const handle = new char;
    system.openDirectories[handle] = path;
    return static_cast<DIR*>(handle);
}

extern "C" OSTREL_API int closedirTaken(DIR* directory) __asm__("closedir");
extern "C" int closedirTaken(DIR* directory) {
    FakeSystem& system = fakeSystem();
    const auto found = system.openDirectories.find(directory);
    if (found == system.openDirectories.end())
        return realFunction<int(DIR*)>("closedir")(directory);
    callLog().add("closedir(" + quotedBytes(found->second.c_str()) + ")");
    const std::unique_ptr<char> handle(static_cast<char*>(found->first));
    system.openDirectories.erase(found);
    if (!callLog().nextCallFails())
        return 0;
    errno = EIO;
    return -1;
}
