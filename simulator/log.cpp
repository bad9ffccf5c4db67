#include "simulator/log.h"

#include "simulator/failure.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/inotify.h>

namespace ostrel {

Log::Log(const std::string& file, EventLoop& loop)
    : loop(loop), appending(open(file.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0600)), path(file) {
    if (!appending.isOpen())
        throw systemFailure("cannot write " + file);
}

Log::~Log() {
    if (changes.isOpen())
        loop.unwatch(changes.get());
}

void Log::write(const std::string& line) {
    const std::string whole = line + "\n";
    // A log that cannot be written, on a full disk, is no reason to end the program.
    [[maybe_unused]] const ssize_t written = ::write(appending.get(), whole.data(), whole.size());
}

void Log::show() {
    reading = Descriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    changes = Descriptor(inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
    if (!reading.isOpen() || inotify_add_watch(changes.get(), path.c_str(), IN_MODIFY) < 0)
        throw systemFailure("cannot watch " + path);
    loop.watch(changes.get(), POLLIN, [this](short /*events*/) { copyRest(); });
}

void Log::copyRest() {
    if (!reading.isOpen())
        return;
    char bytes[4096];
    while (read(changes.get(), bytes, sizeof bytes) > 0) {
    }
    for (ssize_t count = 0; (count = read(reading.get(), bytes, sizeof bytes)) > 0;)
        if (::write(STDERR_FILENO, bytes, static_cast<size_t>(count)) < 0)
            return;
}

} // namespace ostrel
