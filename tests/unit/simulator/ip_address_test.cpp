#include "simulator/web/ip_address.h"

#include <gtest/gtest.h>

using namespace ostrel;

namespace {

TEST(IpAddress, IsReadAsItIsWritten) {
    const struct {
        const char* text;
        const char* url;
        const char* neighbourhood;
        bool loopback;
        bool wildcard;
    } cases[] = {
        {"127.0.0.1", "127.0.0.1", "127.0.0.1", true, false},
        {"127.255.0.9", "127.255.0.9", "127.255.0.9", true, false},
        {"126.255.255.255", "126.255.255.255", "126.255.255.255", false, false},
        {"128.0.0.0", "128.0.0.0", "128.0.0.0", false, false},
        {"0.0.0.0", "0.0.0.0", "0.0.0.0", false, true},
        {"::", "[::]", "::/64", false, true},
        {"::1", "[::1]", "::/64", true, false},
        {"::2", "[::2]", "::/64", false, false},
        {"fd00:1:2:3:4:5:6:7", "[fd00:1:2:3:4:5:6:7]", "fd00:1:2:3::/64", false, false},
    };
    for (const auto& row : cases) {
        const std::optional<IpAddress> address = IpAddress::read(row.text);
        ASSERT_TRUE(address) << row.text;
        EXPECT_EQ(address->text(), row.text);
        EXPECT_EQ(address->inUrl(), row.url);
        EXPECT_EQ(address->neighbourhood(), row.neighbourhood);
        EXPECT_EQ(address->isLoopback(), row.loopback) << row.text;
        EXPECT_EQ(address->isWildcard(), row.wildcard) << row.text;
    }
    EXPECT_EQ(IpAddress::read("[fd00::2]")->text(), "fd00::2");
    EXPECT_TRUE(IpAddress::read("fe80::1")->isLinkLocal());
    EXPECT_FALSE(IpAddress::read("fec0::1")->isLinkLocal());
}

TEST(IpAddress, IsNothingElse) {
    for (const char* text :
         {"", "desk", "localhost", "127.1", "2130706433", "0x7f000001", "1.2.3", "1.2.3.4.5", "256.0.0.1", "1.2.3.4 ",
          "[1.2.3.4]", "[::1", "::1]", "[]", "[", "fe80::1%eth0", ":::", "127.0.0.1:6080"})
        EXPECT_FALSE(IpAddress::read(text)) << text;
}

TEST(IpAddress, IsThisMachineUntilToldOtherwise) {
    EXPECT_EQ(IpAddress().text(), "127.0.0.1");
}

TEST(IpAddress, SurvivesTheSystemsOwnForm) {
    for (const char* text : {"192.168.1.20", "fd00::2"}) {
        sockaddr_storage storage;
        IpAddress::read(text)->fill(storage, 6080);
        EXPECT_EQ(IpAddress::of(reinterpret_cast<sockaddr*>(&storage))->text(), text);
    }
    sockaddr_storage storage;
    IpAddress::read("::ffff:10.1.2.3")->fill(storage, 6080);
    EXPECT_EQ(IpAddress::of(reinterpret_cast<sockaddr*>(&storage))->neighbourhood(), "10.1.2.3");
    storage.ss_family = AF_UNIX;
    EXPECT_FALSE(IpAddress::of(reinterpret_cast<sockaddr*>(&storage)));
    EXPECT_FALSE(IpAddress::of(nullptr));
}

TEST(IpAddress, OfThisMachineIsOneThatOthersCanUse) {
    for (const IpAddress& address : addressesOfThisMachine()) {
        EXPECT_FALSE(address.isLoopback());
        EXPECT_FALSE(address.isLinkLocal());
        EXPECT_FALSE(address.isWildcard());
    }
}

} // namespace
