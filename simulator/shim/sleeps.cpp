// The sleeps of a program that runs at another speed than the router's: `ostrel-sim --speed 10` shortens each to a
// tenth. What is left of an interrupted sleep is told in the program's own time.
#include "simulator/shim/device.h"
#include "simulator/state.h"

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <unistd.h>

namespace ostrel {
namespace {

constexpr long NS_PER_S = 1000000000;

// Read at the first question, which may come while libraries are still loaded; 0 until then.
std::atomic<double> knownSpeed = 0;

double speed() {
    if (knownSpeed > 0)
        return knownSpeed;
    const char* const text = getenv(variable::SPEED);
    const double wanted = text != nullptr ? strtod(text, nullptr) : 1;
    knownSpeed = wanted > 0 ? wanted : 1;
    return knownSpeed;
}

// The program cannot change it later by its environment.
__attribute__((constructor)) void readSpeed() {
    speed();
}

template<typename Function>
Function* next(const char* name) {
    return reinterpret_cast<Function*>(nextDefinition(name));
}

// Every timespec of the two that 32-bit programs know.
template<typename Time>
bool isTime(const Time* time) {
    return time != nullptr && time->tv_sec >= 0 && time->tv_nsec >= 0 && time->tv_nsec < NS_PER_S;
}

template<typename Time>
Time scaled(const Time& time, double factor) {
    constexpr double LONGEST_S = 2000000000;
    double seconds = (static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / NS_PER_S) * factor;
    if (seconds > LONGEST_S)
        seconds = LONGEST_S;
    Time result = {};
    result.tv_sec = static_cast<decltype(result.tv_sec)>(seconds);
    result.tv_nsec = static_cast<decltype(result.tv_nsec)>((seconds - static_cast<double>(result.tv_sec)) * NS_PER_S);
    return result;
}

template<typename Time>
Time sum(const Time& a, const Time& b, int sign) {
    Time result = a;
    result.tv_sec += sign * b.tv_sec;
    result.tv_nsec += sign * b.tv_nsec;
    if (result.tv_nsec < 0 || result.tv_nsec >= NS_PER_S) {
        const int carry = result.tv_nsec < 0 ? -1 : 1;
        result.tv_nsec -= carry * NS_PER_S;
        result.tv_sec += carry;
    }
    return result;
}

template<typename Time>
bool isLater(const Time& a, const Time& b) {
    return a.tv_sec != b.tv_sec ? a.tv_sec > b.tv_sec : a.tv_nsec > b.tv_nsec;
}

template<typename Time>
using Sleep = int(const Time*, Time*);
template<typename Time>
using ClockSleep = int(clockid_t, int, const Time*, Time*);
template<typename Time>
using ReadClock = int(clockid_t, Time*);

template<typename Time>
int sleepFor(Sleep<Time>* real, const Time* wanted, Time* left) {
    if (speed() == 1 || !isTime(wanted))
        return real(wanted, left);
    const Time shortened = scaled(*wanted, 1 / speed());
    Time realLeft = {};
    const int result = real(&shortened, &realLeft);
    if (result != 0 && errno == EINTR && left != nullptr)
        *left = scaled(realLeft, speed());
    return result;
}

template<typename Time>
int sleepByClock(
    ClockSleep<Time>* real, ReadClock<Time>* readClock, clockid_t clock, int flags, const Time* wanted, Time* left) {
    Time now = {};
    if (speed() == 1 || !isTime(wanted))
        return real(clock, flags, wanted, left);
    if ((flags & TIMER_ABSTIME) != 0) {
        if (readClock(clock, &now) != 0 || !isLater(*wanted, now))
            return real(clock, flags, wanted, left);
        const Time sooner = sum(now, scaled(sum(*wanted, now, -1), 1 / speed()), 1);
        return real(clock, flags, &sooner, left);
    }
    const Time shortened = scaled(*wanted, 1 / speed());
    Time realLeft = {};
    const int error = real(clock, flags, &shortened, &realLeft);
    if (error == EINTR && left != nullptr)
        *left = scaled(realLeft, speed());
    return error;
}

} // namespace
} // namespace ostrel

extern "C" {

__attribute__((visibility("default"))) int nanosleep(const timespec* requested_time, timespec* remaining) {
    return ostrel::sleepFor(ostrel::next<ostrel::Sleep<timespec>>("nanosleep"), requested_time, remaining);
}

__attribute__((visibility("default"))) int
clock_nanosleep(clockid_t clock_id, int flags, const timespec* req, timespec* rem) {
    return ostrel::sleepByClock(
        ostrel::next<ostrel::ClockSleep<timespec>>("clock_nanosleep"), clock_gettime, clock_id, flags, req, rem);
}

__attribute__((visibility("default"))) int usleep(useconds_t useconds) {
    constexpr useconds_t US_PER_S = 1000000;
    timespec wanted = {};
    wanted.tv_sec = static_cast<time_t>(useconds / US_PER_S);
    wanted.tv_nsec = static_cast<long>(useconds % US_PER_S) * 1000;
    return nanosleep(&wanted, nullptr);
}

__attribute__((visibility("default"))) unsigned sleep(unsigned seconds) {
    timespec wanted = {};
    wanted.tv_sec = static_cast<time_t>(seconds);
    timespec left = {};
    if (nanosleep(&wanted, &left) == 0)
        return 0;
    return static_cast<unsigned>(left.tv_sec) + (left.tv_nsec >= ostrel::NS_PER_S / 2 ? 1 : 0);
}

#if __SIZEOF_POINTER__ == 4
// What the two are called in 32-bit programs that were built with a 64-bit time_t.
struct Time64 {
    long long tv_sec;
    int tv_nsec;
    int unused;
};

__attribute__((visibility("default"))) int __nanosleep64(const Time64* wanted, Time64* left) {
    return ostrel::sleepFor(ostrel::next<ostrel::Sleep<Time64>>("__nanosleep64"), wanted, left);
}

__attribute__((visibility("default"))) int
__clock_nanosleep_time64(clockid_t clock, int flags, const Time64* wanted, Time64* left) {
    return ostrel::sleepByClock(
        ostrel::next<ostrel::ClockSleep<Time64>>("__clock_nanosleep_time64"),
        ostrel::next<ostrel::ReadClock<Time64>>("__clock_gettime64"), clock, flags, wanted, left);
}
#endif
}
