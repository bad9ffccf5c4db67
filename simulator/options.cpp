#include "simulator/options.h"

#include "simulator/failure.h"

#include <cmath>
#include <cstdlib>
#include <sstream>

namespace ostrel {
namespace {

enum class Value { None, Optional, Needed };

struct Option {
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

void chooseFace(Options& options, Face face) {
    if (options.face != Face::Unchosen && options.face != face)
        refuse("--headless and --web exclude each other");
    options.face = face;
}

// clang-format off
constexpr Option OPTIONS[] = {
    // name      value            value's name help
    {"headless", Value::None,     "",        "show nothing",
        [](Options& o, const std::string& /*value*/) { chooseFace(o, Face::Headless); }},
    {"web",      Value::Optional, "PORT",    "show the panel in web browsers and VNC viewers (without a script: the default)",
        [](Options& o, const std::string& value) { chooseFace(o, Face::Web); if (!value.empty()) o.port = port(value); }},
    {"script",   Value::Needed,   "FILE",    "touch the panel as FILE says, without a face unless one is chosen",
        [](Options& o, const std::string& value) { o.script = value; }},
    {"patience", Value::Needed,   "SECONDS", "how long a script waits for the program to ask for the pen (30)",
        [](Options& o, const std::string& value) { o.patienceMs = static_cast<int>(1000 * number("--patience", value, 0.001, 86400)); }},
    {"speed",    Value::Needed,   "N",       "let the program's sleeps and the script's waits take one N-th of their time",
        [](Options& o, const std::string& value) { o.speed = number("--speed", value, 0.01, 1000); }},
    {"state",    Value::Needed,   "DIR",     "keep settings and flash in DIR",
        [](Options& o, const std::string& value) { o.state = value; }},
    {"fresh",    Value::None,     "",        "begin with factory settings and an empty flash",
        [](Options& o, const std::string& /*value*/) { o.fresh = true; }},
    {"verbose",  Value::None,     "",        "show the log: what the program asks its devices and commands to do",
        [](Options& o, const std::string& /*value*/) { o.verbose = true; }},
    {"help",     Value::None,     "",        "show this help and exit",
        [](Options& o, const std::string& /*value*/) { o.help = true; }},
    {"version",  Value::None,     "",        "show the version and exit",
        [](Options& o, const std::string& /*value*/) { o.version = true; }},
};
// clang-format on

const Option& find(const std::string& name) {
    for (const Option& option : OPTIONS)
        if (name == option.name)
            return option;
    refuse("there is no option --" + name);
}

// Applies arguments[index], and returns the index behind what belongs to it.
size_t applyOption(Options& options, const std::vector<std::string>& arguments, size_t index) {
    const std::string& argument = arguments[index];
    const size_t equals = argument.find('=');
    const bool hasValue = equals != std::string::npos;
    const Option& option = find(argument.substr(2, hasValue ? equals - 2 : equals));
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
        if (arguments[index].compare(0, 2, "--") != 0)
            refuse("there is no option " + arguments[index]);
        index = applyOption(options, arguments, index);
    }
    options.program.assign(arguments.begin() + static_cast<std::ptrdiff_t>(index), arguments.end());
    if (options.program.empty() && !options.help && !options.version)
        refuse("which program? ostrel-sim [options] PROGRAM [ARGUMENTS]");
    if (options.face == Face::Unchosen)
        options.face = options.script.empty() ? Face::Web : Face::Headless;
    return options;
}

std::string helpText() {
    constexpr size_t COLUMN = 22;
    std::string text = "Usage: ostrel-sim [options] PROGRAM [ARGUMENTS]\n"
                       "       ostrel-sim nvram COMMAND [ARGUMENTS]\n"
                       "Runs a program of the router, unmodified, on this machine and shows its panel.\n\n";
    for (const Option& option : OPTIONS) {
        std::string line = "  " + usageOf(option);
        line.resize(std::max(line.size() + 1, COLUMN), ' ');
        text += line + option.help + "\n";
    }
    text += "\nThe exit status is the program's, 128 + N when signal N ended it, 1 when the script\n"
            "failed, and 125 when the simulator itself could not run the program.\n";
    return text;
}

} // namespace ostrel
