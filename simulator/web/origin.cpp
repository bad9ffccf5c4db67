#include "simulator/web/origin.h"

#include "simulator/web/ip_address.h"

#include <algorithm>
#include <climits>
#include <unistd.h>

namespace ostrel {
namespace {

// "[::1]" of "[::1]:6080"; empty when it is no host with or without a port.
std::string withoutPort(const std::string& host) {
    constexpr size_t MAX_DIGITS = 5;
    const size_t colon = host.find(':', host.rfind(']') == std::string::npos ? 0 : host.rfind(']'));
    if (colon == std::string::npos)
        return host;
    const std::string port = host.substr(colon + 1);
    const bool isPort =
        !port.empty() && port.size() <= MAX_DIGITS && port.find_first_not_of("0123456789") == std::string::npos;
    return isPort ? host.substr(0, colon) : "";
}

} // namespace

bool isForThisPanel(const HttpRequest& request, const std::vector<std::string>& names) {
    const std::string host = withoutPort(lowerCase(request.header("host")));
    const bool isBareIpv6 = host.find(':') != std::string::npos && host[0] != '[';
    return host == "localhost" || (IpAddress::read(host) && !isBareIpv6) ||
           (!host.empty() && std::find(names.begin(), names.end(), host) != names.end());
}

bool isFromThisPanel(const HttpRequest& request) {
    return request.headers.count("origin") == 0 ||
           lowerCase(request.header("origin")) == "http://" + lowerCase(request.header("host"));
}

std::vector<std::string> namesOfThisMachine() {
    char name[HOST_NAME_MAX + 1] = "";
    if (gethostname(name, sizeof name - 1) != 0 || name[0] == '\0')
        return {};
    const std::string own = lowerCase(name);
    return {own, own.substr(0, own.find('.')) + ".local"};
}

} // namespace ostrel
