// Plays a touch script on the panel. A stroke is sent when the program asks for the pen, not by the clock, so that slow
// machines play the same story. `wait` is by the clock, `pause` begins when the program asks; a picture taken right
// after a touch is taken when the program has dealt with it and asks again, one taken after `wait` is taken there and
// then. An expectation is waited for.
#ifndef OSTREL_SIMULATOR_SCRIPT_PLAYER_H
#define OSTREL_SIMULATOR_SCRIPT_PLAYER_H

#include "simulator/event_loop.h"
#include "simulator/expectation.h"
#include "simulator/junit.h"
#include "simulator/panel.h"
#include "simulator/program.h"
#include "simulator/script.h"
#include "simulator/touch_stream.h"

#include <functional>
#include <string>

namespace ostrel {

class ScriptPlayer {
  public:
    // What ended the play; empty: the script was played to its end.
    using Finished = std::function<void(const std::string& failure)>;

    // `stateDirectory` is where settings are looked up.
    ScriptPlayer(Script script, EventLoop& loop, TouchStream& stream, Panel& panel, std::string stateDirectory);
    ~ScriptPlayer();
    ScriptPlayer(const ScriptPlayer&) = delete;
    ScriptPlayer& operator=(const ScriptPlayer&) = delete;

    // Waits are divided by `speed`; a command for which the program does not get ready within `patienceMs` fails.
    // `finished` is called once, last, from the loop.
    void play(double speed, int patienceMs, Finished finished);

    // The program has ended. What is wrong with that for the script; empty when nothing was left to do. Expectations
    // that come next are looked at once. When it never ran that is all there is to say.
    std::string programEnded(const Ending& ending);

    // The end of the program, with its status, is what the script is waiting for.
    bool awaitsEnd() const;

    // The script's expectations and what has become of them.
    std::vector<Check> checks() const;

    // The command that is being played, for people; empty when all are done. "tour.touch:3: tap 160 120"
    std::string current() const;

  private:
    using Step = std::function<void()>;

    void playNext();
    void playCommand(const Command& command);
    void wait(const Command& command);
    void whenAsked(const Step& step);
    void awaitQuestion(const Step& step, uint32_t looksBefore);
    void expect(const Command& command);
    void awaitExpected(const Expectation& expectation);
    bool isMetNow(const Command& command);
    void note(Outcome outcome, const std::string& message);
    void awaitEnd();
    void takePicture(const Command& command);
    void advance();
    void fail(const std::string& reason);
    void finish(const std::string& failure);

    Script script;
    EventLoop& loop;
    TouchStream& stream;
    Panel& panel;
    std::string stateDirectory;
    std::vector<Check> outcomes; // one a command
    double speed = 1.0;
    int patienceMs = 0;
    Finished finished;
    size_t index = 0;
    EventLoop::Timer timer = 0;
    int64_t beganAtMs = 0; // the current command
    int64_t impatientAtMs = 0;
};

} // namespace ostrel

#endif
