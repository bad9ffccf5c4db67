#include "simulator/shown_log.h"

#include "simulator/failure.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/inotify.h>

namespace ostrel {

ShownLog::ShownLog(const std::string& file, EventLoop& loop)
    : loop(loop), log(open(file.c_str(), O_RDONLY | O_CLOEXEC)), changes(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    if (!log.isOpen() || inotify_add_watch(changes.get(), file.c_str(), IN_MODIFY) < 0)
        throw systemFailure("cannot watch " + file);
    loop.watch(changes.get(), POLLIN, [this](short /*events*/) { copyRest(); });
}

ShownLog::~ShownLog() {
    copyRest();
    loop.unwatch(changes.get());
}

void ShownLog::copyRest() {
    char bytes[4096];
    while (read(changes.get(), bytes, sizeof bytes) > 0) {
    }
    for (ssize_t count = 0; (count = read(log.get(), bytes, sizeof bytes)) > 0;)
        if (write(STDERR_FILENO, bytes, static_cast<size_t>(count)) < 0)
            return;
}

} // namespace ostrel
