#include "simulator/failure.h"
#include "simulator/nvram_cli.h"
#include "simulator/options.h"
#include "simulator/paths.h"
#include "simulator/simulator.h"

#include <exception>
#include <iostream>

int main(int argc, char** argv) {
    using namespace ostrel;
    try {
        if (argc > 1 && std::string(argv[1]) == "nvram") {
            runNvram({argv + 2, argv + argc}, supportDirectory() + "/factory-settings", std::cout);
            return 0;
        }
        const Options options = parseOptions({argv + 1, argv + argc});
        if (options.help)
            std::cout << helpText();
        else if (options.version)
            std::cout << "ostrel-sim " OSTREL_VERSION "\n";
        else
            return simulate(options);
        return 0;
    } catch (const Failure& failure) {
        say(failure.what());
        return failure.status;
    } catch (const std::exception& error) {
        say(std::string("cannot go on: ") + error.what());
        return exit_status::SIMULATOR_FAILED;
    }
}
