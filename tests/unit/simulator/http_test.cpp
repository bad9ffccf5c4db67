#include "simulator/web/http.h"
#include "simulator/web/static_files.h"
#include "tests/unit/simulator/temporary_directory.h"

#include <fstream>
#include <gtest/gtest.h>

using namespace ostrel;

namespace {

TEST(Http, ReadsARequestHoweverItArrives) {
    const std::string whole =
        "GET /panel?x=1 HTTP/1.1\r\nHost: localhost:1\r\nX-Empty:\r\nConnection: keep-alive, Upgrade\r\n\r\n";
    HttpRequest request;
    for (size_t length = 0; length < whole.size(); ++length) {
        std::string part = whole.substr(0, length);
        EXPECT_EQ(readRequest(part, request), HttpResult::Incomplete) << length;
    }
    std::string bytes = whole + "more";
    ASSERT_EQ(readRequest(bytes, request), HttpResult::Complete);
    EXPECT_EQ(bytes, "more");
    EXPECT_EQ(request.method, "GET");
    EXPECT_EQ(request.target, "/panel?x=1");
    EXPECT_EQ(request.header("host"), "localhost:1");
    EXPECT_EQ(request.header("x-empty"), "");
    EXPECT_TRUE(request.hasWord("connection", "upgrade"));
    EXPECT_FALSE(request.hasWord("connection", "up"));
}

TEST(Http, RefusesWhatIsNoRequest) {
    for (const char* text :
         {"\r\n\r\n", "GET\r\n\r\n", "GET /\r\n\r\n", "GET / HTTP/2\r\n\r\n", "GET http://x/ HTTP/1.1\r\n\r\n",
          "GET / HTTP/1.1 x\r\n\r\n", "GET / HTTP/1.1\r\nno colon\r\n\r\n", "GET / HTTP/1.1\r\n: x\r\n\r\n",
          "GET / HTTP/1.1\r\n folded: x\r\n\r\n", "GET / HTTP/1.1\r\nHost: a\r\nhost: b\r\n\r\n",
          "GET / HTTP/1.1\r\nA: b\nC: d\r\n\r\n", "POST / HTTP/1.1\r\nContent-Length: 3\r\n\r\nabc",
          "POST / HTTP/1.1\r\nTransfer-Encoding: chunked\r\n\r\n"}) {
        std::string bytes = text;
        HttpRequest request;
        EXPECT_EQ(readRequest(bytes, request), HttpResult::Malformed) << text;
    }
}

TEST(Http, DoesNotCollectAnEndlessRequest) {
    HttpRequest request;
    std::string bytes = "GET / HTTP/1.1\r\nA: " + std::string(8192, 'x');
    EXPECT_EQ(readRequest(bytes, request), HttpResult::Malformed);
    bytes = "GET / HTTP/1.1\r\nA: " + std::string(8000, 'x');
    EXPECT_EQ(readRequest(bytes, request), HttpResult::Incomplete);
    bytes += std::string(300, 'x') + "\r\n\r\n";
    EXPECT_EQ(readRequest(bytes, request), HttpResult::Malformed);
}

std::string policyFor(const std::string& host) {
    const std::string whole = answer("200 OK", "text/html", "", true, host);
    const size_t begin = whole.find("Content-Security-Policy: ") + 25;
    return whole.substr(begin, whole.find("\r\n", begin) - begin);
}

TEST(Http, LetsAPageConnectToWhereItCameFromOnly) {
    const std::string before = "default-src 'self'; img-src 'self' data:; connect-src 'self'";
    const std::string after = "; frame-ancestors 'none'";
    EXPECT_EQ(policyFor("127.0.0.1:6080"), before + " ws://127.0.0.1:6080" + after);
    EXPECT_EQ(policyFor("desk-1.local"), before + " ws://desk-1.local" + after);
    for (const char* host : {"", "[::1]:6080", "desk;script-src *", "desk *", "desk,x", "desk\"", "desk/"})
        EXPECT_EQ(policyFor(host), before + after) << host;
}

class StaticFilesTest : public testing::Test {
  protected:
    StaticFilesTest() : files{directory.file("page"), directory.file("novnc")} {
        for (const char* folder : {"page", "novnc", "novnc/core", "page/folder.js"})
            std::filesystem::create_directory(directory.file(folder));
        std::ofstream(directory.file("page/index.html")) << "the page";
        std::ofstream(directory.file("novnc/core/rfb.js")) << "the client";
        std::ofstream(directory.file("secret.js")) << "secret";
    }

    TemporaryDirectory directory;
    StaticFiles files;
};

TEST_F(StaticFilesTest, AreServedWithTheirType) {
    const std::string page = answerWithFile(files, "/?a=b", true);
    EXPECT_EQ(page.rfind("HTTP/1.1 200 OK\r\nContent-Type: text/html; charset=utf-8\r\nContent-Length: 8\r\n", 0), 0U);
    EXPECT_EQ(page.substr(page.size() - 12), "\r\n\r\nthe page");
    EXPECT_NE(answerWithFile(files, "/novnc/core/rfb.js", true).find("text/javascript"), std::string::npos);
    EXPECT_NE(answerWithFile(files, "/", true, "localhost:7000").find(" ws://localhost:7000;"), std::string::npos);
    const std::string head = answerWithFile(files, "/", false);
    EXPECT_NE(head.find("Content-Length: 8\r\n"), std::string::npos);
    EXPECT_EQ(head.substr(head.size() - 4), "\r\n\r\n");
}

TEST_F(StaticFilesTest, DoNotLeadElsewhere) {
    for (const char* target :
         {"/../secret.js", "/novnc/../../secret.js", "/%2e%2e/secret.js", "/nothing.js", "/folder.js", "/index",
          "//secret.js", "/novnc", "/index.html\\"})
        EXPECT_EQ(answerWithFile(files, target, true).rfind("HTTP/1.1 404 Not Found\r\n", 0), 0U) << target;
}

} // namespace
