// Who may talk to the web panel: pages that came from the panel itself. Other pages in the same browser could otherwise
// press its buttons, and a name that somebody lets point to 127.0.0.1 would pass for this machine.
#ifndef OSTREL_SIMULATOR_WEB_ORIGIN_H
#define OSTREL_SIMULATOR_WEB_ORIGIN_H

#include "simulator/web/http.h"

namespace ostrel {

// The request's Host names this machine and the panel's port.
bool isForThisPanel(const HttpRequest& request, int port);

// The request's Origin is the panel's own page. A client that sends none is not a browser's page.
bool isFromThisPanel(const HttpRequest& request, int port);

} // namespace ostrel

#endif
