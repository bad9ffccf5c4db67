#include "pin_change.h"

#include <utility>

bool isPin(const std::string& text) {
    constexpr size_t DIGITS = 4;
    return text.size() == DIGITS && text.find_first_not_of("0123456789") == std::string::npos;
}

PinChange::PinChange(std::string current) : current(std::move(current)), isAllowed(this->current.empty()) {}

PinChange::Answer PinChange::enterCurrent(const std::string& text) {
    constexpr int TRIES = 3;
    if (text == current) {
        isAllowed = true;
        return Answer::Taken;
    }
    ++wrong;
    return wrong < TRIES ? Answer::Wrong : Answer::WrongTooOften;
}

PinChange::Answer PinChange::enterNew(const std::string& text) {
    if (!isPin(text))
        return Answer::NotFourDigits;
    chosen = text;
    isRepeated = false;
    return Answer::Taken;
}

PinChange::Answer PinChange::enterRepeated(const std::string& text) {
    isRepeated = text == chosen;
    if (isRepeated)
        return Answer::Taken;
    chosen.clear();
    return Answer::Different;
}
