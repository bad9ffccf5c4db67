// Who may talk to the web panel: pages that came from the panel itself. Other pages in the same browser could otherwise
// press its buttons, and a name that somebody lets point to this machine would pass for it.
#ifndef OSTREL_SIMULATOR_WEB_ORIGIN_H
#define OSTREL_SIMULATOR_WEB_ORIGIN_H

#include "simulator/web/http.h"

#include <string>
#include <vector>

namespace ostrel {

// The request's Host cannot be a stranger's name for this machine: it is an IP address, which leads where it says, or
// "localhost", or one of `names`. Its port is any: tunnels have ports of their own.
bool isForThisPanel(const HttpRequest& request, const std::vector<std::string>& names);

// The request's Origin is the page that was read from this very Host. A client that sends none is not a browser's page.
bool isFromThisPanel(const HttpRequest& request);

// What this machine is called in its own network: "desk" and "desk.local".
std::vector<std::string> namesOfThisMachine();

} // namespace ostrel

#endif
