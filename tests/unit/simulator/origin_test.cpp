#include "simulator/web/origin.h"

#include <gtest/gtest.h>

using namespace ostrel;

namespace {

const std::vector<std::string> DESK = {"desk", "desk.local"};

HttpRequest requestWith(const std::string& headers) {
    std::string bytes = "GET / HTTP/1.1\r\n" + headers + "\r\n";
    HttpRequest request;
    EXPECT_EQ(readRequest(bytes, request), HttpResult::Complete) << headers;
    return request;
}

bool isFor(const std::string& host, const std::vector<std::string>& names = {}) {
    return isForThisPanel(requestWith("Host: " + host + "\r\n"), names);
}

bool isFrom(const std::string& origin, const std::string& host) {
    return isFromThisPanel(requestWith("Host: " + host + "\r\nOrigin: " + origin + "\r\n"));
}

TEST(Host, IsAnAddressWhateverItsPort) {
    for (const char* host :
         {"127.0.0.1:6080", "127.0.0.1", "localhost:6080", "LocalHost:80", "localhost", "[::1]:6080", "[::1]",
          "192.168.1.20:6080", "[fd00::2]:6080", "127.0.0.1:7000"})
        EXPECT_TRUE(isFor(host)) << host;
}

TEST(Host, IsTheMachinesOwnNameWhereOthersMayConnect) {
    EXPECT_TRUE(isFor("desk:6080", DESK));
    EXPECT_TRUE(isFor("Desk.local:6080", DESK));
    EXPECT_FALSE(isFor("desk:6080"));
    EXPECT_FALSE(isFor("desk.evil.example:6080", DESK));
}

TEST(Host, OfStrangersIsRefused) {
    for (const char* host :
         {"", ":6080", "evil.example:6080", "127.0.0.1.evil.example:6080", "xlocalhost:6080", "localhost.:6080",
          "localhost:6080.evil.example", "localhost:", "localhost:123456", "127.0.0.1:6080:6080", "::1", "[::1",
          "[::1]x:6080", "[127.0.0.1]:6080", "2130706433:6080", "0x7f000001:6080", "127.1:6080", "evil@127.0.0.1"})
        EXPECT_FALSE(isFor(host, DESK)) << host;
    EXPECT_FALSE(isForThisPanel(requestWith("X: y\r\n"), {})); // no Host at all
}

TEST(Origin, IsThePageThatCameFromTheSameHost) {
    for (const char* host :
         {"127.0.0.1:6080", "localhost:6080", "[::1]:6080", "192.168.1.20:7000", "desk", "localhost"})
        EXPECT_TRUE(isFrom(std::string("http://") + host, host)) << host;
    EXPECT_TRUE(isFrom("http://desk", "Desk"));
    EXPECT_TRUE(isFromThisPanel(requestWith("Host: localhost\r\n"))); // no browser's page
}

TEST(Origin, OfOthersIsRefused) {
    for (const char* origin :
         {"null", "", "http://", "https://localhost:6080", "localhost:6080", "http://localhost:6080/",
          "http://localhost", "http://localhost:6081", "http://127.0.0.1:6080", "http://evil.example:6080",
          "http://localhost:6080.evil.example"})
        EXPECT_FALSE(isFrom(origin, "localhost:6080")) << origin;
}

TEST(Names, OfThisMachineAreInLowerCaseAndOneIsLocal) {
    const std::vector<std::string> names = namesOfThisMachine();
    ASSERT_EQ(names.size(), 2U);
    for (const std::string& name : names)
        EXPECT_EQ(name, lowerCase(name));
    EXPECT_EQ(names[1], names[0].substr(0, names[0].find('.')) + ".local");
}

} // namespace
