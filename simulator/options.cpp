#include "simulator/options.h"

#include "simulator/failure.h"
#include "simulator/nearest.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <sstream>

namespace ostrel {
namespace {

enum class Value { None, Optional, Needed };

struct Option {
    const char* group; // --help shows it in front of the group's first option
    const char* name;
    Value value;
    const char* valueName;
    const char* help;
    void (*apply)(Options& options, const std::string& value);
};

[[noreturn]] void refuse(const std::string& sentence) {
    throw Failure(sentence + "; see ostrel-sim --help", exit_status::USAGE);
}

std::string shortest(double number) {
    std::ostringstream text;
    text << number;
    return text.str();
}

double number(const char* option, const std::string& text, double least, double most) {
    char* end = nullptr;
    const double value = strtod(text.c_str(), &end);
    if (text.empty() || *end != '\0' || !std::isfinite(value) || value < least || value > most)
        refuse(
            std::string(option) + " needs a number from " + shortest(least) + " to " + shortest(most) + ", not '" +
            text + "'");
    return value;
}

int port(const std::string& text) {
    const double value = number("--web", text, 1, 65535);
    if (value != std::floor(value))
        refuse("--web needs a whole number, not '" + text + "'");
    return static_cast<int>(value);
}

IpAddress address(const std::string& text) {
    const std::optional<IpAddress> read = IpAddress::read(text);
    if (!read || read->isLinkLocal())
        refuse("--address needs an IP address such as 192.168.1.20, or 0.0.0.0 for all, not '" + text + "'");
    return *read;
}

void chooseFace(Options& options, Face face) {
    if (options.face != Face::Unchosen && options.face != face)
        refuse("--headless, --web and --window exclude each other");
    options.face = face;
}

// The help has room for 50 characters a row.
// clang-format off
constexpr Option OPTIONS[] = {
    // group   name        value            value's name help
    {"Face",   "window",   Value::None,     "",          "a window (the default where there is a display)",
        [](Options& o, const std::string& /*value*/) { chooseFace(o, Face::Window); }},
    {"Face",   "web",      Value::Optional, "PORT",      "browsers and VNC viewers (the default otherwise)",
        [](Options& o, const std::string& value) { chooseFace(o, Face::Web); if (!value.empty()) o.port = port(value); }},
    {"Face",   "address",  Value::Needed,   "ADDRESS",   "show it to other machines at ADDRESS of this one",
        [](Options& o, const std::string& value) { o.address = address(value); o.isForWeb = true; }},
    {"Face",   "password-file", Value::Needed, "FILE",   "ask viewers for what FILE's first line says",
        [](Options& o, const std::string& value) { o.passwordFile = value; o.isForWeb = true; }},
    {"Face",   "headless", Value::None,     "",          "none (the default with --script)",
        [](Options& o, const std::string& /*value*/) { chooseFace(o, Face::Headless); }},
    {"Script", "script",   Value::Needed,   "FILE",      "touch the panel as FILE says; - is standard input",
        [](Options& o, const std::string& value) { o.script = value; }},
    {"Script", "record",   Value::Needed,   "FILE",      "write what you touch as a script",
        [](Options& o, const std::string& value) { o.record = value; }},
    {"Script", "junit",    Value::Needed,   "FILE",      "write the results for a CI to show",
        [](Options& o, const std::string& value) { o.junit = value; }},
    {"Script", "patience", Value::Needed,   "SECONDS",   "how long a script waits for the program (30)",
        [](Options& o, const std::string& value) { o.patienceMs = static_cast<int>(1000 * number("--patience", value, 0.001, 86400)); }},
    {"Script", "speed",    Value::Needed,   "N",         "let sleeps and waits take one N-th of their time",
        [](Options& o, const std::string& value) { o.speed = number("--speed", value, 0.01, 1000); }},
    {"State",  "state",    Value::Needed,   "DIR",       "keep settings and flash in DIR",
        [](Options& o, const std::string& value) { o.state = value; }},
    {"State",  "fresh",    Value::None,     "",          "begin with factory settings and an empty flash",
        [](Options& o, const std::string& /*value*/) { o.fresh = true; }},
    {"Other",  "verbose",  Value::None,     "",          "show what is asked of devices, and what takes long",
        [](Options& o, const std::string& /*value*/) { o.verbose = true; }},
    {"Other",  "help",     Value::None,     "",          "show this help and exit",
        [](Options& o, const std::string& /*value*/) { o.help = true; }},
    {"Other",  "version",  Value::None,     "",          "show the version and exit",
        [](Options& o, const std::string& /*value*/) { o.version = true; }},
};
// clang-format on

[[noreturn]] void refuseUnknown(const std::string& argument) {
    std::vector<std::string> known;
    for (const Option& option : OPTIONS)
        known.push_back(std::string("--") + option.name);
    refuse("there is no option " + argument + didYouMean(argument, known));
}

// Of "--name" or "--name=value".
const Option& find(const std::string& argument) {
    const std::string word = argument.substr(0, argument.find('='));
    for (const Option& option : OPTIONS)
        if (word == std::string("--") + option.name)
            return option;
    refuseUnknown(word);
}

// Applies arguments[index], and returns the index behind what belongs to it.
size_t applyOption(Options& options, const std::vector<std::string>& arguments, size_t index) {
    const std::string& argument = arguments[index];
    const size_t equals = argument.find('=');
    const bool hasValue = equals != std::string::npos;
    const Option& option = find(argument);
    std::string value = hasValue ? argument.substr(equals + 1) : "";
    size_t next = index + 1;
    if (hasValue && option.value == Value::None)
        refuse(std::string("--") + option.name + " takes no value");
    if (!hasValue && option.value == Value::Needed) {
        if (next == arguments.size())
            refuse(std::string("--") + option.name + " needs " + option.valueName);
        value = arguments[next++];
    }
    if (value.empty() && (hasValue || option.value == Value::Needed))
        refuse(std::string("--") + option.name + " needs " + option.valueName);
    option.apply(options, value);
    return next;
}

// What only the web panel has asks for the web panel. Nobody but the own machine touches it without a password.
void checkWebOptions(Options& options) {
    if (!options.isForWeb)
        return;
    if (options.face != Face::Unchosen && options.face != Face::Web)
        refuse("--address and --password-file are for the web panel, --web");
    options.face = Face::Web;
    if (!options.address.isLoopback() && options.passwordFile.empty())
        refuse(
            "--address " + options.address.text() + " lets other machines touch the panel: add --password-file FILE");
}

void checkRecording(const Options& options) {
    if (options.record.empty())
        return;
    if (!options.script.empty())
        refuse("--record writes what a person touches: leave out --script");
    if (options.face == Face::Headless)
        refuse("--record writes what a person touches: leave out --headless");
}

std::string usageOf(const Option& option) {
    switch (option.value) {
    case Value::None:
        return std::string("--") + option.name;
    case Value::Optional:
        return std::string("--") + option.name + "[=" + option.valueName + "]";
    case Value::Needed:
        return std::string("--") + option.name + " " + option.valueName;
    }
    return "";
}

} // namespace

Options parseOptions(const std::vector<std::string>& arguments) {
    Options options;
    size_t index = 0;
    while (index < arguments.size() && arguments[index].size() > 1 && arguments[index][0] == '-') {
        if (arguments[index] == "--") {
            ++index;
            break;
        }
        index = applyOption(options, arguments, index);
    }
    options.program.assign(arguments.begin() + static_cast<std::ptrdiff_t>(index), arguments.end());
    if (options.program.empty() && !options.help && !options.version)
        refuse("which program? ostrel-sim [options] PROGRAM [ARGUMENTS]");
    checkWebOptions(options);
    checkRecording(options);
    if (options.face == Face::Unchosen && !options.script.empty())
        options.face = Face::Headless;
    return options;
}

std::string helpText() {
    constexpr size_t OPTION_COLUMN = 8;
    constexpr size_t HELP_COLUMN = 30;
    std::string text = "Usage: ostrel-sim [options] PROGRAM [ARGUMENTS]\n"
                       "       ostrel-sim nvram --help    about looking into the router's settings\n"
                       "Runs a program of the router, unmodified, on this machine and shows its panel.\n\n";
    std::string group;
    for (const Option& option : OPTIONS) {
        std::string line = group == option.group ? "" : option.group;
        group = option.group;
        line.resize(OPTION_COLUMN, ' ');
        line += usageOf(option);
        line.resize(std::max(line.size() + 1, HELP_COLUMN), ' ');
        text += line + option.help + "\n";
    }
    return text + "\nWindow: F12 saves a picture, Ctrl+R restarts the program, closing ends it.\n"
                  "Exit status: the program's; 128 + N when signal N ended it; 1 when the script\n"
                  "failed; 125 when the simulator could not run the program. More: man ostrel-sim\n";
}

} // namespace ostrel
