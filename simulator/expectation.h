// What a script expects: whether it is so by now, and what is wrong as long as it is not.
#ifndef OSTREL_SIMULATOR_EXPECTATION_H
#define OSTREL_SIMULATOR_EXPECTATION_H

#include "simulator/panel.h"
#include "simulator/script.h"

#include <functional>
#include <string>

namespace ostrel {

struct Expectation {
    std::function<bool()> isMet;
    std::function<std::string()> explain;
};

bool isExpectation(const Command& command);

// The file of an `expect`.
std::string expectedPicture(const Command& command, const Script& script);

// For a command that is one. `panel` is looked at as long as the expectation lives. Throws Failure when there is
// nothing to compare with.
Expectation
expectationOf(const Command& command, const Script& script, Panel& panel, const std::string& stateDirectory);

} // namespace ostrel

#endif
