// The beginning of a conversation with a viewer, up to where it is trusted: version, security, password. The VNC
// library sees nothing of it, and nobody who has not come through it.
#ifndef OSTREL_SIMULATOR_WEB_RFB_HANDSHAKE_H
#define OSTREL_SIMULATOR_WEB_RFB_HANDSHAKE_H

#include "simulator/web/vnc_password.h"

#include <string>

namespace ostrel {

// What the server says first.
constexpr const char* RFB_GREETING = "RFB 003.008\n";

class RfbHandshake {
  public:
    enum class Step {
        Waiting,  // for more bytes
        Answered, // the password has come: tellVerdict is next
        Trusted,  // the rest of the bytes is for the library
        Refused,  // no viewer says that
    };

    // Asks for `password`, which outlives the handshake; for none with nullptr.
    explicit RfbHandshake(const VncPassword* password) : password(password) {}

    // Removes what it understands from `bytes` and appends what has to be said to `answers`.
    Step take(std::string& bytes, std::string& answers);

    // Whether the password that has come is the right one.
    bool isRight() const { return right; }

    // Appends the verdict to `answers`. A viewer that was wrong is not talked to any more.
    Step tellVerdict(std::string& answers);

  private:
    enum class Stage { Version, Security, Password, Verdict, Over };

    Step takeVersion(std::string& bytes, std::string& answers);
    Step takeSecurity(std::string& bytes, std::string& answers);
    Step takePassword(std::string& bytes);

    const VncPassword* password;
    Stage stage = Stage::Version;
    char version = '8'; // 3.7 or 3.8
    Challenge challenge = {};
    bool right = false;
};

} // namespace ostrel

#endif
