#include "simulator/failure.h"

#include <system_error>

namespace ostrel {

Failure systemFailure(const std::string& what, int reason) {
    return Failure(what + ": " + std::generic_category().message(reason));
}

} // namespace ostrel
