// Slows down who tries passwords. Nobody is locked out: the right password is taken at any time, later at worst, and
// somebody else's tries cost nothing.
#ifndef OSTREL_SIMULATOR_WEB_PASSWORD_TRIES_H
#define OSTREL_SIMULATOR_WEB_PASSWORD_TRIES_H

#include <cstdint>
#include <map>
#include <string>

namespace ostrel {

class PasswordTries {
  public:
    // Counts a try of somebody at `address` and returns how many milliseconds the answer is held back, right or wrong:
    // after three wrong ones a second, then two, then four.
    int64_t holdBack(const std::string& address, bool isRight, int64_t nowMs);

  private:
    struct Wrong {
        int count = 0;
        int64_t lastMs = 0;
    };
    void forget(int64_t nowMs);
    void makeRoom();

    std::map<std::string, Wrong> wrong;
};

} // namespace ostrel

#endif
