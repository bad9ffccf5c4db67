// Tells the simulator when a program asks for the pen, so that a scripted stroke is sent when somebody looks and not by
// the clock. A question is a read, poll, select or epoll_wait that finds the touch stream empty. What was reported is
// cleared before the stream is read, so that the simulator never takes an old question for a new one.
#include "simulator/shim/device.h"

#include <bitset>
#include <cerrno>
#include <cstddef>
#include <fcntl.h>
#include <poll.h>
#include <sys/epoll.h>
#include <sys/ioctl.h>
#include <sys/select.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace ostrel {
namespace {

// Epoll descriptors to which the touch stream was added; a program polls or waits for them in its place.
constexpr int MAX_EPOLL = 1024;
std::bitset<MAX_EPOLL> epollsWithTouch;

bool isEpollWithTouch(int fd) {
    return fd >= 0 && fd < MAX_EPOLL && epollsWithTouch[static_cast<size_t>(fd)];
}

bool isTouch(int fd) {
    return deviceOf(fd) == Device::Touch;
}

// The kernel is asked directly: the shim's own ioctl answers for the devices.
bool isEmpty(int fd) {
    int bytes = 0;
    return syscall(SYS_ioctl, fd, FIONREAD, &bytes) == 0 && bytes == 0;
}

bool returnsAtOnce(int fd) {
    return (fcntl(fd, F_GETFL) & O_NONBLOCK) != 0;
}

void clearQuestions() {
    sharedPage()->glances = 0;
    sharedPage()->waiting = 0;
}

// Reports that somebody blocks for the pen, as long as it lives.
class Wait {
  public:
    explicit Wait(bool reported) : reported(reported) {
        if (reported)
            sharedPage()->waiting = 1;
    }
    ~Wait() {
        if (reported)
            sharedPage()->waiting = 0;
    }
    Wait(const Wait&) = delete;
    Wait& operator=(const Wait&) = delete;

  private:
    bool reported;
};

template<typename Function>
Function* next(Function* /*signature*/, const char* name) {
    return reinterpret_cast<Function*>(nextDefinition(name));
}

// Whether a wait for `fd` is a question: the stream, empty, or an epoll that watches it.
bool asks(int fd) {
    return isEpollWithTouch(fd) || (isTouch(fd) && isEmpty(fd));
}

bool asks(const pollfd* fds, nfds_t count) {
    if (sharedPage() == nullptr || fds == nullptr)
        return false;
    for (nfds_t i = 0; i < count; ++i)
        if ((fds[i].events & POLLIN) != 0 && asks(fds[i].fd))
            return true;
    return false;
}

bool asks(int count, const fd_set* readable) {
    if (sharedPage() == nullptr || readable == nullptr)
        return false;
    for (int fd = 0; fd < count; ++fd)
        if (FD_ISSET(fd, readable) && asks(fd))
            return true;
    return false;
}

// Runs `wait`, which blocks unless `immediate`, and reports it when it is a question.
template<typename Call>
auto report(bool question, bool immediate, Call wait) {
    if (question && immediate)
        ++sharedPage()->glances;
    const Wait reported(question && !immediate);
    return wait();
}

ssize_t readTouch(int fd, void* buffer, size_t size) {
    static auto* const nextRead = next(&read, "read");
    static auto* const nextPoll = next(&poll, "poll");
    if (!isEmpty(fd))
        clearQuestions();
    else if (returnsAtOnce(fd))
        ++sharedPage()->glances;
    else {
        // Blocks in poll and not in read: the question has to be taken back before the stream is emptied.
        const Wait reported(true);
        pollfd stream = {fd, POLLIN, 0};
        if (nextPoll(&stream, 1, -1) < 0)
            return -1;
    }
    return nextRead(fd, buffer, size);
}

} // namespace
} // namespace ostrel

using namespace ostrel;

extern "C" {

__attribute__((visibility("default"))) ssize_t read(int fd, void* buffer, size_t size) {
    static auto* const nextRead = next(&read, "read");
    if (sharedPage() == nullptr || !isTouch(fd))
        return nextRead(fd, buffer, size);
    return readTouch(fd, buffer, size);
}

__attribute__((visibility("default"))) int poll(pollfd* fds, nfds_t count, int timeoutMs) {
    static auto* const nextPoll = next(&poll, "poll");
    return report(asks(fds, count), timeoutMs == 0, [&] { return nextPoll(fds, count, timeoutMs); });
}

__attribute__((visibility("default"))) int
ppoll(pollfd* fds, nfds_t count, const timespec* timeout, const sigset_t* mask) {
    static auto* const nextPpoll = next(&ppoll, "ppoll");
    const bool immediate = timeout != nullptr && timeout->tv_sec == 0 && timeout->tv_nsec == 0;
    return report(asks(fds, count), immediate, [&] { return nextPpoll(fds, count, timeout, mask); });
}

__attribute__((visibility("default"))) int
select(int count, fd_set* readable, fd_set* writable, fd_set* exceptional, timeval* timeout) {
    static auto* const nextSelect = next(&select, "select");
    const bool immediate = timeout != nullptr && timeout->tv_sec == 0 && timeout->tv_usec == 0;
    return report(
        asks(count, readable), immediate, [&] { return nextSelect(count, readable, writable, exceptional, timeout); });
}

__attribute__((visibility("default"))) int epoll_ctl(int epoll, int operation, int fd, epoll_event* event) noexcept {
    static auto* const nextControl = next(&epoll_ctl, "epoll_ctl");
    const int result = nextControl(epoll, operation, fd, event);
    if (result == 0 && sharedPage() != nullptr && epoll < MAX_EPOLL && isTouch(fd))
        epollsWithTouch[static_cast<size_t>(epoll)] = operation != EPOLL_CTL_DEL;
    return result;
}

__attribute__((visibility("default"))) int epoll_wait(int epoll, epoll_event* events, int count, int timeoutMs) {
    static auto* const nextWait = next(&epoll_wait, "epoll_wait");
    const bool question = sharedPage() != nullptr && isEpollWithTouch(epoll);
    return report(question, timeoutMs == 0, [&] { return nextWait(epoll, events, count, timeoutMs); });
}

// What programs compiled with _FORTIFY_SOURCE call instead.
__attribute__((visibility("default"))) ssize_t __read_chk(int fd, void* buffer, size_t size, size_t /*bufferSize*/) {
    return read(fd, buffer, size);
}

__attribute__((visibility("default"))) int __poll_chk(pollfd* fds, nfds_t count, int timeoutMs, size_t /*fdsSize*/) {
    return poll(fds, count, timeoutMs);
}
}
