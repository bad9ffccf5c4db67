// Keeps signals waiting for as long as it lives: a program's handlers run before a request to a driver or after it,
// never inside.
#ifndef OSTREL_SIMULATOR_SHIM_UNINTERRUPTED_H
#define OSTREL_SIMULATOR_SHIM_UNINTERRUPTED_H

#include <csignal>

namespace ostrel {

class Uninterrupted {
  public:
    Uninterrupted() {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &before);
    }
    ~Uninterrupted();
    Uninterrupted(const Uninterrupted&) = delete;
    Uninterrupted& operator=(const Uninterrupted&) = delete;

  private:
    sigset_t before = {};
};

} // namespace ostrel

#endif
