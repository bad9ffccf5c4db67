#include "simulator/web/rfb_handshake.h"

#include <algorithm>

namespace ostrel {
namespace {

constexpr size_t VERSION_BYTES = 12;
constexpr char NO_PASSWORD = 1; // the protocol's kinds of security
constexpr char VNC_PASSWORD = 2;

const std::string GOOD(4, '\0');
const std::string BAD("\0\0\0\1", 4);

std::string reason(const std::string& sentence) {
    return std::string(3, '\0') + static_cast<char>(sentence.size()) + sentence;
}

} // namespace

RfbHandshake::Step RfbHandshake::take(std::string& bytes, std::string& answers) {
    Step step = Step::Waiting;
    while (step == Step::Waiting && !bytes.empty()) {
        const Stage before = stage;
        switch (stage) {
        case Stage::Version:
            step = takeVersion(bytes, answers);
            break;
        case Stage::Security:
            step = takeSecurity(bytes, answers);
            break;
        case Stage::Password:
            step = takePassword(bytes);
            break;
        case Stage::Verdict:
        case Stage::Over:
            return step;
        }
        if (stage == before)
            break;
    }
    return step;
}

// Versions before 3.7 let the server choose the security; every viewer of the last twenty years knows a later one.
RfbHandshake::Step RfbHandshake::takeVersion(std::string& bytes, std::string& answers) {
    const std::string known = "RFB 003.00";
    if (bytes.compare(0, std::min(bytes.size(), known.size()), known, 0, bytes.size()) != 0)
        return Step::Refused;
    if (bytes.size() < VERSION_BYTES)
        return Step::Waiting;
    version = bytes[10];
    if ((version != '7' && version != '8') || bytes[11] != '\n')
        return Step::Refused;
    bytes.erase(0, VERSION_BYTES);
    answers += {1, password != nullptr ? VNC_PASSWORD : NO_PASSWORD};
    stage = Stage::Security;
    return Step::Waiting;
}

RfbHandshake::Step RfbHandshake::takeSecurity(std::string& bytes, std::string& answers) {
    if (bytes[0] != (password != nullptr ? VNC_PASSWORD : NO_PASSWORD))
        return Step::Refused;
    bytes.erase(0, 1);
    if (password != nullptr) {
        challenge = newChallenge();
        answers.append(challenge.begin(), challenge.end());
        stage = Stage::Password;
        return Step::Waiting;
    }
    if (version == '8')
        answers += GOOD;
    stage = Stage::Over;
    return Step::Trusted;
}

RfbHandshake::Step RfbHandshake::takePassword(std::string& bytes) {
    if (bytes.size() < CHALLENGE_BYTES)
        return Step::Waiting;
    right = password->isAnsweredBy(challenge, bytes.substr(0, CHALLENGE_BYTES));
    bytes.erase(0, CHALLENGE_BYTES);
    stage = Stage::Verdict;
    return Step::Answered;
}

RfbHandshake::Step RfbHandshake::tellVerdict(std::string& answers) {
    stage = Stage::Over;
    answers += right ? GOOD : BAD;
    if (!right && version == '8')
        answers += reason("The password is wrong");
    return right ? Step::Trusted : Step::Refused;
}

} // namespace ostrel
