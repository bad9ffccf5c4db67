#include "simulator/nvram_cli.h"

#include "simulator/failure.h"
#include "simulator/nearest.h"
#include "simulator/nvram_commands.h"
#include "simulator/state_directory.h"

#include <algorithm>
#include <filesystem>

namespace ostrel {
namespace {

namespace fs = std::filesystem;
using Words = std::vector<std::string>;

std::string help() {
    constexpr size_t COLUMN = 27;
    std::string text = "Usage: ostrel-sim nvram [--state DIR | --program NAME] COMMAND\n"
                       "Looks into the settings of a simulated router. SECTION is main or rtdev.\n\n";
    for (const NvramCommand& row : NVRAM_COMMAND) {
        std::string line = std::string("  ") + row.name + " " + row.usage;
        line.resize(COLUMN, ' ');
        text += line + row.help + "\n";
    }
    return text + "\n"
                  "  --program NAME  the router on which the program NAME runs by default\n"
                  "  --state DIR     the router whose state is kept in DIR\n"
                  "  --committed     leave out what was set and not committed yet (get, list)\n\n"
                  "Without --program and --state it is the only router that there is. The exit\n"
                  "status is 0; 1 when it could not be done; 2 when the command line is wrong.\n";
}

// The only router that was ever simulated with a default state directory.
std::string onlyDirectory() {
    const std::string root = fs::path(defaultStateDirectory("x")).parent_path();
    Words names;
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(root, error))
        if (entry.is_directory(error))
            names.push_back(entry.path().filename());
    std::sort(names.begin(), names.end());
    if (names.size() == 1)
        return root + "/" + names[0];
    std::string known;
    for (const std::string& name : names)
        known += (known.empty() ? "" : ", ") + name;
    refuseNvram(
        names.empty() ? "no router was simulated yet in " + root + "; choose one with --state"
                      : "which router? --program NAME chooses among " + known);
}

const NvramCommand& findCommand(const std::string& name) {
    for (const NvramCommand& row : NVRAM_COMMAND)
        if (name == row.name)
            return row;
    Words known;
    for (const NvramCommand& row : NVRAM_COMMAND)
        known.emplace_back(row.name);
    refuseNvram("there is no command '" + name + "'" + didYouMean(name, known));
}

// Takes the options, wherever they stand before a "--", out of the words.
Words takeOptions(const Words& words, NvramRequest& request, bool& helpWanted) {
    Words rest;
    for (size_t i = 0; i < words.size(); ++i) {
        const std::string& word = words[i];
        const bool needsValue = word == "--state" || word == "--program";
        if (word == "--") {
            rest.insert(rest.end(), words.begin() + static_cast<std::ptrdiff_t>(i) + 1, words.end());
            break;
        }
        if (needsValue && (i + 1 == words.size() || words[i + 1].empty()))
            refuseNvram(word + " needs " + (word == "--state" ? "DIR" : "NAME"));
        if (needsValue && !request.directory.empty())
            refuseNvram("--state and --program exclude each other");
        if (word == "--state")
            request.directory = words[++i];
        else if (word == "--program")
            request.directory = defaultStateDirectory(words[++i]);
        else if (word == "--committed")
            request.committed = true;
        else if (word == "--help")
            helpWanted = true;
        else if (word.compare(0, 2, "--") == 0)
            refuseNvram(
                "there is no option " + word + didYouMean(word, {"--state", "--program", "--committed", "--help"}));
        else
            rest.push_back(word);
    }
    return rest;
}

void finishOutput(std::ostream& out) {
    if (!out.flush())
        throw Failure("the output cannot be written", SETTINGS_FAILED);
}

} // namespace

void runNvram(const Words& words, const std::string& factory, std::ostream& out) {
    NvramRequest request;
    request.factory = factory;
    bool helpWanted = false;
    Words rest = takeOptions(words, request, helpWanted);
    if (helpWanted) {
        out << help();
        return finishOutput(out);
    }
    if (rest.empty())
        refuseNvram("no command is given");
    const NvramCommand& command = findCommand(rest.front());
    request.words.assign(rest.begin() + 1, rest.end());
    if (request.words.size() < command.least || request.words.size() > command.most)
        refuseNvram(std::string("usage: ostrel-sim nvram ") + command.name + " " + command.usage);
    if (request.directory.empty())
        request.directory = onlyDirectory();
    prepareStore(command, request);
    command.run(request, out);
    finishOutput(out);
}

} // namespace ostrel
