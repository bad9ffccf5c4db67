#include "simulator/web/rfb_handshake.h"

#include <gtest/gtest.h>
#include <rfb/rfb.h>

using namespace ostrel;

namespace {

using Step = RfbHandshake::Step;

// Gives the bytes one by one; what the last of them led to.
Step take(RfbHandshake& handshake, const std::string& bytes, std::string& answers, std::string& left) {
    Step step = Step::Waiting;
    for (const char byte : bytes) {
        left += byte;
        EXPECT_EQ(step, Step::Waiting);
        step = handshake.take(left, answers);
    }
    return step;
}

std::string response(const std::string& challenge, std::string password) {
    std::string bytes = challenge;
    rfbEncryptBytes(reinterpret_cast<unsigned char*>(bytes.data()), password.data());
    return bytes;
}

// Gives a password; the verdict's bytes, and what follows from it.
std::pair<std::string, Step> verdict(const std::string& version, const std::string& given) {
    const VncPassword password("router");
    RfbHandshake handshake(&password);
    std::string answers;
    std::string left;
    EXPECT_EQ(take(handshake, version + "\x02", answers, left), Step::Waiting);
    EXPECT_EQ(answers.substr(0, 2), "\x01\x02");
    EXPECT_EQ(answers.size(), 18U);
    EXPECT_EQ(take(handshake, response(answers.substr(2), given), answers, left), Step::Answered);
    EXPECT_EQ(answers.size(), 18U); // no verdict before it is asked for
    EXPECT_EQ(left, "");
    std::string verdict;
    const Step step = handshake.tellVerdict(verdict);
    EXPECT_EQ(handshake.isRight(), step == Step::Trusted);
    return {verdict, step};
}

TEST(RfbHandshake, WithoutAPasswordTrustsEverybody) {
    std::string answers;
    std::string left;
    RfbHandshake late(nullptr);
    EXPECT_EQ(take(late, "RFB 003.008\n\x01", answers, left), Step::Trusted);
    EXPECT_EQ(answers, std::string("\x01\x01\0\0\0\0", 6));
    answers.clear();
    RfbHandshake early(nullptr); // knows no verdict without a password
    EXPECT_EQ(take(early, "RFB 003.007\n\x01", answers, left), Step::Trusted);
    EXPECT_EQ(answers, "\x01\x01");
}

TEST(RfbHandshake, LeavesWhatComesAfterIt) {
    std::string answers;
    std::string bytes = "RFB 003.008\n\x01\x01more";
    EXPECT_EQ(RfbHandshake(nullptr).take(bytes, answers), Step::Trusted);
    EXPECT_EQ(bytes, "\x01more");
}

TEST(RfbHandshake, TrustsWhoKnowsThePassword) {
    const std::string good(4, '\0');
    EXPECT_EQ(verdict("RFB 003.008\n", "router"), std::pair(good, Step::Trusted));
    EXPECT_EQ(verdict("RFB 003.007\n", "router"), std::pair(good, Step::Trusted));
}

TEST(RfbHandshake, SaysPlainlyThatAPasswordIsWrong) {
    const std::string bad("\0\0\0\x01", 4);
    EXPECT_EQ(
        verdict("RFB 003.008\n", "Router"),
        std::pair(bad + std::string("\0\0\0\x15", 4) + "The password is wrong", Step::Refused));
    EXPECT_EQ(verdict("RFB 003.007\n", ""), std::pair(bad, Step::Refused)); // knows no reasons
}

TEST(RfbHandshake, TakesNothingWhileTheVerdictIsHeldBack) {
    const VncPassword password("router");
    RfbHandshake handshake(&password);
    std::string answers;
    std::string bytes = "RFB 003.008\n\x02" + std::string(16, 'p') + "\x01";
    EXPECT_EQ(handshake.take(bytes, answers), Step::Answered);
    EXPECT_EQ(handshake.take(bytes, answers), Step::Waiting);
    EXPECT_EQ(bytes, "\x01");
}

TEST(RfbHandshake, RefusesWhatNoViewerSays) {
    const VncPassword password("router");
    for (const char* story :
         {"SSH-", "RFB 003.003\n", "RFB 003.009\n", "RFB 003.008 ", "RFB 004.000\n", "RFB 003.008\n\x10"}) {
        std::string answers;
        std::string bytes = story;
        EXPECT_EQ(RfbHandshake(nullptr).take(bytes, answers), Step::Refused) << story;
        bytes = story;
        EXPECT_EQ(RfbHandshake(&password).take(bytes, answers), Step::Refused) << story;
    }
}

TEST(RfbHandshake, OffersNoWayAroundThePassword) {
    const VncPassword password("router");
    std::string answers;
    std::string bytes = "RFB 003.008\n\x01\x01";
    EXPECT_EQ(RfbHandshake(&password).take(bytes, answers), Step::Refused);
    bytes = "RFB 003.008\n\x02";
    EXPECT_EQ(RfbHandshake(nullptr).take(bytes, answers), Step::Refused); // not offered
}

} // namespace
