#include "simulator/web/ip_address.h"

#include <arpa/inet.h>
#include <cstring>
#include <ifaddrs.h>
#include <memory>
#include <net/if.h>

namespace ostrel {

std::optional<IpAddress> IpAddress::read(const std::string& text) {
    IpAddress address;
    const bool hasBrackets = text.size() > 2 && text.front() == '[' && text.back() == ']';
    const std::string bare = hasBrackets ? text.substr(1, text.size() - 2) : text;
    address.ipv6 = bare.find(':') != std::string::npos;
    if (hasBrackets && !address.ipv6)
        return std::nullopt;
    const int read = address.ipv6 ? inet_pton(AF_INET6, bare.c_str(), &address.six)
                                  : inet_pton(AF_INET, bare.c_str(), &address.four);
    return read == 1 ? std::optional(address) : std::nullopt;
}

std::optional<IpAddress> IpAddress::of(const sockaddr* address) {
    IpAddress found;
    if (address == nullptr)
        return std::nullopt;
    if (address->sa_family == AF_INET) {
        found.four = reinterpret_cast<const sockaddr_in*>(address)->sin_addr;
        return found;
    }
    if (address->sa_family != AF_INET6)
        return std::nullopt;
    found.six = reinterpret_cast<const sockaddr_in6*>(address)->sin6_addr;
    found.ipv6 = !IN6_IS_ADDR_V4MAPPED(&found.six);
    if (!found.ipv6)
        memcpy(&found.four, found.six.s6_addr + 12, sizeof found.four);
    return found;
}

bool IpAddress::isLoopback() const {
    return ipv6 ? IN6_IS_ADDR_LOOPBACK(&six) : ntohl(four.s_addr) >> 24 == IN_LOOPBACKNET;
}

bool IpAddress::isWildcard() const {
    return ipv6 ? IN6_IS_ADDR_UNSPECIFIED(&six) : four.s_addr == htonl(INADDR_ANY);
}

bool IpAddress::isLinkLocal() const {
    return ipv6 && IN6_IS_ADDR_LINKLOCAL(&six);
}

std::string IpAddress::text() const {
    char text[INET6_ADDRSTRLEN] = "";
    if (ipv6)
        inet_ntop(AF_INET6, &six, text, sizeof text);
    else
        inet_ntop(AF_INET, &four, text, sizeof text);
    return text;
}

std::string IpAddress::inUrl() const {
    return ipv6 ? "[" + text() + "]" : text();
}

std::string IpAddress::neighbourhood() const {
    constexpr size_t NETWORK_BYTES = 8;
    if (!ipv6)
        return text();
    IpAddress network = *this;
    memset(network.six.s6_addr + NETWORK_BYTES, 0, sizeof network.six.s6_addr - NETWORK_BYTES);
    return network.text() + "/64";
}

socklen_t IpAddress::fill(sockaddr_storage& storage, int port) const {
    storage = {};
    if (ipv6) {
        auto& address = reinterpret_cast<sockaddr_in6&>(storage);
        address.sin6_family = AF_INET6;
        address.sin6_port = htons(static_cast<uint16_t>(port));
        address.sin6_addr = six;
        return sizeof address;
    }
    auto& address = reinterpret_cast<sockaddr_in&>(storage);
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<uint16_t>(port));
    address.sin_addr = four;
    return sizeof address;
}

std::vector<IpAddress> addressesOfThisMachine() {
    std::vector<IpAddress> addresses;
    ifaddrs* list = nullptr;
    if (getifaddrs(&list) != 0)
        return addresses;
    const std::unique_ptr<ifaddrs, void (*)(ifaddrs*)> owner(list, freeifaddrs);
    for (const ifaddrs* entry = list; entry != nullptr; entry = entry->ifa_next) {
        const std::optional<IpAddress> address = IpAddress::of(entry->ifa_addr);
        if ((entry->ifa_flags & IFF_UP) != 0 && address && !address->isLoopback() && !address->isLinkLocal())
            addresses.push_back(*address);
    }
    return addresses;
}

} // namespace ostrel
