#include "simulator/failure.h"
#include "simulator/nvram_cli.h"
#include "simulator/options.h"
#include "simulator/paths.h"
#include "simulator/simulator.h"

#include <cerrno>
#include <exception>
#include <fcntl.h>
#include <iostream>
#include <unistd.h>

using namespace ostrel;

namespace {

// A caller may have closed them. Whatever is opened next would take their places and be written into: something that
// fails as a closed one does takes them first.
void occupyStandardDescriptors() {
    for (const int fd : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (fcntl(fd, F_GETFD) < 0 && open("/dev/null", fd == STDIN_FILENO ? O_WRONLY : O_RDONLY) != fd)
            _exit(exit_status::SIMULATOR_FAILED); // without /dev/null there is no machine to run on
}

int print(const std::string& text) {
    errno = 0;
    if (!(std::cout << text).flush())
        throw systemFailure("the output cannot be written");
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    occupyStandardDescriptors();
    try {
        if (argc > 1 && std::string(argv[1]) == "nvram") {
            runNvram({argv + 2, argv + argc}, supportDirectory() + "/factory-settings", std::cout);
            return 0;
        }
        const Options options = parseOptions({argv + 1, argv + argc});
        if (options.help)
            return print(helpText());
        if (options.version)
            return print("ostrel-sim " OSTREL_VERSION "\n");
        return simulate(options);
    } catch (const Failure& failure) {
        say(failure.what());
        return failure.status;
    } catch (const std::exception& error) {
        say(std::string("cannot go on: ") + error.what());
        return exit_status::SIMULATOR_FAILED;
    }
}
