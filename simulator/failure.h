// What the user is told when the simulator cannot do its work: one plain sentence and the exit status.
#ifndef OSTREL_SIMULATOR_FAILURE_H
#define OSTREL_SIMULATOR_FAILURE_H

#include <cerrno>
#include <stdexcept>
#include <string>

namespace ostrel {

namespace exit_status {
constexpr int SCRIPT_FAILED = 1;
constexpr int USAGE = 2;
constexpr int SIMULATOR_FAILED = 125; // as env, timeout and chroot say it of themselves
constexpr int NOT_EXECUTABLE = 126;
constexpr int NOT_FOUND = 127;
constexpr int SIGNAL_BASE = 128;
} // namespace exit_status

class Failure : public std::runtime_error {
  public:
    explicit Failure(const std::string& sentence, int status = exit_status::SIMULATOR_FAILED)
        : std::runtime_error(sentence), status(status) {}
    int status;
};

// "cannot write FILE: Permission denied; choose another place": with what to do.
Failure writeFailure(const std::string& what, int reason = errno);

// "cannot open FILE: No such file or directory", with the reason that errno gives.
Failure systemFailure(const std::string& what, int reason = errno);

} // namespace ostrel

#endif
