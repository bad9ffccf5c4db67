#include "apps/settings/network_rules.h"
#include "apps/settings/wifi_rules.h"

#include <gtest/gtest.h>

namespace {

std::string name(const std::string& text) {
    const char* const refusal = wrongWithWifiName(text);
    return refusal != nullptr ? refusal : "right";
}

std::string password(const std::string& text) {
    const char* const refusal = wrongWithWifiPassword(text);
    return refusal != nullptr ? refusal : "right";
}

std::string network(const char* address, const char* mask, const char* gateway) {
    const char* const refusal = wrongWithNetwork(address, mask, gateway);
    return refusal != nullptr ? refusal : "right";
}

TEST(WifiName, Has1To32BytesHoweverManyLettersTheyAre) {
    EXPECT_EQ(name(""), "wifi_no_name");
    EXPECT_EQ(name("O"), "right");
    EXPECT_EQ(name(std::string(32, 'x')), "right");
    EXPECT_EQ(name(std::string(33, 'x')), "wifi_name_long");
    EXPECT_EQ(name(std::string(30, 'x') + "é"), "right");
    EXPECT_EQ(name(std::string(31, 'x') + "é"), "wifi_name_long");
}

TEST(WifiPassword, Has8To63Characters) {
    EXPECT_EQ(password(""), "wifi_short");
    EXPECT_EQ(password("1234567"), "wifi_short");
    EXPECT_EQ(password("12345678"), "right");
    EXPECT_EQ(password(std::string(63, 'x')), "right");
    EXPECT_EQ(password(std::string(64, 'x')), "wifi_long");
}

TEST(WifiPassword, HasPrintableAsciiAlone) {
    EXPECT_EQ(password(" correct horse ~"), "right");
    EXPECT_EQ(password("contraseña"), "wifi_signs");
    EXPECT_EQ(password("\x7F 1234567"), "wifi_signs");
    EXPECT_EQ(password("\x1F 1234567"), "wifi_signs");
    EXPECT_EQ(password("ñ"), "wifi_signs");
}

TEST(NetworkMask, IsOnesAndThenZerosWithRoomForTwoDevices) {
    for (const char* const mask :
         {"128.0.0.0", "255.0.0.0", "255.255.255.0", "255.255.240.0", "255.255.255.248", "255.255.255.252"})
        EXPECT_TRUE(isNetworkMask(mask)) << mask;
    for (const char* const mask :
         {"0.0.0.0", "255.255.255.254", "255.255.255.255", "255.0.255.0", "255.255.255.1", "0.255.255.255", "1.0.0.0",
          "127.255.255.255", "", "255.255.255", "24"})
        EXPECT_FALSE(isNetworkMask(mask)) << mask;
}

TEST(Network, TakesAddressesOfOneNetwork) {
    EXPECT_EQ(network("192.168.1.1", "255.255.255.0", "192.168.1.254"), "right");
    EXPECT_EQ(network("192.168.1.254", "255.255.255.0", "192.168.1.1"), "right");
    EXPECT_EQ(network("10.0.0.1", "255.0.0.0", "10.255.255.254"), "right");
    EXPECT_EQ(network("172.16.0.5", "255.255.255.252", "172.16.0.6"), "right");
    EXPECT_EQ(network("1.0.0.1", "255.0.0.0", "1.0.0.2"), "right");
    EXPECT_EQ(network("223.255.255.1", "255.255.255.0", "223.255.255.2"), "right");
}

TEST(Network, NeedsAllThreeAddresses) {
    EXPECT_EQ(network("", "255.255.255.0", "192.168.1.254"), "network_missing");
    EXPECT_EQ(network("192.168.1.1", "", "192.168.1.254"), "network_missing");
    EXPECT_EQ(network("192.168.1.1", "255.255.255.0", ""), "network_missing");
    EXPECT_EQ(network("192.168.1", "255.255.255.0", "192.168.1.254"), "network_missing");
    EXPECT_EQ(network("192.168.1.1", "255.255.255.0", "192.168.1.256"), "network_missing");
}

TEST(Network, RefusesAMaskThatIsNone) {
    EXPECT_EQ(network("192.168.1.1", "255.0.255.0", "192.168.1.254"), "network_no_mask");
    EXPECT_EQ(network("192.168.1.1", "255.255.255.255", "192.168.1.1"), "network_no_mask");
}

TEST(Network, RefusesAddressesThatNoDeviceCanHave) {
    for (const char* const address : {"0.0.0.1", "127.0.0.1", "224.0.0.1", "255.255.255.255"})
        EXPECT_EQ(network(address, "255.255.255.0", address), "network_unusable") << address;
}

TEST(Network, RefusesTheAddressesOfTheWholeNetwork) {
    EXPECT_EQ(network("192.168.1.0", "255.255.255.0", "192.168.1.254"), "network_whole");
    EXPECT_EQ(network("192.168.1.255", "255.255.255.0", "192.168.1.254"), "network_whole");
    EXPECT_EQ(network("172.16.0.4", "255.255.255.252", "172.16.0.6"), "network_whole");
    EXPECT_EQ(network("172.16.0.7", "255.255.255.252", "172.16.0.6"), "network_whole");
}

TEST(Network, RefusesAGatewayInAnotherNetwork) {
    EXPECT_EQ(network("192.168.1.1", "255.255.255.0", "192.168.2.254"), "network_far");
    EXPECT_EQ(network("192.168.1.1", "255.255.255.128", "192.168.1.129"), "network_far");
    EXPECT_EQ(network("192.168.1.1", "255.255.254.0", "192.168.0.254"), "right");
}

TEST(Network, RefusesAGatewayThatIsNoOtherDevice) {
    EXPECT_EQ(network("192.168.1.1", "255.255.255.0", "192.168.1.1"), "network_other");
    EXPECT_EQ(network("192.168.1.1", "255.255.255.0", "192.168.1.0"), "network_other");
    EXPECT_EQ(network("192.168.1.1", "255.255.255.0", "192.168.1.255"), "network_other");
}

} // namespace
