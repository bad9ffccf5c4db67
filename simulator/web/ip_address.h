// An IP address as people write it; 127.0.0.1 until told otherwise.
#ifndef OSTREL_SIMULATOR_WEB_IP_ADDRESS_H
#define OSTREL_SIMULATOR_WEB_IP_ADDRESS_H

#include <netinet/in.h>
#include <optional>
#include <string>
#include <sys/socket.h>
#include <vector>

namespace ostrel {

class IpAddress {
  public:
    // "127.0.0.1", "fd00::2", "[fd00::2]"; nothing else, names least of all.
    static std::optional<IpAddress> read(const std::string& text);

    // Empty for what is neither IPv4 nor IPv6. An IPv4 address that comes through an IPv6 socket is one of IPv4.
    static std::optional<IpAddress> of(const sockaddr* address);

    bool isIpv6() const { return ipv6; }
    bool isLoopback() const;  // only programs on this machine reach it
    bool isWildcard() const;  // stands for all addresses of this machine
    bool isLinkLocal() const; // means nothing without the name of an interface

    std::string text() const;
    std::string inUrl() const; // with brackets where they are needed

    // What one person can choose among: the address of IPv4, the network of 64 bits of IPv6.
    std::string neighbourhood() const;

    // For bind and connect; returns the size.
    socklen_t fill(sockaddr_storage& storage, int port) const;

  private:
    bool ipv6 = false;
    in_addr four = {htonl(INADDR_LOOPBACK)};
    in6_addr six = {};
};

// The addresses under which others reach this machine.
std::vector<IpAddress> addressesOfThisMachine();

} // namespace ostrel

#endif
