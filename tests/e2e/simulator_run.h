// Runs ostrel-sim as a user does, each time with a state directory of its own.
#ifndef OSTREL_TESTS_E2E_SIMULATOR_RUN_H
#define OSTREL_TESTS_E2E_SIMULATOR_RUN_H

#include "tests/unit/simulator/temporary_directory.h"

#include <fstream>
#include <iterator>
#include <string>
#include <sys/wait.h>
#include <vector>

struct Told {
    int status = -1; // as $? tells it
    std::string output;
    std::string errors;
};

inline std::string contentOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

class Desk {
  public:
    Desk() { std::filesystem::create_directory(directory.file("assets")); }

    std::string file(const std::string& name) const { return directory.file(name); }

    void write(const std::string& name, const std::string& content) const {
        std::ofstream(file(name), std::ios::binary) << content;
    }

    // `arguments` as for a shell. `before` is put in front of the command.
    Told run(const std::string& arguments, const std::string& before = "") const {
        return execute("", arguments, before);
    }

    // ostrel-sim nvram: a look into the settings store.
    Told nvram(const std::string& arguments) const { return execute("nvram", arguments, ""); }

    // A command line of the shell's, whose output and errors are taken unless it sends them elsewhere.
    Told shell(const std::string& command) const {
        return execute("export OSTREL_ASSETS='" + file("assets") + "'; " + command);
    }

    // The probe, touched as `script` says.
    Told play(const std::string& script, const std::string& probeArguments, const std::string& options = "") const {
        write("script", script);
        return run("--script script " + options + " '" OSTREL_PROBE "' " + probeArguments);
    }

    TemporaryDirectory directory;

  private:
    Told execute(const std::string& verb, const std::string& arguments, const std::string& before) const {
        return execute(
            "OSTREL_ASSETS='" + file("assets") + "' " + before + " '" OSTREL_SIM "' " + verb + " --state '" +
            file("state") + "' " + arguments);
    }

    Told execute(const std::string& line) const {
        const std::string command =
            "cd '" + directory.path + "' && { " + line + "; } >'" + file("output") + "' 2>'" + file("errors") + "'";
        const int status = system(command.c_str()); // NOLINT(cert-env33-c,concurrency-mt-unsafe): a test of a command
        return {
            WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status), contentOf(file("output")),
            contentOf(file("errors"))};
    }
};

#endif
