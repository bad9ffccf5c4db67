// ostrel-nvram: the router's settings from a shell. This is the program apart from its process.
#ifndef OSTREL_APPS_NVRAM_NVRAM_TOOL_H
#define OSTREL_APPS_NVRAM_NVRAM_TOOL_H

#include <iosfwd>
#include <string>
#include <vector>

struct NvramToolStreams {
    std::istream& in;
    std::ostream& out;
    std::ostream& err;
};

// Does what the words of the command line, without the program's name, ask for. The result is the exit code: 0 done,
// 1 failed, 2 not understood. A word of the command line is never repeated in a message: it may be a password.
int runNvramTool(const std::vector<std::string>& words, const NvramToolStreams& streams);

#endif
