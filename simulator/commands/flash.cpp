// Mounting and unmounting the flash partition. Its files are a directory of the state directory that stands at the
// partition's device path; mounting binds it to the mount point, in this program's view only.
#include "simulator/commands/command.h"
#include "simulator/state.h"

#include <cerrno>
#include <cstring>
#include <sstream>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/statvfs.h>

namespace ostrel {
namespace {

constexpr char FLASH_TYPE[] = "jffs2";
constexpr int MOUNT_FAILED = 32; // as mount and umount say it themselves
constexpr int USAGE = 1;

struct OptionRow {
    const char* name;
    unsigned long set;
};

// What a flash file system takes and a bound directory can follow.
constexpr OptionRow OPTIONS[] = {
    {"defaults", 0},         {"rw", 0},           {"ro", MS_RDONLY},
    {"noatime", MS_NOATIME}, {"nodev", MS_NODEV}, {"nosuid", MS_NOSUID},
    {"noexec", MS_NOEXEC},   {"sync", 0},         {"relatime", MS_RELATIME},
};

struct MountWords {
    std::string type;
    std::string options;
    Words places; // device and mount point
    bool known = true;
};

MountWords readWords(const Words& words) {
    MountWords read;
    for (size_t i = 0; i < words.size(); ++i) {
        const bool more = i + 1 < words.size();
        if (words[i] == "-t" && more)
            read.type = words[++i];
        else if (words[i] == "-o" && more)
            read.options += (read.options.empty() ? "" : ",") + words[++i];
        else if (words[i] == "-r")
            read.options += read.options.empty() ? "ro" : ",ro";
        else if (!words[i].empty() && words[i][0] != '-')
            read.places.push_back(words[i]);
        else if (words[i] != "-w")
            read.known = false;
    }
    return read;
}

bool readOptions(const std::string& text, unsigned long& flags) {
    std::istringstream names(text);
    for (std::string name; std::getline(names, name, ',');) {
        const OptionRow* found = nullptr;
        for (const OptionRow& row : OPTIONS)
            if (name == row.name)
                found = &row;
        if (found == nullptr)
            return false;
        flags |= found->set;
    }
    return true;
}

bool showsFlash(const std::string& place) {
    struct stat flash = {};
    struct stat there = {};
    return stat(router::FLASH, &flash) == 0 && stat(place.c_str(), &there) == 0 && flash.st_ino == there.st_ino &&
           flash.st_dev == there.st_dev;
}

struct KeptRow {
    unsigned long reported;
    unsigned long set;
};

constexpr KeptRow KEPT[] = {
    {ST_NOSUID, MS_NOSUID},   {ST_NODEV, MS_NODEV},           {ST_NOEXEC, MS_NOEXEC},
    {ST_NOATIME, MS_NOATIME}, {ST_NODIRATIME, MS_NODIRATIME}, {ST_RELATIME, MS_RELATIME},
};

// A bound directory takes options only in a second step, and has to keep those that its file system came with.
bool applyOptions(const char* place, unsigned long flags) {
    struct statvfs current = {};
    if (flags == 0)
        return true;
    if (statvfs(place, &current) != 0)
        return false;
    unsigned long kept = 0;
    for (const KeptRow& row : KEPT)
        kept |= (current.f_flag & row.reported) != 0 ? row.set : 0;
    return mount(nullptr, place, nullptr, MS_REMOUNT | MS_BIND | kept | flags, nullptr) == 0;
}

int mountFlash(const MountWords& words) {
    const std::string& place = words.places[1];
    unsigned long flags = 0;
    struct stat there = {};
    if (words.type != FLASH_TYPE)
        return refuse(
            "mount",
            place + ": wrong fs type, bad option, bad superblock on " + router::FLASH + "; it is a " + FLASH_TYPE +
                " partition.",
            MOUNT_FAILED);
    if (!readOptions(words.options, flags))
        return refuse("mount", place + ": bad option; the simulator knows no '" + words.options + "'.", MOUNT_FAILED);
    if (stat(place.c_str(), &there) != 0)
        return refuse("mount", place + ": mount point does not exist.", MOUNT_FAILED);
    if (!S_ISDIR(there.st_mode))
        return refuse("mount", place + ": mount point is not a directory.", MOUNT_FAILED);
    if (showsFlash(place))
        return refuse("mount", place + ": " + router::FLASH + " already mounted on " + place + ".", MOUNT_FAILED);
    if (mount(router::FLASH, place.c_str(), nullptr, MS_BIND, nullptr) != 0)
        return refuse("mount", place + ": cannot mount " + router::FLASH + ": " + strerror(errno) + ".", MOUNT_FAILED);
    if (applyOptions(place.c_str(), flags))
        return 0;
    const std::string reason = strerror(errno);
    umount2(place.c_str(), MNT_DETACH);
    return refuse("mount", place + ": cannot set '" + words.options + "': " + reason + ".", MOUNT_FAILED);
}

} // namespace

int runMount(const Words& words) {
    const MountWords read = readWords(words);
    if (read.places.empty() || read.places[0] != router::FLASH)
        return becomeOwn("mount", words);
    if (read.places.size() != 2 || !read.known)
        return refuse(
            "mount",
            std::string("the simulator knows only: mount -t ") + FLASH_TYPE + " [-o OPTIONS] " + router::FLASH +
                " DIRECTORY",
            USAGE);
    return mountFlash(read);
}

int runUmount(const Words& words) {
    const bool byDevice = words.size() == 1 && words[0] == router::FLASH;
    const std::string place = byDevice ? router::DATA : words.size() == 1 ? words[0] : "";
    if (!byDevice && !showsFlash(place))
        return becomeOwn("umount", words);
    if (!showsFlash(place))
        return refuse("umount", std::string(router::FLASH) + ": not mounted.", MOUNT_FAILED);
    if (umount2(place.c_str(), 0) == 0)
        return 0;
    return refuse("umount", place + ": " + (errno == EBUSY ? "target is busy" : strerror(errno)) + ".", MOUNT_FAILED);
}

} // namespace ostrel
