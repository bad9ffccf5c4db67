#include "apps/nvram/nvram_tool.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <istream>
#include <ostream>
#include <ostrel.h>
#include <stdexcept>
#include <unistd.h>

namespace {

constexpr const char* DEVICE = "/dev/apsoc_nvram";
constexpr size_t LONGEST = NVRAM_TEXT_LENGTH - 1;

constexpr const char* HELP = R"(Usage: ostrel-nvram [--rtdev] get NAME
       ostrel-nvram [--rtdev] set NAME VALUE
       ostrel-nvram [--rtdev] set NAME=VALUE
       ostrel-nvram [--rtdev] set NAME -
       ostrel-nvram [--rtdev] commit [--restart]

Reads and writes the router's settings.

  get        prints the value; an empty line where there is none
  set        stores a value, for every program at once, until the power goes;
             with - the value is read from standard input
  commit     keeps the section's stored values for good

  --rtdev    work on the second section (ShowPass, ScreenTimeout, ...)
  --restart  after the commit, restart the services that use the settings
  --help     show this text
  --version  show the version

Exit codes: 0 done, 1 failed, 2 not understood.
)";

// Both say in `what` what the user reads.
struct NotUnderstood : std::runtime_error {
    using runtime_error::runtime_error;
};
struct Failed : std::runtime_error {
    using runtime_error::runtime_error;
};

struct CommandLine {
    bool rtdev = false;
    bool restart = false;
    bool help = false;
    bool version = false;
    std::vector<std::string> operands; // the command first
};

// Options may stand anywhere before a "--". A single dash and what begins with one are operands: values may be "-5".
CommandLine parsed(const std::vector<std::string>& words) {
    CommandLine line;
    const struct {
        const char* name;
        bool& flag;
    } options[] = {
        {"--rtdev", line.rtdev}, {"--restart", line.restart}, {"--help", line.help}, {"--version", line.version}};
    bool optionsEnded = false;
    for (const std::string& word : words) {
        if (optionsEnded || word.compare(0, 2, "--") != 0) {
            line.operands.push_back(word);
        } else if (word == "--") {
            optionsEnded = true;
        } else {
            const auto* const option =
                std::find_if(std::begin(options), std::end(options), [&](auto& each) { return word == each.name; });
            if (option == std::end(options))
                throw NotUnderstood("unknown option; put -- before a value that begins with two dashes");
            option->flag = true;
        }
    }
    return line;
}

void checkText(const std::string& text, const char* what) {
    if (text.size() > LONGEST)
        throw NotUnderstood(std::string(what) + " is longer than " + std::to_string(LONGEST) + " bytes");
}

void checkName(const std::string& name) {
    if (name.empty())
        throw NotUnderstood("the name is empty");
    if (name.find('=') != std::string::npos)
        throw NotUnderstood("a name cannot contain '='");
    checkText(name, "the name");
}

// Requests report no failure, so a missing driver is noticed before.
void checkDevice() {
    const int device = open(DEVICE, O_RDONLY);
    if (device >= 0) {
        close(device);
        return;
    }
    const int error = errno;
    std::string message = std::string("cannot open ") + DEVICE + ": " + std::strerror(error);
    if (error == EACCES || error == EPERM)
        message += ". Run it as root";
    else
        message += ". The settings driver is not loaded; on a desk run: ostrel-sim ostrel-nvram";
    throw Failed(message);
}

std::string readSetting(const std::string& name, bool rtdev) {
    char value[NVRAM_TEXT_LENGTH];
    if (rtdev)
        Memory().getSettingRtdev(name.c_str(), value);
    else
        Memory().getSetting(name.c_str(), value);
    return value;
}

// All of standard input but one line end at its end. Nothing at all is refused: it comes from a command that failed.
std::string valueFromInput(std::istream& in) {
    std::string value(LONGEST + 2, 0);
    in.read(value.data(), static_cast<std::streamsize>(value.size()));
    if (in.bad())
        throw Failed("standard input cannot be read");
    value.resize(static_cast<size_t>(in.gcount()));
    if (value.empty())
        throw Failed("standard input is empty; for an empty value give an empty line");
    if (value.back() == '\n')
        value.pop_back();
    if (value.find('\0') != std::string::npos)
        throw Failed("the value contains a zero byte");
    return value;
}

void get(const CommandLine& line, const NvramToolStreams& streams) {
    if (line.operands.size() != 2)
        throw NotUnderstood("get takes one name");
    const std::string& name = line.operands[1];
    checkName(name);
    checkDevice();
    streams.out << readSetting(name, line.rtdev) << '\n';
}

void set(const CommandLine& line, const NvramToolStreams& streams) {
    const size_t count = line.operands.size() - 1;
    if (count > 2)
        throw NotUnderstood("set takes one name and one value; put a value with blanks into quotes");
    std::string name = count > 0 ? line.operands[1] : "";
    std::string value;
    if (count < 2) {
        const size_t sign = name.find('=');
        if (sign == std::string::npos)
            throw NotUnderstood("set takes a name and a value");
        value = name.substr(sign + 1);
        name.resize(sign);
    }
    checkName(name);
    if (count == 2)
        value = line.operands[2] == "-" ? valueFromInput(streams.in) : line.operands[2];
    checkText(value, "the value");
    checkDevice();
    if (line.rtdev)
        Memory().addValueRtdev(name.c_str(), value.c_str());
    else
        Memory().addValue(name.c_str(), value.c_str());
    if (readSetting(name, line.rtdev) != value)
        throw Failed("the settings driver did not store the value");
}

void commit(const CommandLine& line, const NvramToolStreams&) {
    if (line.operands.size() != 1)
        throw NotUnderstood("commit takes no name: it keeps the whole section");
    checkDevice();
    if (line.rtdev)
        Memory().saveValuesRtdev();
    else
        Memory().saveValues();
    if (line.restart)
        Memory().commit();
}

void run(const CommandLine& line, const NvramToolStreams& streams) {
    const struct {
        const char* name;
        void (*run)(const CommandLine&, const NvramToolStreams&);
    } commands[] = {{"get", get}, {"set", set}, {"commit", commit}};
    for (const auto& command : commands) {
        if (line.operands.empty() || line.operands[0] != command.name)
            continue;
        if (line.restart && command.run != commit)
            throw NotUnderstood("--restart goes with commit only");
        command.run(line, streams);
        return;
    }
    throw NotUnderstood("the first word must be get, set or commit");
}

} // namespace

int runNvramTool(const std::vector<std::string>& words, const NvramToolStreams& streams) {
    try {
        const CommandLine line = parsed(words);
        if (line.help)
            streams.out << HELP;
        else if (line.version)
            streams.out << "ostrel-nvram " OSTREL_VERSION "\n";
        else
            run(line, streams);
        if (!streams.out.flush())
            throw Failed("standard output cannot be written");
        return 0;
    } catch (const Failed& failure) {
        streams.err << "ostrel-nvram: " << failure.what() << ".\n";
        return 1;
    } catch (const NotUnderstood& mistake) {
        streams.err << "ostrel-nvram: " << mistake.what() << ". See ostrel-nvram --help.\n";
        return 2;
    }
}
