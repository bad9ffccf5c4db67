// The files that make up the panel's page.
#ifndef OSTREL_SIMULATOR_WEB_STATIC_FILES_H
#define OSTREL_SIMULATOR_WEB_STATIC_FILES_H

#include <string>

namespace ostrel {

struct StaticFiles {
    std::string page;  // "/" and what lies beside it
    std::string novnc; // below "/novnc/"
};

// The whole answer to GET or HEAD of `target` at `host`, which is the panel's own.
std::string
answerWithFile(const StaticFiles& files, const std::string& target, bool withBody, const std::string& host = "");

} // namespace ostrel

#endif
