#include "display/wait_descriptor.h"

#include <sys/epoll.h>
#include <sys/timerfd.h>
#include <unistd.h>

namespace ostrel {

namespace {

bool watch(int epoll, int descriptor) {
    epoll_event event{};
    event.events = EPOLLIN;
    return epoll_ctl(epoll, EPOLL_CTL_ADD, descriptor, &event) == 0;
}

void closeIfOpen(int& descriptor) {
    if (descriptor >= 0)
        close(descriptor);
    descriptor = -1;
}

} // namespace

WaitDescriptor::~WaitDescriptor() {
    closeIfOpen(timer);
    closeIfOpen(epoll);
}

bool WaitDescriptor::open(int device) {
    epoll = epoll_create1(EPOLL_CLOEXEC);
    timer = timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC);
    const bool watches = epoll >= 0 && timer >= 0 && watch(epoll, timer) && (device < 0 || watch(epoll, device));
    if (!watches) {
        closeIfOpen(timer);
        closeIfOpen(epoll);
    }
    return watches;
}

void WaitDescriptor::unwatch(int device) {
    if (isOpen())
        epoll_ctl(epoll, EPOLL_CTL_DEL, device, nullptr);
}

void WaitDescriptor::wakeIn(int64_t delayMs) {
    if (!isOpen())
        return;
    itimerspec due{};
    due.it_value.tv_sec = static_cast<time_t>(delayMs / 1000);
    due.it_value.tv_nsec = static_cast<long>(delayMs % 1000 * 1'000'000);
    if (delayMs <= 0)
        due.it_value.tv_nsec = 1; // all zero would mean never
    timerfd_settime(timer, 0, &due, nullptr);
}

} // namespace ostrel
