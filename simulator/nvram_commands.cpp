#include "simulator/nvram_commands.h"

#include "simulator/descriptor.h"
#include "simulator/failure.h"
#include "simulator/nvram_cli.h"
#include "simulator/simulator.h"
#include "simulator/state.h"
#include "simulator/store/escaped.h"
#include "simulator/store/lasting.h"
#include "simulator/store/power_on.h"
#include "simulator/store/store_files.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <sys/file.h>

namespace ostrel {
namespace {

[[noreturn]] void fail(const std::string& sentence) {
    throw Failure(sentence, SETTINGS_FAILED);
}

Section sectionOf(const std::string& word) {
    for (const Section section : SECTIONS)
        if (word == sectionName(section) || word == std::to_string(static_cast<int>(section)))
            return section;
    refuseNvram("there is no section '" + word + "': sections are main (1) and rtdev (2)");
}

std::vector<Section> sectionsOf(const NvramRequest& request) {
    if (request.words.empty())
        return {std::begin(SECTIONS), std::end(SECTIONS)};
    return {sectionOf(request.words[0])};
}

// While a simulator runs there, what its programs have set and not committed counts too.
bool isRunning(const std::string& directory) {
    const Descriptor lock(open((directory + "/" + state::LOCK).c_str(), O_RDONLY | O_CLOEXEC));
    return lock.isOpen() && flock(lock.get(), LOCK_SH | LOCK_NB) != 0;
}

[[noreturn]] void failWith(const NvramRequest& request, Section section, int error) {
    const std::string damage = error == -EIO ? describeDamage(request.directory, section) : "";
    if (!damage.empty())
        fail(damage + "; 'ostrel-sim nvram factory-reset' keeps it aside and begins anew");
    fail("the settings in " + request.directory + " cannot be used: " + strerror(-error));
}

struct Text {
    char bytes[STORE_SIZE];
    size_t size = 0;
};

std::unique_ptr<Text> readSection(const NvramRequest& request, Section section) {
    auto text = std::make_unique<Text>();
    const char* const directory = request.directory.c_str();
    const bool current = !request.committed && isRunning(request.directory);
    const int error = current ? readCurrent(directory, section, text->bytes, text->size)
                              : readCopy(directory, section, Copy::Committed, text->bytes, text->size);
    if (error != 0)
        failWith(request, section, error);
    return text;
}

void get(const NvramRequest& request, std::ostream& out) {
    char value[SETTING_SIZE];
    const Section section = sectionOf(request.words[0]);
    const auto text = readSection(request, section);
    if (!findSetting(text->bytes, text->size, request.words[1].c_str(), value))
        fail(std::string("section ") + sectionName(section) + " has no setting '" + request.words[1] + "'");
    out << value << "\n";
}

void list(const NvramRequest& request, std::ostream& out) {
    char name[SETTING_SIZE];
    char value[SETTING_SIZE];
    char escaped[ESCAPED_SIZE];
    for (const Section section : sectionsOf(request)) {
        const auto text = readSection(request, section);
        for (size_t at = 0; nextSetting(text->bytes, text->size, at, name, value);) {
            out << sectionName(section) << " ";
            out.write(escaped, static_cast<std::streamsize>(writeEscaped(escaped, name, '='))) << "=";
            out.write(escaped, static_cast<std::streamsize>(writeEscaped(escaped, value, '\n'))) << "\n";
        }
    }
}

void set(const NvramRequest& request, std::ostream& /*out*/) {
    const Section section = sectionOf(request.words[0]);
    const std::string& name = request.words[1];
    const std::string& value = request.words[2];
    if (name.empty())
        refuseNvram("a setting needs a name");
    if (name.size() >= SETTING_SIZE || value.size() >= SETTING_SIZE)
        refuseNvram("names and values have at most 1023 bytes");
    const int error = setLasting(request.directory.c_str(), section, name.c_str(), value.c_str());
    if (error == -ENOSPC)
        fail(std::string("section ") + sectionName(section) + " or the disk is full");
    if (error != 0)
        failWith(request, section, error);
}

void factoryReset(const NvramRequest& request, std::ostream& /*out*/) {
    for (const Section section : sectionsOf(request)) {
        std::vector<std::string> messages;
        const int error = resetSection(request.directory, section, request.factory, messages);
        for (const std::string& message : messages)
            say(message);
        if (error != 0)
            failWith(request, section, error);
    }
}

} // namespace

// clang-format off
const NvramCommand NVRAM_COMMAND[NVRAM_COMMANDS] = {
    // name           usage                 help                                           words  makes run
    {"get",           "SECTION NAME",       "print the value of a setting",                 2, 2, false, get},
    {"set",           "SECTION NAME VALUE", "give a setting a value that lasts",            3, 3, true,  set},
    {"list",          "[SECTION]",          "print all settings, one a line",               0, 1, false, list},
    {"factory-reset", "[SECTION]",          "forget everything but the factory settings",   0, 1, true,  factoryReset},
};
// clang-format on

void prepareStore(const NvramCommand& command, const NvramRequest& request) {
    std::error_code error;
    if (command.makesStore)
        std::filesystem::create_directories(request.directory, error);
    for (const Section section : SECTIONS) {
        std::vector<std::string> messages;
        const auto text = std::make_unique<Text>();
        if (readCopy(request.directory.c_str(), section, Copy::Committed, text->bytes, text->size) != -ENOENT)
            continue;
        if (!command.makesStore)
            fail("there are no settings in " + request.directory + " yet: no program has run there");
        const int failure = resetSection(request.directory, section, request.factory, messages);
        for (const std::string& message : messages)
            say(message);
        if (failure != 0)
            failWith(request, section, failure);
    }
}

void refuseNvram(const std::string& sentence) {
    throw Failure(sentence + "; see ostrel-sim nvram --help", exit_status::USAGE);
}

} // namespace ostrel
