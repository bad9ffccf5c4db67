// The "VNC Authentication" of the RFB protocol: the server sends random bytes, the viewer encrypts them with the
// password. The password itself never travels; the picture and the touches that follow do so openly.
#ifndef OSTREL_SIMULATOR_WEB_VNC_PASSWORD_H
#define OSTREL_SIMULATOR_WEB_VNC_PASSWORD_H

#include <array>
#include <string>

namespace ostrel {

constexpr size_t MAX_PASSWORD_LENGTH = 8; // the protocol knows no more
constexpr size_t CHALLENGE_BYTES = 16;

using Challenge = std::array<unsigned char, CHALLENGE_BYTES>;

class VncPassword {
  public:
    // At most MAX_PASSWORD_LENGTH characters of ASCII. Throws Failure when this machine allows no such encryption.
    explicit VncPassword(const std::string& text);

    // Takes as long for an answer that is nearly right as for one that is not.
    bool isAnsweredBy(const Challenge& challenge, const std::string& response) const;

  private:
    std::string answerTo(const Challenge& challenge) const;

    std::array<unsigned char, MAX_PASSWORD_LENGTH> key = {};
};

// New random bytes. Throws Failure.
Challenge newChallenge();

} // namespace ostrel

#endif
