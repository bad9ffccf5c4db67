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

std::string firstDirectory(std::initializer_list<fs::path> candidates, const std::string& what) {
    std::string places;
    for (const fs::path& candidate : candidates) {
        std::error_code error;
        const fs::path directory = fs::canonical(candidate, error);
        if (!error && fs::is_directory(directory, error))
            return directory.string();
        places += (places.empty() ? "" : " or ") + candidate.lexically_normal().string();
    }
    throw Failure("cannot find " + what + " in " + places);
}

} // namespace

std::string supportDirectory() {
    return firstDirectory(
        {ownDirectory() / "../libexec/ostrel-sim"}, "the simulator's own files; install it again: they are not");
}

std::string assetsDirectory() {
    const char* chosen = getenv("OSTREL_ASSETS");
    if (chosen != nullptr && *chosen != '\0')
        return firstDirectory({chosen}, "the assets that $OSTREL_ASSETS names");
    return firstDirectory(
        {ownDirectory() / "../ostrel", ownDirectory() / "../share/ostrel"},
        "the assets that become /ostrel (build them, or set $OSTREL_ASSETS): nothing");
}

std::string pageDirectory() {
    return firstDirectory({ownDirectory() / "../libexec/ostrel-sim/page"}, "the panel's page");
}

} // namespace ostrel
