#include "network_rules.h"

#include <arpa/inet.h>
#include <cstdint>

namespace {

struct Network {
    uint32_t address = 0;
    uint32_t mask = 0;
    uint32_t gateway = 0;
};

bool parse(const std::string& text, uint32_t& number) {
    in_addr parsed{};
    if (inet_pton(AF_INET, text.c_str(), &parsed) != 1)
        return false;
    number = ntohl(parsed.s_addr);
    return true;
}

// Without the host bits of the longest masks there is nobody else in the network.
bool isMask(uint32_t mask) {
    const uint32_t hosts = ~mask;
    return mask != 0 && (hosts & (hosts + 1)) == 0 && hosts >= 3;
}

// "This network", the machine itself, groups of receivers, and what is reserved.
bool isForOneDevice(uint32_t address) {
    const uint32_t first = address >> 24;
    return first != 0 && first != 127 && first < 224;
}

// The first and the last address of a network are those of all its devices.
bool isWholeNetwork(uint32_t address, uint32_t mask) {
    return (address & ~mask) == 0 || (address | mask) == UINT32_MAX;
}

struct Rule {
    bool (*isBroken)(const Network& network);
    const char* refusal;
};
constexpr Rule RULES[] = {
    {[](const Network& n) { return !isMask(n.mask); }, "network_no_mask"},
    {[](const Network& n) { return !isForOneDevice(n.address); }, "network_unusable"},
    {[](const Network& n) { return isWholeNetwork(n.address, n.mask); }, "network_whole"},
    {[](const Network& n) { return (n.gateway & n.mask) != (n.address & n.mask); }, "network_far"},
    {[](const Network& n) { return n.gateway == n.address || isWholeNetwork(n.gateway, n.mask); }, "network_other"},
};

} // namespace

bool isNetworkMask(const std::string& mask) {
    uint32_t number = 0;
    return parse(mask, number) && isMask(number);
}

const char* wrongWithNetwork(const std::string& address, const std::string& mask, const std::string& gateway) {
    Network network;
    if (!parse(address, network.address) || !parse(mask, network.mask) || !parse(gateway, network.gateway))
        return "network_missing";
    for (const Rule& rule : RULES)
        if (rule.isBroken(network))
            return rule.refusal;
    return nullptr;
}
