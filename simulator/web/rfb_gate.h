// Stands between a trusted viewer and the VNC library: lets only whole, well-formed messages through that the library
// needs. So a viewer that stops in the middle of a message never makes the library wait, and one that sends garbage
// never reaches it.
#ifndef OSTREL_SIMULATOR_WEB_RFB_GATE_H
#define OSTREL_SIMULATOR_WEB_RFB_GATE_H

#include <cstdint>
#include <string>

namespace ostrel {

class RfbGate {
  public:
    // Removes whole messages from `bytes` and appends what the library shall get to `accepted`. False when the viewer
    // sent what no viewer may send.
    bool pass(std::string& bytes, std::string& accepted);

    // The viewer has sent its ClientInit, and messages follow.
    bool isEstablished() const { return established; }

  private:
    enum class Step { Passed, Incomplete, Refused };

    Step passMessage(std::string& bytes, std::string& accepted);
    Step passEncodings(std::string& bytes, std::string& accepted);
    Step dropCutText(std::string& bytes);

    bool established = false;
    uint64_t toDrop = 0; // bytes of a clipboard text that are still to come
};

} // namespace ostrel

#endif
