#include "simulator/log_search.h"

#include "simulator/state.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <utility>

namespace ostrel {
namespace {

Descriptor openLog(const std::string& path) {
    return Descriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC));
}

} // namespace

LogSearch::LogSearch(const std::string& stateDirectory, std::string text)
    : path(stateDirectory + "/" + state::LOG), text(std::move(text)), log(openLog(path)) {
    const Descriptor old = openLog(stateDirectory + "/" + state::OLD_LOG);
    found = old.isOpen() && isInRest(old);
}

bool LogSearch::hasFound() {
    if (!log.isOpen())
        log = openLog(path);
    while (!found && log.isOpen()) {
        // Asked first: who sees a new log has the whole old one to read.
        const bool replaced = isReplaced();
        found = isInRest(log);
        if (!replaced)
            break;
        log = openLog(path);
    }
    return found;
}

// Lines are written whole, but one may lie across two blocks that are read.
bool LogSearch::isInRest(const Descriptor& file) {
    char bytes[65536];
    for (ssize_t count = 0; (count = read(file.get(), bytes, sizeof bytes)) > 0;) {
        tail.append(bytes, static_cast<size_t>(count));
        if (tail.find(text) != std::string::npos)
            return true;
        if (tail.size() >= text.size())
            tail.erase(0, tail.size() - text.size() + 1);
    }
    return false;
}

// A log that has become too long is set aside and a new one begun.
bool LogSearch::isReplaced() const {
    struct stat own = {};
    struct stat current = {};
    return stat(path.c_str(), &current) == 0 && fstat(log.get(), &own) == 0 &&
           (own.st_ino != current.st_ino || own.st_dev != current.st_dev);
}

} // namespace ostrel
