#include "tests/e2e/settings/settings_desk.h"

namespace {

constexpr Point NETWORK = {238, 77};
constexpr Point DHCP = {160, 63};
constexpr Point ADDRESS = {160, 101};
constexpr Point MASK = {160, 139};
constexpr Point GATEWAY = {160, 177};

class NetworkPage : public SettingsDesk {};
INSTANTIATE_TEST_SUITE_P(In, NetworkPage, testing::Values("english", "greek"), languageOf);

TEST_P(NetworkPage, StoresAddressesByHandAsOneBatch) {
    play(Story()
             .tap(NETWORK)
             .shot("network")
             .tap(ADDRESS) // out of reach
             .tap(DHCP)
             .shot("network-by-hand")
             .tap(ADDRESS)
             .tap(KEYPAD_DELETE, 11)
             .dial("10.1.2.3")
             .tap(KEYPAD_DONE)
             .tap(MASK)
             .tap(KEYPAD_DELETE, 5)
             .dial("0.0")
             .tap(KEYPAD_DONE)
             .tap(GATEWAY)
             .tap(KEYPAD_DELETE, 13)
             .dial("10.1.0.1")
             .tap(KEYPAD_DONE)
             .shot("network-changed")
             .tap(SAVE)
             .shot("network-saved")
             .say(RESTARTED)
             .tap(PAGE_BACK));
    EXPECT_TRUE(shows("network"));
    EXPECT_TRUE(shows("network-by-hand"));
    EXPECT_TRUE(shows("network-changed"));
    EXPECT_TRUE(shows("network-saved"));
    EXPECT_EQ(
        stored(), "set main DHCP: \"0\"\n"
                  "set main IPAddress: \"10.1.2.3\"\n"
                  "set main NetMask: \"255.255.0.0\"\n"
                  "set main Gateway: \"10.1.0.1\"\n"
                  "commit main\n");
    EXPECT_EQ(kept("main IPAddress"), "10.1.2.3\n");
}

TEST_P(NetworkPage, RefusesWhatIsNoAddressOrMaskInItsEntry) {
    give("main DHCP", "0");
    play(Story()
             .tap(NETWORK)
             .tap(ADDRESS)
             .dial(".7")
             .tap(KEYPAD_DONE)
             .shot("network-no-address")
             .tap(ANYWHERE)
             .tap(KEYPAD_BACK)
             .tap(MASK)
             .tap(KEYPAD_DELETE)
             .dial("1")
             .tap(KEYPAD_DONE)
             .shot("network-no-mask")
             .tap(ANYWHERE)
             .tap(KEYPAD_DELETE)
             .dial("128")
             .tap(KEYPAD_DONE)
             .tap(SAVE)
             .say("expect-setting 1 NetMask 255.255.255.0")
             .shot("network-mask-far") // the gateway, .254, is in the other half
             .tap(ANYWHERE)
             .tap(GATEWAY)
             .tap(KEYPAD_DELETE, 3)
             .dial("126")
             .tap(KEYPAD_DONE)
             .tap(SAVE)
             .say(RESTARTED));
    EXPECT_TRUE(shows("network-no-address", MESSAGE_BOX));
    EXPECT_TRUE(shows("network-no-mask", MESSAGE_BOX));
    EXPECT_TRUE(shows("network-mask-far", MESSAGE_BOX));
    EXPECT_EQ(stored(), "set main NetMask: \"255.255.255.128\"\nset main Gateway: \"192.168.1.126\"\ncommit main\n");
}

struct Combination {
    const char* address;
    const char* gateway;
    const char* refusal;
};
constexpr Combination COMBINATIONS[] = {
    {"127.0.0.1", "127.0.0.2", "network-unusable"},  {"192.168.1.0", "192.168.1.254", "network-whole"},
    {"192.168.1.1", "192.168.2.254", "network-far"}, {"192.168.1.1", "192.168.1.1", "network-other"},
    {"192.168.1.1", "", "network-missing"},
};

TEST_P(NetworkPage, RefusesAddressesThatDoNotFitTogether) {
    for (const Combination& combination : COMBINATIONS) {
        give("main DHCP", "1");
        give("main IPAddress", combination.address);
        give("main Gateway", combination.gateway);
        play(Story()
                 .tap(NETWORK)
                 .tap(DHCP)
                 .tap(SAVE)
                 .shot(combination.refusal)
                 .tap(ANYWHERE)
                 .tap(DHCP) // back to what is stored
                 .tap(PAGE_BACK)
                 .tap(NETWORK));
        EXPECT_TRUE(shows(combination.refusal, MESSAGE_BOX));
        EXPECT_EQ(stored(), "");
    }
}

TEST_P(NetworkPage, LeavesTheStoreAloneWhenItsChangesAreDiscarded) {
    play(Story()
             .tap(NETWORK)
             .shot("before")
             .tap(DHCP)
             .tap(GATEWAY)
             .dial("9")
             .tap(KEYPAD_BACK)
             .tap(PAGE_BACK)
             .tap(DISCARD)
             .tap(NETWORK)
             .shot("again"));
    EXPECT_TRUE(matchesPicture(picture("again"), picture("before"), "settings-network-discarded"));
    EXPECT_EQ(stored(), "");
}

} // namespace
