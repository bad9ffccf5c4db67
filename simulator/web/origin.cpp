#include "simulator/web/origin.h"

#include <algorithm>
#include <iterator>

namespace ostrel {
namespace {

bool isThisMachine(const std::string& host, int port) {
    constexpr const char* NAMES[] = {"127.0.0.1", "localhost", "[::1]"};
    return std::any_of(std::begin(NAMES), std::end(NAMES), [&](const char* name) {
        return host == std::string(name) + ":" + std::to_string(port) || (port == 80 && host == name);
    });
}

} // namespace

bool isForThisPanel(const HttpRequest& request, int port) {
    return isThisMachine(request.header("host"), port);
}

bool isFromThisPanel(const HttpRequest& request, int port) {
    constexpr const char* SCHEME = "http://";
    if (request.headers.count("origin") == 0)
        return true;
    const std::string origin = request.header("origin");
    return origin.rfind(SCHEME, 0) == 0 && isThisMachine(origin.substr(std::string(SCHEME).size()), port);
}

} // namespace ostrel
