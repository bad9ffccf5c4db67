#include "simulator/failure.h"

#include <system_error>

namespace ostrel {

Failure systemFailure(const std::string& what, int reason) {
    return Failure(what + ": " + std::generic_category().message(reason));
}

Failure writeFailure(const std::string& what, int reason) {
    const char* const advice = reason == ENOENT   ? "make its directory first"
                               : reason == ENOSPC ? "make room"
                                                  : "choose another place";
    return Failure(std::string(systemFailure("cannot write " + what, reason).what()) + "; " + advice);
}

} // namespace ostrel
