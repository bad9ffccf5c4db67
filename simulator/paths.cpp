#include "simulator/paths.h"

#include "simulator/failure.h"

#include <cstdlib>
#include <filesystem>

namespace ostrel {
namespace {

namespace fs = std::filesystem;

fs::path ownDirectory() {
    std::error_code error;
    return fs::read_symlink("/proc/self/exe", error).parent_path();
}

std::string
firstDirectory(std::initializer_list<fs::path> candidates, const std::string& what, const std::string& advice) {
    std::string places;
    for (const fs::path& candidate : candidates) {
        std::error_code error;
        const fs::path directory = fs::canonical(candidate, error);
        if (!error && fs::is_directory(directory, error))
            return directory.string();
        places += (places.empty() ? "" : " or ") + candidate.lexically_normal().string();
    }
    throw Failure("cannot find " + what + " in " + places + "; " + advice);
}

} // namespace

std::string supportDirectory() {
    std::string directory =
        firstDirectory({ownDirectory() / "../libexec/ostrel-sim"}, "the simulator's own files", "install it again");
    for (const char* needed : {"launch", "commands/mount", "factory-settings", OSTREL_SIM_LIB "/ostrel-shim.so"})
        if (!fs::exists(directory + "/" + needed))
            throw Failure("cannot find the simulator's own file " + directory + "/" + needed + "; install it again");
    return directory;
}

std::string assetsDirectory() {
    const std::string what = "the assets that become /ostrel";
    const char* chosen = getenv("OSTREL_ASSETS");
    if (chosen != nullptr && *chosen != '\0')
        return firstDirectory({chosen}, what, "that is what $OSTREL_ASSETS names");
    return firstDirectory(
        {ownDirectory() / "../ostrel", ownDirectory() / "../share/ostrel"}, what,
        "build or install them, or set $OSTREL_ASSETS");
}

std::string pageDirectory() {
    return firstDirectory({ownDirectory() / "../libexec/ostrel-sim/page"}, "the panel's page", "install it again");
}

} // namespace ostrel
