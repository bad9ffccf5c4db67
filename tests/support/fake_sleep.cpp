#include "tests/support/fake_sleep.h"

#include "tests/support/call_log.h"
#include "util/api.h"

#include <string>
#include <unistd.h>

FakeSleep& fakeSleep() {
    static FakeSleep* const state = new FakeSleep;
    return *state;
}

namespace {

void pretendSleep(const char* function, unsigned length, uint64_t us) {
    if (fakeSleep().log)
        callLog().add(std::string(function) + "(" + std::to_string(length) + ")");
    fakeSleep().sleptUs += us;
    if (fakeSleep().duringSleep)
        fakeSleep().duringSleep(us);
}

} // namespace

extern "C" OSTREL_API unsigned sleepTaken(unsigned seconds) __asm__("sleep");
extern "C" unsigned sleepTaken(unsigned seconds) {
    pretendSleep("sleep", seconds, uint64_t{seconds} * 1000000);
    return 0;
}

extern "C" OSTREL_API int usleepTaken(useconds_t us) __asm__("usleep");
extern "C" int usleepTaken(useconds_t us) {
    pretendSleep("usleep", us, us);
    return 0;
}
