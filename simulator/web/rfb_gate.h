// Stands between a viewer and the VNC library: lets only whole, well-formed messages through that the library needs.
// So a viewer that stops in the middle of a message never makes the library wait, and one that sends garbage never
// reaches it.
#ifndef OSTREL_SIMULATOR_WEB_RFB_GATE_H
#define OSTREL_SIMULATOR_WEB_RFB_GATE_H

#include <cstdint>
#include <string>

namespace ostrel {

// What the server says first.
constexpr const char* RFB_GREETING = "RFB 003.008\n";

class RfbGate {
  public:
    // Removes whole messages from `bytes` and appends what the library shall get to `accepted`. False when the viewer
    // sent what no viewer may send.
    bool pass(std::string& bytes, std::string& accepted);

    // The handshake is done: the viewer has sent its ClientInit.
    bool isEstablished() const { return stage == Stage::Messages; }

  private:
    enum class Stage { Version, Security, Password, Init, Messages };
    enum class Step { Passed, Incomplete, Refused };

    Step passNext(std::string& bytes, std::string& accepted);
    Step passVersion(std::string& bytes, std::string& accepted);
    Step passSecurity(std::string& bytes, std::string& accepted);
    Step passMessage(std::string& bytes, std::string& accepted);
    Step passEncodings(std::string& bytes, std::string& accepted);
    Step dropCutText(std::string& bytes);

    Stage stage = Stage::Version;
    uint64_t toDrop = 0; // bytes of a clipboard text that are still to come
};

} // namespace ostrel

#endif
