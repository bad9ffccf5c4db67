// The command line.
#ifndef OSTREL_SIMULATOR_OPTIONS_H
#define OSTREL_SIMULATOR_OPTIONS_H

#include "simulator/web/ip_address.h"

#include <string>
#include <vector>

namespace ostrel {

enum class Face { Unchosen, Headless, Web, Window };

struct Options {
    bool help = false;
    bool version = false;
    bool verbose = false;
    bool fresh = false;
    Face face = Face::Unchosen; // the window where there is a display, else the web panel
    int port = 0;               // 0: any free one
    IpAddress address;
    std::string passwordFile;
    bool isForWeb = false; // one of the two was given
    std::string script;
    std::string record;
    std::string junit;
    std::string state;
    double speed = 1.0;
    int patienceMs = 30000;
    std::vector<std::string> program; // PROGRAM and its arguments
};

// Options end at PROGRAM; what follows is the program's. Throws Failure with exit_status::USAGE.
Options parseOptions(const std::vector<std::string>& arguments);

// What --help prints.
std::string helpText();

} // namespace ostrel

#endif
