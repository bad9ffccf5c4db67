#include "settings/persistence.h"

#include "util/shell.h"

#include <cstdio>
#include <dirent.h>

using namespace ostrel;

namespace {

constexpr size_t COMMAND_BYTES = 200;

void mountPartition() {
    runShell("mount -t jffs2 /dev/mtdblock5 /data");
}

void unmountPartition() {
    runShell("umount /data");
}

// Formats and runs a command, cut at the end of its buffer.
template<typename... Texts>
void runFormatted(const char* format, const Texts*... texts) {
    char command[COMMAND_BYTES];
    std::snprintf(command, sizeof command, format, texts...);
    runShell(command);
}

bool directoryExists(const char* path) {
    DIR* const directory = opendir(path);
    if (directory == nullptr)
        return false;
    closedir(directory);
    return true;
}

} // namespace

Persistence::Persistence(char* first, char* second) {
    std::snprintf(path, sizeof path, "/apps/%s-%s", second, first);
    mountPartition();
    if (!directoryExists("/data/apps"))
        runShell("mkdir /data/apps");
    char directory[COMMAND_BYTES];
    std::snprintf(directory, sizeof directory, "/data%s", path);
    if (!directoryExists(directory))
        runFormatted("mkdir /data%s", path);
    unmountPartition();
}

Persistence::~Persistence() = default;

void Persistence::persist(char* source, char* name) {
    mountPartition();
    runFormatted("cp %s /data%s/%s", source, path, name);
    unmountPartition();
}

void Persistence::depersist(char* name) {
    mountPartition();
    runFormatted("rm /data%s/%s", path, name);
    unmountPartition();
}

void Persistence::copyFile(char* name, char* destination) {
    mountPartition();
    runFormatted("cp /data%s/%s  %s ", path, name, destination);
    unmountPartition();
}
