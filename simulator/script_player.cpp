#include "simulator/script_player.h"

#include "simulator/clock.h"
#include "simulator/failure.h"
#include "simulator/picture_expectation.h"
#include "simulator/png_file.h"

#include <sstream>
#include <utility>

namespace ostrel {

ScriptPlayer::ScriptPlayer(
    Script script, EventLoop& loop, TouchStream& stream, Panel& panel, std::string stateDirectory)
    : script(std::move(script)), loop(loop), stream(stream), panel(panel), stateDirectory(std::move(stateDirectory)) {
    for (const Command& command : this->script.commands)
        outcomes.push_back(
            {this->script.name + ":" + std::to_string(command.line) + ": " + command.source, 0, Outcome::NotReached,
             ""});
}

ScriptPlayer::~ScriptPlayer() {
    loop.cancel(timer);
}

void ScriptPlayer::play(double playSpeed, int commandPatienceMs, Finished whenFinished) {
    speed = playSpeed;
    patienceMs = commandPatienceMs;
    finished = std::move(whenFinished);
    playNext();
}

void ScriptPlayer::playNext() {
    beganAtMs = nowMs();
    impatientAtMs = beganAtMs + patienceMs;
    if (index < script.commands.size())
        playCommand(script.commands[index]);
    else // the last touch is for the program to deal with, before it is ended
        whenAsked([this] { finish(""); });
}

void ScriptPlayer::playCommand(const Command& command) {
    const int x = command.numbers[0];
    const int y = command.numbers[1];
    switch (command.action) {
    case Action::Tap:
        whenAsked([=] {
            stream.press(x, y);
            whenAsked([this] {
                stream.release();
                advance();
            });
        });
        break;
    case Action::Press:
        whenAsked([=] {
            stream.press(x, y);
            advance();
        });
        break;
    case Action::Move:
        whenAsked([=] {
            stream.move(x, y);
            advance();
        });
        break;
    case Action::Release:
        whenAsked([this] {
            stream.release();
            advance();
        });
        break;
    case Action::Wait:
        wait(command);
        break;
    case Action::Pause:
        whenAsked([this, &command] { wait(command); });
        break;
    case Action::Shot:
        if (index > 0 && script.commands[index - 1].action == Action::Wait)
            takePicture(command);
        else
            whenAsked([this, &command] { takePicture(command); });
        break;
    case Action::Expect:
    case Action::ExpectDark:
    case Action::ExpectSetting:
    case Action::ExpectLog:
        expect(command);
        break;
    case Action::Quit:
        finish("");
        break;
    case Action::ExitCode:
        awaitEnd();
        break;
    }
}

void ScriptPlayer::wait(const Command& command) {
    timer = loop.after(static_cast<int64_t>(command.numbers[0] / speed), [this] { advance(); });
}

void ScriptPlayer::whenAsked(const Step& step) {
    awaitQuestion(step, stream.looks());
}

void ScriptPlayer::awaitQuestion(const Step& step, uint32_t looksBefore) {
    constexpr int64_t LOOK_EVERY_MS = 1;
    if (stream.isAwaitedSince(looksBefore))
        step();
    else if (nowMs() >= impatientAtMs) {
        std::ostringstream seconds;
        seconds << patienceMs / 1000.0;
        fail("the program has not asked for the pen for " + seconds.str() + " s");
    } else
        timer = loop.after(LOOK_EVERY_MS, [=] { awaitQuestion(step, looksBefore); });
}

void ScriptPlayer::expect(const Command& command) {
    try {
        awaitExpected(expectationOf(command, script, panel, stateDirectory));
    } catch (const Failure& failure) { // there is no such picture yet, or none that can be compared
        const std::string reason = failure.what();
        whenAsked([this, &command, reason] {
            panel.look();
            fail(reason + "; " + saveActual(expectedPicture(command, script), panel.picture()));
        });
    }
}

void ScriptPlayer::awaitExpected(const Expectation& expectation) {
    constexpr int64_t LOOK_EVERY_MS = 5;
    if (expectation.isMet())
        advance();
    else if (nowMs() >= impatientAtMs)
        fail(expectation.explain());
    else
        timer = loop.after(LOOK_EVERY_MS, [=] { awaitExpected(expectation); });
}

bool ScriptPlayer::isMetNow(const Command& command) {
    try {
        return expectationOf(command, script, panel, stateDirectory).isMet();
    } catch (const Failure&) {
        return false;
    }
}

void ScriptPlayer::note(Outcome outcome, const std::string& message) {
    outcomes[index].outcome = outcome;
    outcomes[index].seconds = static_cast<double>(nowMs() - beganAtMs) / 1000;
    outcomes[index].message = message;
}

std::vector<Check> ScriptPlayer::checks() const {
    std::vector<Check> checks;
    for (size_t i = 0; i < outcomes.size(); ++i)
        if (isExpectation(script.commands[i]))
            checks.push_back(outcomes[i]);
    return checks;
}

void ScriptPlayer::awaitEnd() {
    timer = loop.after(patienceMs, [this] { fail("the program has not ended"); });
}

void ScriptPlayer::takePicture(const Command& command) {
    try {
        panel.look();
        writePng(command.text, panel.picture());
    } catch (const Failure& failure) {
        fail(failure.what());
        return;
    }
    advance();
}

// Through the loop, so that a long script does not nest and what the program does meanwhile is seen.
void ScriptPlayer::advance() {
    note(Outcome::Passed, "");
    ++index;
    timer = loop.after(0, [this] { playNext(); });
}

void ScriptPlayer::fail(const std::string& reason) {
    const bool atEnd = index >= script.commands.size();
    if (!atEnd)
        note(Outcome::Failed, reason);
    const std::string where = atEnd ? "at the end" : std::to_string(script.commands[index].line);
    finish(script.name + ":" + where + ": " + reason);
}

void ScriptPlayer::finish(const std::string& failure) {
    loop.cancel(timer);
    if (finished)
        std::exchange(finished, nullptr)(failure);
}

bool ScriptPlayer::awaitsEnd() const {
    return index < script.commands.size() && script.commands[index].action == Action::ExitCode;
}

std::string ScriptPlayer::current() const {
    if (index >= script.commands.size())
        return "";
    const Command& command = script.commands[index];
    return script.name + ":" + std::to_string(command.line) + ": " + command.source;
}

std::string ScriptPlayer::programEnded(const Ending& ending) {
    loop.cancel(timer);
    finished = nullptr;
    if (!ending.ran)
        return ending.sentence;
    while (index < script.commands.size() && isExpectation(script.commands[index]) &&
           isMetNow(script.commands[index])) {
        note(Outcome::Passed, "");
        ++index;
    }
    if (index >= script.commands.size() || script.commands[index].action == Action::Quit)
        return "";
    const Command& command = script.commands[index];
    const std::string where = script.name + ":" + std::to_string(command.line) + ": " + ending.sentence;
    if (!awaitsEnd()) {
        note(Outcome::Failed, ending.sentence + " before it was so");
        return where + " before '" + command.source + "' was done";
    }
    return ending.status == command.numbers[0] ? "" : where + ", not " + std::to_string(command.numbers[0]);
}

} // namespace ostrel
