// The way to a new PIN: the current one first, if there is one, then the new one twice. Knows nothing of the panel.
#ifndef OSTREL_APPS_SETTINGS_PIN_CHANGE_H
#define OSTREL_APPS_SETTINGS_PIN_CHANGE_H

#include <string>

// Exactly four digits 0 to 9: what the PIN pad can type.
bool isPin(const std::string& text);

class PinChange {
  public:
    enum class Answer { Taken, Wrong, WrongTooOften, NotFourDigits, Different };

    // `current` is the stored PIN; empty: there is none, and it is not asked for.
    explicit PinChange(std::string current = "");

    bool hasCurrent() const { return !current.empty(); }

    // What may be entered now, again where it was entered before.
    bool takesCurrent() const { return !isAllowed; }
    bool takesNew() const { return isAllowed; }
    bool takesRepeated() const { return !chosen.empty(); }
    bool isComplete() const { return isRepeated; }

    // Wrong twice, then WrongTooOften.
    Answer enterCurrent(const std::string& text);

    // A new PIN has to be repeated, also one that was repeated before.
    Answer enterNew(const std::string& text);

    // Different: both entries are forgotten, since nobody knows which of them was meant.
    Answer enterRepeated(const std::string& text);

    // The new PIN, once isComplete.
    const std::string& pin() const { return chosen; }

  private:
    std::string current;
    std::string chosen;
    int wrong = 0;
    bool isAllowed = false;
    bool isRepeated = false;
};

#endif
