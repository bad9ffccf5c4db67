#include "simulator/sandbox.h"

#include "simulator/state.h"

#include <algorithm>
#include <filesystem>

namespace ostrel {
namespace {

// Made anew in the view: the host's own are not shown.
constexpr const char* OWN[] = {"/dev", "/proc", "/tmp", router::ASSETS, router::DATA, inside::SUPPORT};

struct BoundFile {
    const char* file;
    const char* at;
};
constexpr BoundFile DEVICES[] = {
    {state::FRAMEBUFFER, router::FRAMEBUFFER}, {state::TOUCH, router::TOUCH}, {state::NVRAM, router::NVRAM},
    {state::BACKLIGHT, router::BACKLIGHT},     {state::FLASH, router::FLASH},
};

bool isBelow(const std::string& path, const std::string& directory) {
    return path == directory || path.compare(0, directory.size() + 1, directory + "/") == 0;
}

bool isOwn(const std::string& path) {
    return std::any_of(std::begin(OWN), std::end(OWN), [&](const char* own) { return isBelow(path, own); });
}

} // namespace

std::vector<TopLevelEntry> listTopLevel() {
    namespace fs = std::filesystem;
    std::vector<TopLevelEntry> entries;
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator("/", error)) {
        const bool isLink = entry.is_symlink(error);
        entries.push_back({entry.path().string(), isLink ? fs::read_symlink(entry.path(), error).string() : ""});
    }
    std::sort(entries.begin(), entries.end(), [](const auto& a, const auto& b) { return a.path < b.path; });
    return entries;
}

std::vector<std::string> sandboxArguments(const View& view) {
    std::vector<std::string> arguments = {"--unshare-pid", "--as-pid-1", "--die-with-parent"};
    const auto add = [&](std::initializer_list<std::string> more) {
        arguments.insert(arguments.end(), more.begin(), more.end());
    };
    if (!view.asRoot) // mount and umount want to be root; a real root would lose other users' files in such a namespace
        add({"--unshare-user", "--uid", "0", "--gid", "0", "--cap-add", "CAP_SYS_ADMIN"});
    for (const TopLevelEntry& entry : view.topLevel) {
        if (isOwn(entry.path))
            continue;
        if (entry.linkTarget.empty())
            add({"--ro-bind-try", entry.path, entry.path});
        else
            add({"--symlink", entry.linkTarget, entry.path});
    }
    add({"--proc", "/proc", "--dev", "/dev", "--bind", "/tmp", "/tmp", "--dir", router::DATA});
    if (view.callerDirectory != "/" && (!isOwn(view.callerDirectory) || isBelow(view.callerDirectory, "/tmp")))
        add({"--bind", view.callerDirectory, view.callerDirectory});
    add({"--bind", view.state, view.state});
    add({"--ro-bind", view.assets, router::ASSETS, "--ro-bind", view.support, inside::SUPPORT});
    for (const BoundFile& device : DEVICES)
        add({"--bind", view.state + "/" + device.file, device.at});
    add({"--chdir", "/"});
    return arguments;
}

std::string hiddenBy(const std::string& path) {
    for (const char* own : OWN)
        if (isBelow(path, own) && !isBelow(path, "/tmp"))
            return own;
    return "";
}

} // namespace ostrel
