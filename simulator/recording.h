// A touch script that is written while somebody touches the panel: each line is in the file as soon as it is known.
#ifndef OSTREL_SIMULATOR_RECORDING_H
#define OSTREL_SIMULATOR_RECORDING_H

#include "simulator/descriptor.h"

#include <cstdint>
#include <functional>
#include <string>

namespace ostrel {

// A shorter rest is a person's or a machine's pace and is not written.
constexpr int64_t PAUSE_MS = 300;

class Recording {
  public:
    using Say = std::function<void(const std::string& sentence)>;

    // Replaces `file`; `replay` is the command that plays it, at a `speed` by which scripts divide their pauses. When
    // the file cannot be written later, `say` is told once and nothing more is written. Throws Failure.
    Recording(const std::string& file, const std::string& replay, double speed, Say say);

    // What the program has got, in this order. `pausedMs` is how long it had been asking before.
    void press(int x, int y, int64_t pausedMs);
    void move(int x, int y, int64_t pausedMs);
    void release(int64_t pausedMs);

    // The panel went dark by itself, after the program had been asking for so long.
    void wentDark(int64_t pausedMs);

    // A stroke that the program has not got, because it did not ask.
    void missed(int x, int y);

    // The program ended by itself.
    void programEnded(int status);

    // The simulator is ended while the program still asks; `pausedMs` as above.
    void ended(int64_t pausedMs);

  private:
    void pause(int64_t ms);
    void writePress();
    void write(const std::string& line);

    Descriptor file;
    std::string name;
    double speed;
    Say say;
    bool pressPending = false; // not written yet: it may become a tap
    int x = 0;
    int y = 0;
};

} // namespace ostrel

#endif
