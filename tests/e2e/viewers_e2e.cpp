// VNC viewers on the web panel's port: good ones, and those that are slow, silent, broken or gone.
#include "tests/e2e/vnc_client.h"
#include "tests/support/scale.h"

#include <gtest/gtest.h>
#include <list>
#include <random>

namespace {

const std::string SIXTEEN_BITS("\0\0\0\0\x10\x10\0\1\0\x1F\0\x3F\0\x1F\x0B\5\0\0\0\0", 20);
const std::string WEBSOCKET_REQUEST =
    "GET /panel HTTP/1.1\r\nHost: 127.0.0.1:PORT\r\nUpgrade: websocket\r\nConnection: "
    "Upgrade\r\nSec-WebSocket-Version: 13\r\nSec-WebSocket-Key: dGhlIHNhbXBsZSBub25jZQ==\r\n\r\n";

#ifdef OSTREL_SLOW_RUN
constexpr long MAX_GROWTH_KIB = 300 * 1024; // the address sanitizer keeps up to 256 MiB of freed memory aside
#else
constexpr long MAX_GROWTH_KIB = 4096;
#endif

std::string forPort(std::string request, int port) {
    return request.replace(request.find("PORT"), 4, std::to_string(port));
}

// Of a WebSocket, with an empty mask; `first` holds the final bit and the kind.
std::string frame(const std::string& payload, char first = '\x82') {
    return first + ("\xFE" + std::string(1, static_cast<char>(payload.size() >> 8))) +
           std::string(1, static_cast<char>(payload.size() & 255)) + std::string(4, '\0') + payload;
}

uint16_t painted(size_t x, size_t y) {
    return static_cast<uint16_t>((x / 10) << 11 | (y * 63 / 239) << 5 | ((x + y) & 31));
}

// A viewer in good order sees and touches.
void expectThatAViewerIsServed(const RunningSimulator& simulator, int x, const std::string& password = "") {
    const Client viewer(simulator.port);
    ASSERT_TRUE(viewer.shakeHands(password));
    const std::string before = simulator.output();
    EXPECT_TRUE(viewer.point(x, 50, true));
    EXPECT_TRUE(viewer.point(x, 50, false));
    const std::string told = before + "down " + std::to_string(x) + " 50\nup\n";
    EXPECT_TRUE(soon([&] { return simulator.output() == told; })) << simulator.output();
    EXPECT_EQ(viewer.picture(4).size(), 307200U);
}

TEST(Viewer, OfSixteenBitsSeesThePanelsOwnPixels) {
    const RunningSimulator simulator("follow 9");
    const Client viewer(simulator.port);
    ASSERT_TRUE(viewer.shakeHands());
    viewer.send(SIXTEEN_BITS);
    std::string picture;
    ASSERT_TRUE(soon([&] {
        picture = viewer.picture(2);
        return picture.size() == 153600 && picture.find_first_not_of('\0') != std::string::npos;
    }));
    for (size_t y = 0; y < 240; ++y)
        for (size_t x = 0; x < 320; ++x) {
            const size_t at = 2 * (y * 320 + x);
            const int seen = static_cast<unsigned char>(picture[at]) | static_cast<unsigned char>(picture[at + 1]) << 8;
            ASSERT_EQ(seen, painted(x, y)) << x << "," << y;
        }
}

TEST(Viewer, TapsEveryTwoMillisecondsWithoutLosingOne) {
    for (const char* arguments : {"follow 200", "follow 200 20"}) {
        const RunningSimulator simulator(arguments);
        const Client viewer(simulator.port);
        ASSERT_TRUE(viewer.shakeHands());
        std::string told;
        for (int i = 0; i < 200; ++i) {
            viewer.point(i, 100, true);
            usleep(1000);
            viewer.point(i, 100, false);
            usleep(1000);
            told += "down " + std::to_string(i) + " 100\nup\n";
        }
        soon([&] { return simulator.output() == told; });
        EXPECT_EQ(simulator.output(), told) << arguments;
    }
}

TEST(Viewer, SharesOnePenWithTheOthers) {
    const RunningSimulator simulator("follow 9");
    const Client first(simulator.port);
    const Client second(simulator.port);
    ASSERT_TRUE(first.shakeHands() && second.shakeHands());
    first.point(20, 20, true);
    ASSERT_TRUE(soon([&] { return simulator.output() == "down 20 20\n"; }));
    second.point(200, 200, true);
    second.point(200, 200, false);
    ASSERT_EQ(second.picture(4).size(), 307200U); // asked for after its touch, which has been dealt with
    first.point(20, 20, false);
    ASSERT_TRUE(soon([&] { return simulator.output() == "down 20 20\nup\n"; }));
    second.point(60, 60, true);
    second.point(60, 60, false);
    EXPECT_TRUE(soon([&] { return simulator.output() == "down 20 20\nup\ndown 60 60\nup\n"; })) << simulator.output();
}

TEST(Viewer, IsNotHeldUpBySilentSlowAndGreedyOnes) {
    const RunningSimulator simulator("follow 1000");
    std::list<Client> others;
    for (int i = 0; i < 12; ++i)
        others.emplace_back(simulator.port); // says nothing
    for (int i = 0; i < 12; ++i)
        others.emplace_back(simulator.port).send("GET / HT"); // stops within its request
    for (int i = 0; i < 12; ++i)
        others.emplace_back(simulator.port)
            .send(forPort(WEBSOCKET_REQUEST, simulator.port) + "\x82\x8C"); // within a frame
    for (int i = 0; i < 4; ++i) {
        const Client& client = others.emplace_back(simulator.port);
        ASSERT_TRUE(client.shakeHands());
        if (i < 2) {
            client.send({5, 1, 0}); // stops within a message
            continue;
        }
        // Asks for pictures without end and never looks at one.
        const int small = 1024;
        setsockopt(client.socket.get(), SOL_SOCKET, SO_RCVBUF, &small, sizeof small);
        for (int j = 0; j < 200; ++j)
            client.requestPicture();
    }
    for (int i = 0; i < 5; ++i)
        expectThatAViewerIsServed(simulator, 100 + i);
}

// Before the handshake, in the middle of it, and with pictures waiting that it has asked for.
TEST(Viewer, ThatPingsWithoutEndAndNeverReadsCostsNoMemory) {
    const RunningSimulator simulator("follow 1000");
    expectThatAViewerIsServed(simulator, 10);
    std::string pings;
    while (pings.size() < 1U << 20)
        pings += frame(std::string(120, 'p'), '\x89');
    std::string requests;
    for (int i = 0; i < 20; ++i)
        requests += std::string("\3\0\0\0\0\0\1\x40\0\xF0", 10);
    const std::string upgrade = forPort(WEBSOCKET_REQUEST, simulator.port);
    const std::string asked = "RFB 003.008\n\x01";
    const std::string entered = "RFB 003.008\n\x01\x01";
    int x = 20;
    for (const std::string& said : {std::string(), frame(asked), frame(entered + requests)}) {
        const long before = simulator.memory();
        const Client client(simulator.port);
        ASSERT_TRUE(client.send(upgrade + said));
        const int small = 1024;
        setsockopt(client.socket.get(), SOL_SOCKET, SO_RCVBUF, &small, sizeof small);
        const long mebibytes = 1 + scaled(11);
        for (long i = 0; i < mebibytes; ++i)
            ASSERT_TRUE(client.send(pings)) << i; // all of it is read
        expectThatAViewerIsServed(simulator, x++);
        EXPECT_LT(simulator.memory(), before + MAX_GROWTH_KIB) << x;
    }
}

// A WebSocket that does read gets its pong.
TEST(Browser, IsAnsweredItsPing) {
    const RunningSimulator simulator("follow 9");
    const Client client(simulator.port);
    ASSERT_TRUE(client.send(forPort(WEBSOCKET_REQUEST, simulator.port)));
    std::string head;
    while (head.find("\r\n\r\n") == std::string::npos) {
        const std::string byte = client.receive(1);
        ASSERT_EQ(byte.size(), 1U) << head;
        head += byte;
    }
    ASSERT_EQ(client.receive(14).substr(2), "RFB 003.008\n");
    for (const std::string ping : {"one", "two"}) {
        ASSERT_TRUE(client.send(frame(ping, '\x89')));
        EXPECT_EQ(client.receive(5), "\x8A\x03" + ping);
    }
    ASSERT_TRUE(client.send(frame("\x03\xE8", '\x88')));
    EXPECT_EQ(client.receive(100), "\x88\x02\x03\xE8"); // and closes
}

// A browser opens connections in advance: while it reads the page, one that is silent is not a viewer yet.
TEST(Browser, MayLetAConnectionWait) {
    const RunningSimulator simulator("follow 9");
    const std::string request = forPort("GET / HTTP/1.1\r\nHost: 127.0.0.1:PORT\r\n\r\n", simulator.port);
    int64_t tookMs = 0;
    std::string answer;
    do { // a machine that is too busy to be quick enough tries again
        const Client first(simulator.port);
        first.send(request);
        EXPECT_EQ(first.receive(12), "HTTP/1.1 200");
        const Client waiting(simulator.port);
        const int64_t begin = ostrel::nowMs();
        usleep(2'500'000); // longer than a viewer waits for its greeting otherwise
        waiting.send(request);
        tookMs = ostrel::nowMs() - begin;
        answer = waiting.receive(12);
    } while (tookMs > 4000);
    EXPECT_EQ(answer, "HTTP/1.1 200");
}

// Random bytes, and good ones with a few changed, from the first byte to the last stage; many vanish at once.
class Garbage {
  public:
    explicit Garbage(unsigned seed) : random(seed) {}

    std::string bytes(size_t most) {
        std::string text(random() % (most + 1), '\0');
        for (char& c : text)
            c = static_cast<char>(random());
        return text;
    }

    std::string damaged(std::string text) {
        for (auto changes = random() % 3 + 1; changes > 0 && !text.empty(); --changes)
            text[random() % text.size()] = static_cast<char>(random());
        text.resize(random() % 4 == 0 ? random() % (text.size() + 1) : text.size());
        return text;
    }

    // For one of six stages: before the first byte, HTTP, WebSocket handshake, VNC handshake, password, VNC messages.
    std::string forStage(int stage, int port) {
        const std::string asked = "RFB 003.008\n\x02";
        const std::string handshake = "RFB 003.008\n\x01\x01";
        switch (stage) {
        case 0:
            return "";
        case 1:
            return damaged("GET /panel.js HTTP/1.1\r\nHost: 127.0.0.1\r\n\r\n") + bytes(200);
        case 2:
            return damaged(forPort(WEBSOCKET_REQUEST, port)) + bytes(200);
        case 3:
            return forPort(WEBSOCKET_REQUEST, port) + bytes(300);
        case 4: // wrong passwords, whole or in part, some with messages behind them
            return forPort(WEBSOCKET_REQUEST, port) + frame(asked + bytes(40));
        default:
            return forPort(WEBSOCKET_REQUEST, port) + frame(handshake + damaged(SIXTEEN_BITS) + bytes(100)) + bytes(20);
        }
    }

  private:
    std::mt19937 random;
};

// Returns how many connections were refused.
long attack(const RunningSimulator& simulator, Garbage& garbage, long connections, long& memoryBefore) {
    constexpr long AT_ONCE = 50;
    constexpr int STAGES = 6;
    std::list<Client> clients;
    long refused = 0;
    for (long i = 0; i < connections; ++i) {
        const Client& client = clients.emplace_back(simulator.port);
        refused += client.connected ? 0 : 1;
        client.send(garbage.forStage(static_cast<int>(i % STAGES), simulator.port));
        if (clients.size() > AT_ONCE)
            clients.pop_front();
        if (i == connections / 10)
            memoryBefore = simulator.memory();
    }
    return refused;
}

TEST(Viewer, SurvivesTenThousandBrokenOnes) {
    constexpr unsigned SEED = 4;
    const long connections = scaled(10000);
    for (const char* password : {"", "router"}) {
        const RunningSimulator simulator("follow 1000", "", password);
        const Client watching(simulator.port);
        ASSERT_TRUE(watching.shakeHands(password));
        expectThatAViewerIsServed(simulator, 10, password);
        Garbage garbage(SEED);
        long before = 0;
        EXPECT_EQ(attack(simulator, garbage, connections, before), 0);
        expectThatAViewerIsServed(simulator, 20, password);
        EXPECT_EQ(watching.picture(4).size(), 307200U); // it was there all the time
        const long after = simulator.memory();
        printf(
            "seed %u, %ld connections %s a password; resident memory %ld KiB, then %ld KiB\n", SEED, connections,
            *password == '\0' ? "without" : "with", before, after);
        EXPECT_LT(after, before + MAX_GROWTH_KIB);
    }
}

} // namespace
