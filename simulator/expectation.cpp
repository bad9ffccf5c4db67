#include "simulator/expectation.h"

#include "simulator/failure.h"
#include "simulator/log_search.h"
#include "simulator/picture_expectation.h"
#include "simulator/store/settings_store.h"

#include <memory>

namespace ostrel {
namespace {

Expectation expectPicture(const std::string& file, Panel& panel) {
    const auto expected = std::make_shared<PictureExpectation>(file);
    const auto isMet = [=, &panel] {
        panel.look();
        return expected->isMetBy(panel.picture());
    };
    return {isMet, [=, &panel] {
                try {
                    return expected->explain(panel.picture());
                } catch (const Failure& failure) {
                    return std::string(failure.what());
                }
            }};
}

Expectation expectDark(const Panel& panel) {
    return {[&panel] { return panel.isDark(); }, [] { return std::string("the panel is not dark"); }};
}

// What a secret setting holds instead is not said.
Expectation expectSetting(const Command& command, const std::string& stateDirectory) {
    const auto isMet = [=] {
        char value[SETTING_SIZE];
        const auto section = static_cast<Section>(command.numbers[0]);
        return getStored(stateDirectory.c_str(), section, command.name.c_str(), value) == 0 && command.text == value;
    };
    return {isMet, [=] {
                return "setting " + command.name + " of section " + std::to_string(command.numbers[0]) +
                       " has another value";
            }};
}

Expectation expectLog(const std::string& text, const std::string& stateDirectory) {
    const auto search = std::make_shared<LogSearch>(stateDirectory, text);
    return {[=] { return search->hasFound(); }, [=] { return "the log has no line with '" + text + "'"; }};
}

} // namespace

bool isExpectation(const Command& command) {
    switch (command.action) {
    case Action::Expect:
    case Action::ExpectDark:
    case Action::ExpectSetting:
    case Action::ExpectLog:
        return true;
    default:
        return false;
    }
}

std::string expectedPicture(const Command& command, const Script& script) {
    return command.text.front() == '/' ? command.text : script.directory + command.text;
}

Expectation
expectationOf(const Command& command, const Script& script, Panel& panel, const std::string& stateDirectory) {
    switch (command.action) {
    case Action::ExpectDark:
        return expectDark(panel);
    case Action::ExpectSetting:
        return expectSetting(command, stateDirectory);
    case Action::ExpectLog:
        return expectLog(command.text, stateDirectory);
    default:
        return expectPicture(expectedPicture(command, script), panel);
    }
}

} // namespace ostrel
