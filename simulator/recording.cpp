#include "simulator/recording.h"

#include "simulator/failure.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <utility>

namespace ostrel {
namespace {

constexpr int64_t LONGEST_MS = 86400000; // that a script may pause

// What a person did after the last touch; longer than it takes to look at the panel it needs not be.
constexpr int64_t LONGEST_LAST_PAUSE_MS = 10000;

std::string at(const char* command, int x, int y) {
    return std::string(command) + " " + std::to_string(x) + " " + std::to_string(y);
}

// In a comment, on one line.
std::string onOneLine(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }, '?');
    return text;
}

} // namespace

Recording::Recording(const std::string& file, const std::string& replay, double speed, Say say)
    : file(open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_APPEND | O_CLOEXEC, 0666)), name(file), speed(speed),
      say(std::move(say)) {
    if (!this->file.isOpen())
        throw writeFailure("the recording " + file);
    write("# Recorded by ostrel-sim. To play it:");
    write("#     " + onOneLine(replay));
    write(
        "# At its end the program is ended. \"shot last.png\" as the last line keeps what the panel shows then; once");
    write("# that picture is right, \"expect last.png\" in its place checks it.");
}

void Recording::press(int pressX, int pressY, int64_t pausedMs) {
    pause(pausedMs);
    x = pressX;
    y = pressY;
    pressPending = true;
}

void Recording::move(int moveX, int moveY, int64_t pausedMs) {
    writePress();
    pause(pausedMs);
    write(at("move", moveX, moveY));
}

void Recording::release(int64_t pausedMs) {
    const bool isTap = pressPending && pausedMs < PAUSE_MS;
    if (isTap) {
        pressPending = false;
        write(at("tap", x, y));
        return;
    }
    writePress();
    pause(pausedMs);
    write("release");
}

void Recording::wentDark(int64_t pausedMs) {
    writePress();
    pause(pausedMs);
    write("expect-dark");
}

void Recording::missed(int missedX, int missedY) {
    write(at("# The program did not ask for the pen and has not got: tap", missedX, missedY));
}

void Recording::programEnded(int status) {
    writePress();
    write("exit-code " + std::to_string(status));
}

void Recording::ended(int64_t pausedMs) {
    writePress();
    pause(std::min(pausedMs, LONGEST_LAST_PAUSE_MS));
}

void Recording::pause(int64_t ms) {
    if (ms >= PAUSE_MS)
        write("pause " + std::to_string(std::min(static_cast<int64_t>(static_cast<double>(ms) * speed), LONGEST_MS)));
}

void Recording::writePress() {
    if (std::exchange(pressPending, false))
        write(at("press", x, y));
}

// One line a call, so that a kill at any moment leaves whole lines.
void Recording::write(const std::string& line) {
    const std::string bytes = line + "\n";
    if (!file.isOpen() || ::write(file.get(), bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()))
        return;
    const int reason = errno;
    file.reset();
    say("cannot write the recording " + name + ": " + strerrordesc_np(reason) + "; it ends here");
}

} // namespace ostrel
