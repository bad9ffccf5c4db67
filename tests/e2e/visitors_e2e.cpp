// Who is let in: passwords, addresses, and what is said when the panel cannot be served there.
#include "tests/e2e/vnc_client.h"

#include <gtest/gtest.h>
#include <list>

namespace {

const std::string RIGHT(4, '\0');
const std::string WRONG("\0\0\0\1", 4);
constexpr const char* PASSWORD = "r0ut3r!";

// What a browser that was led to `host` gets.
std::string statusFor(const RunningSimulator& simulator, const std::string& host, const std::string& more = "") {
    const Client browser(simulator.port);
    browser.send("GET / HTTP/1.1\r\nHost: " + host + "\r\n" + more + "\r\n");
    return browser.receive(12).substr(9);
}

TEST(Password, LetsInWhoKnowsIt) {
    const RunningSimulator simulator("follow 9", "", PASSWORD);
    const Client viewer(simulator.port);
    ASSERT_TRUE(viewer.shakeHands(PASSWORD));
    EXPECT_TRUE(viewer.point(30, 50, true));
    EXPECT_TRUE(viewer.point(30, 50, false));
    EXPECT_TRUE(soon([&] { return simulator.output() == "down 30 50\nup\n"; })) << simulator.output();
    EXPECT_EQ(viewer.picture(4).size(), 307200U);
}

TEST(Password, KeepsOutWhoDoesNot) {
    const RunningSimulator simulator("follow 9", "", PASSWORD);
    const Client wrong(simulator.port);
    EXPECT_EQ(wrong.authenticate("r0ut3r?"), WRONG);
    EXPECT_EQ(wrong.receive(25), std::string("\0\0\0\x15", 4) + "The password is wrong"); // and nothing more
    const Client around(simulator.port);
    EXPECT_EQ(around.receive(12), "RFB 003.008\n");
    around.send("RFB 003.008\n\x01\x01");
    EXPECT_EQ(around.receive(100), "\x01\x02"); // offers no other security, and closes
    const Client ignoring(simulator.port);
    EXPECT_EQ(ignoring.authenticate("wrong"), WRONG);
    EXPECT_EQ(ignoring.receive(25).size(), 25U);
    ignoring.send("\x01");
    ignoring.point(30, 50, true);
    EXPECT_EQ(ignoring.receive(1), "");
    ASSERT_TRUE(Client(simulator.port).shakeHands(PASSWORD));
    EXPECT_EQ(simulator.output(), "");
}

TEST(Password, TriedOftenIsAnsweredLaterAndDisturbsNobody) {
    const RunningSimulator simulator("follow 9", "", PASSWORD);
    const Client watching(simulator.port);
    ASSERT_TRUE(watching.shakeHands(PASSWORD));
    const int64_t begin = ostrel::nowMs();
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(Client(simulator.port).authenticate("guess"), WRONG);
    EXPECT_GE(ostrel::nowMs() - begin, 3000); // one second for the fourth, two for the fifth
    std::list<Client> guessing;
    for (int i = 0; i < 8; ++i) {
        const Client& client = guessing.emplace_back(simulator.port);
        EXPECT_EQ(client.receive(12), "RFB 003.008\n");
        client.send("RFB 003.008\n\x02" + std::string(16, 'x') + std::string(100000, 'y'));
    }
    EXPECT_EQ(watching.picture(4).size(), 307200U);
    EXPECT_TRUE(Client(simulator.port).shakeHands(PASSWORD));
}

TEST(Password, IsNowhereToBeRead) {
    const RunningSimulator simulator("follow 1", "--verbose", PASSWORD);
    EXPECT_EQ(Client(simulator.port).authenticate("wrong"), WRONG);
    const Client viewer(simulator.port);
    ASSERT_TRUE(viewer.shakeHands(PASSWORD));
    const std::string process = "/proc/" + std::to_string(simulator.pid);
    const std::string commandLine = contentOf(process + "/cmdline");
    const std::string environment = contentOf(process + "/environ");
    EXPECT_NE(commandLine.find("secret"), std::string::npos);
    EXPECT_EQ(commandLine.find(PASSWORD), std::string::npos);
    EXPECT_EQ(environment.find(PASSWORD), std::string::npos);
    viewer.point(1, 1, true);
    viewer.point(1, 1, false);
    EXPECT_TRUE(soon([&] { return simulator.output() == "down 1 1\nup\n"; }));
    EXPECT_EQ(simulator.errors().find(PASSWORD), std::string::npos);
    EXPECT_EQ(contentOf(simulator.desk.file("state/log")).find(PASSWORD), std::string::npos);
}

TEST(Password, OfAFileThatOthersReadIsWarnedOf) {
    const Desk desk;
    desk.write("secret", "router\n");
    chmod(desk.file("secret").c_str(), 0644);
    const Told run = desk.run("--password-file secret true");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(
        run.errors.substr(0, run.errors.find('\n')),
        "ostrel-sim: others on this machine can read the password in secret; chmod 600 would keep it yours");
}

TEST(Password, ThatCannotBeUsedIsSaidSo) {
    const Desk desk;
    const Told missing = desk.run("--password-file nothing true");
    EXPECT_EQ(missing.status, 125);
    EXPECT_EQ(missing.errors, "ostrel-sim: cannot read the password in nothing: No such file or directory\n");
    desk.write("secret", "123456789\n");
    const Told longer = desk.run("--password-file secret true");
    EXPECT_EQ(longer.status, 125);
    EXPECT_EQ(
        longer.errors,
        "ostrel-sim: the password in secret is too long: VNC knows 8 characters and no more; shorten its first line\n");
}

TEST(Address, OfOthersNeedsAPassword) {
    const Told run = Desk().run("--address 0.0.0.0 true");
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(
        run.errors, "ostrel-sim: --address 0.0.0.0 lets other machines touch the panel: add --password-file FILE; see "
                    "ostrel-sim --help\n");
}

TEST(Address, OfAnotherMachineIsSaidSo) {
    const Desk desk;
    desk.write("secret", "router\n");
    chmod(desk.file("secret").c_str(), 0600);
    const Told run = desk.run("--address 203.0.113.7 --password-file secret true");
    EXPECT_EQ(run.status, 125);
    EXPECT_EQ(
        run.errors, "ostrel-sim: this machine does not have the address 203.0.113.7; choose one of its own with "
                    "--address, or 0.0.0.0 for all of them\n");
}

TEST(Address, OfThisMachineIsPrintedAsABrowserTakesIt) {
    const RunningSimulator simulator("follow 9", "--address 127.0.0.2");
    EXPECT_EQ(
        simulator.errors(), "ostrel-sim: the panel is at http://127.0.0.2:" + std::to_string(simulator.port) + "/\n");
    EXPECT_TRUE(Client(simulator.port, *ostrel::IpAddress::read("127.0.0.2")).shakeHands());
}

TEST(Address, OfAllNamesEveryOneOfThem) {
    const RunningSimulator simulator("follow 9", "--address 0.0.0.0", PASSWORD);
    const std::string port = std::to_string(simulator.port);
    std::string places = "ostrel-sim: the panel is at http://127.0.0.1:" + port + "/ on this machine";
    EXPECT_TRUE(Client(simulator.port).shakeHands(PASSWORD));
    for (const ostrel::IpAddress& address : ostrel::addressesOfThisMachine()) {
        if (address.isIpv6())
            continue;
        places += " and at http://" + address.text() + ":" + port + "/";
        EXPECT_TRUE(Client(simulator.port, address).shakeHands(PASSWORD)) << address.text();
    }
    EXPECT_EQ(simulator.errors(), places + "\n");
}

TEST(Address, IsWhatABrowserMayCallThePanel) {
    const RunningSimulator open("follow 9", "--address 0.0.0.0", PASSWORD);
    const std::string port = ":" + std::to_string(open.port);
    char name[256] = "";
    ASSERT_EQ(gethostname(name, sizeof name - 1), 0);
    EXPECT_EQ(statusFor(open, "192.168.1.20" + port), "200");
    EXPECT_EQ(statusFor(open, "localhost:7000"), "200"); // through a tunnel
    EXPECT_EQ(statusFor(open, name + port), "200");
    EXPECT_EQ(statusFor(open, "rebound.example" + port), "421");
    const RunningSimulator own("follow 9");
    EXPECT_EQ(statusFor(own, "localhost:7000"), "200");
    EXPECT_EQ(
        statusFor(own, "desk.example" + port), "421"); // whoever controls the network's names could let it point here
}

// Either this test has the usual port or somebody else on this machine does, who may let it go at any time.
TEST(Port, ThatIsUsualAndTakenIsReplacedByAnother) {
    constexpr int USUAL_PORT = 6080;
    const ostrel::Descriptor holder(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    const int on = 1;
    setsockopt(holder.get(), SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    sockaddr_storage place;
    const socklen_t size = ostrel::IpAddress().fill(place, USUAL_PORT);
    bool isHeld = false;
    int port = 0;
    do {
        isHeld = isHeld || (bind(holder.get(), reinterpret_cast<const sockaddr*>(&place), size) == 0 &&
                            listen(holder.get(), 1) == 0);
        const RunningSimulator simulator("follow 9");
        port = simulator.port;
        EXPECT_EQ(simulator.errors(), "ostrel-sim: the panel is at http://127.0.0.1:" + std::to_string(port) + "/\n");
        EXPECT_TRUE(Client(port).shakeHands());
    } while (!isHeld && port == USUAL_PORT);
    EXPECT_NE(port, USUAL_PORT);
    EXPECT_NE(port, 0);
}

TEST(Port, ThatIsTakenIsSaidSo) {
    const RunningSimulator first("follow 9");
    const Desk desk;
    const Told run = desk.run("--web=" + std::to_string(first.port) + " true");
    EXPECT_EQ(run.status, 125);
    EXPECT_EQ(
        run.errors, "ostrel-sim: port " + std::to_string(first.port) +
                        " is taken; choose another one with --web=PORT, or --web for any\n");
}

} // namespace
