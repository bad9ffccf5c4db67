// The panel's password comes from a file: on a command line everybody on the machine could read it.
#ifndef OSTREL_SIMULATOR_WEB_PASSWORD_FILE_H
#define OSTREL_SIMULATOR_WEB_PASSWORD_FILE_H

#include <string>

namespace ostrel {

// The first line of `path`. Throws Failure, without the password in it, when there is none or VNC viewers could not
// give it. `others` tells whether other users of the machine can read the file.
std::string readPassword(const std::string& path, bool& others);

} // namespace ostrel

#endif
